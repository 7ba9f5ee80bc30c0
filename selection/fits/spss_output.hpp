#pragma once
// SPSS output as text, exported from the viewer or pasted from it: the
// Information Criteria and Model Dimension of MIXED, and the Goodness of Fit
// of GENLIN, one record for each model. Such text comes aligned with blanks,
// split by tabs or bars, or one cell to a line with long labels broken;
// footnote letters stick to the words they mark ("Information Criteriaa").
// The tables print no n, and MIXED's AIC under REML no fixed effects: both
// are worked out, and the record's derivation says how.
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

bool LooksLikeSpssOutput(std::string_view text);

// The viewer's file (.spv), a zip of XML and binary parts, which its first
// 64 KiB tell: binary, yet refused by ReadSpssOutput with the way to export
// its text rather than as a file of NUL bytes.
bool IsSpssViewerFile(std::string_view start);

// Refuses the viewer's binary files (.spv, .spo), saying how to export text,
// and tables whose criteria are not numbers.
std::vector<FitRecord> ReadSpssOutput(std::string_view text, const std::string& source, Diagnostics& diagnostics);

}  // namespace drav::selection::fits
