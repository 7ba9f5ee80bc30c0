#pragma once
// A SAS listing (the .lst file, or the output window saved as text) with
// any number of procedures: the fit statistics of PROC LOGISTIC, GENMOD,
// MIXED, GLIMMIX and NLMIXED, one record for each fit. A model is named by
// the page's TITLE lines (not SAS's default "The SAS System") and its BY
// group, else by the file; K and n are worked out where SAS prints neither,
// and the record's derivation says how.
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

bool LooksLikeSasOutput(std::string_view text);

// Fits whose criteria rank nothing are records of a kind that ranking
// refuses, with the reason among their warnings: GLIMMIX's
// pseudo-likelihood, a GEE (GENMOD with REPEATED, whose printed criteria
// belong to the independence model it starts from) and SURVEYLOGISTIC's
// weighted likelihood. Fit statistics without what K is worked out from
// are refused.
std::vector<FitRecord> ReadSasOutput(std::string_view text, const std::string& source, Diagnostics& diagnostics);

}  // namespace drav::selection::fits
