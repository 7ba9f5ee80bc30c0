#pragma once
// Program MARK's output (the text file a run writes, as the results browser
// shows it): one record for every model it estimated. MARK prints -2logL
// without the multinomial constants, so it may be negative and ranks only
// beside other MARK fits of the same encounter histories; K is the count of
// parameters MARK found estimable, n its effective sample size.
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

bool LooksLikeMarkOutput(std::string_view text);

// Refuses (DataError, "FILE:LINE: why") an aborted run: an error MARK
// printed inside a model, a model it began and never finished, or output
// that ends before MARK's closing "proc stop".
std::vector<FitRecord> ReadMarkOutput(std::string_view text, const std::string& source, Diagnostics& diagnostics);

}  // namespace drav::selection::fits
