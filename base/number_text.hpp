#pragma once
// Numbers as the tables read and print them.
#include <optional>
#include <string>
#include <string_view>

namespace drav::selection {

// The number a cell holds, or nothing when the cell is not wholly a finite
// number: empty, NA, text, "1.5x", NaN and infinities all give nothing, so
// that no cell is ever quietly turned into a value. Blanks around the number
// and a leading plus are allowed. With `decimalComma` the comma is the
// decimal mark and a full stop is refused, so "1.234,5" cannot be misread.
std::optional<double> ParseNumber(std::string_view cell, bool decimalComma);

// True for the cells that mean "no value here": empty (or blank) and NA.
bool IsMissing(std::string_view cell);

// Appends the shortest text that reads back as the same double (std::to_chars
// without a precision); infinities as Inf and -Inf.
void AppendShortest(std::string& out, double number);

// A level as a percentage, 0.95 as "95%", 0.999 as "99.9%".
std::string Percent(double level);

// The number rounded to `digits` decimals with the core's Format; infinities
// as Inf and -Inf.
std::string Rounded(double number, int digits);
// The same, appended to `out`: the text Format gives for the mask "0.00..."
// straight from std::to_chars, without a text of its own.
void AppendRounded(std::string& out, double number, int digits);

}  // namespace drav::selection
