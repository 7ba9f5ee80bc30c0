#pragma once
// The text a statistics program printed, taken apart the way its readers
// need: lines with their numbers, the words of a line, and numbers as the
// programs print them, each with how finely it was rounded, so that a value
// worked out from two printed ones can be held to what printing allows.
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace drav::selection::fits {

struct PrintedLine {
  std::string_view text;    // without its line end; a form feed stays in it
  std::int64_t number = 0;  // from 1
};

// Lines end at \n, \r\n or a lone \r: listings travel between systems.
std::vector<PrintedLine> SplitLines(std::string_view text);

// Without blanks, tabs, form feeds and carriage returns at either end.
std::string_view Trim(std::string_view text);

// The words of a line, split at runs of blanks and tabs.
std::vector<std::string_view> Words(std::string_view text);

bool EqualsNoCase(std::string_view a, std::string_view b);
bool StartsWithNoCase(std::string_view text, std::string_view prefix);
bool ContainsNoCase(std::string_view text, std::string_view needle);

// A number as printed, and half a unit of its last printed digit: 12.35 was
// anything from 12.345 to 12.355.
struct Printed {
  double value = 0;
  double halfUnit = 0;
};

// The whole word as one finite number: "-12.5", ".5123" (Stata drops the
// leading zero), "0.4370478E-05" (Fortran), "+3". Nothing for anything else.
std::optional<Printed> ReadPrinted(std::string_view word);

// As ReadPrinted, and also with `group` between groups of three digits before
// the decimal mark ("1,327,956"); a separator anywhere else refuses the word,
// so "1,23" is never read as 123. With `decimalComma` the comma is the
// decimal mark (and `group` is then a full stop or nothing).
std::optional<Printed> ReadGrouped(std::string_view word, char group, bool decimalComma = false);

// x rounded to a whole number when it lies within `tolerance` of one.
std::optional<double> WholeNumber(double x, double tolerance);

}  // namespace drav::selection::fits
