#pragma once
#include <optional>
#include <string_view>

namespace drav {

// Reads the longest number at the start of the text and gives the double
// nearest to it; 0 when no number stands there.
//
// Leading blanks are skipped, then an optional sign, digits with an optional
// full stop, and an optional exponent ("1.5E+3" is 1500). A number beyond
// the double range gives the largest finite double of its sign, never an
// infinity, so that no AIC can turn the statistics into NaN. The full stop
// is the only decimal mark, whatever the user's number settings, because the
// report re-reads what Format printed. No "inf", "nan" or hexadecimal form
// is read: such texts give 0.
double Val(std::string_view text);

// The number Val reads, or nothing where none stands at the start: tells a
// line without a number from one whose AIC is 0.
std::optional<double> LeadingNumber(std::string_view text);

}  // namespace drav
