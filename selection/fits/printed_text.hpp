#pragma once
// The pieces every reader of a program's printed output needs: the text cut
// into numbered lines, blanks trimmed, and numbers read as the program
// printed them, with how finely it printed them.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.hpp"  // Trimmed, which every reader uses

namespace drav::selection::fits {

struct TextLine {
  std::string_view text;
  std::int64_t number = 0;  // from 1, in the file as the user has it
};

// LF, CR LF and CR all end a line; a last line without an end counts.
std::vector<TextLine> SplitLines(std::string_view text);

// The blank-separated words of a line.
std::vector<std::string_view> Words(std::string_view line);
bool StartsWithWord(std::string_view line, std::string_view word);  // after leading blanks

// A number as a program printed it. `halfUnit` is half a unit in its last
// printed digit: how far the true value may lie from the printed one.
struct Printed {
  double value = 0;
  double halfUnit = 0;
};

// The whole word as a number, or nothing: "-123.45", "1.2e-05", "7.", and
// with `fortranExponent` also "0.123D+05" as Fortran programs print it.
// A trailing '*' (Mplus marks a scaled statistic so) is not part of it.
std::optional<Printed> ReadPrinted(std::string_view word, bool fortranExponent = false);

// The first word after `label` in a line that starts with it (after
// leading blanks), read as a number; nothing when the line does not start
// so or no number follows.
std::optional<Printed> NumberAfter(std::string_view line, std::string_view label, bool fortranExponent = false);

// As ReadPrinted, and also with `group` between groups of three digits
// before the decimal mark ("1,327,956", as Stata and SPSS print counts); a
// separator anywhere else refuses the word, so "1,23" is never read as 123.
// With `decimalComma` the comma is the decimal mark (and `group` a full
// stop or nothing), as SPSS prints under some locales.
std::optional<Printed> ReadGrouped(std::string_view word, char group, bool decimalComma = false);

// x rounded to a whole number where it lies within `tolerance` of one: a
// count worked out from two printed criteria, held to what their digits
// allow.
std::optional<double> WholeNumber(double x, double tolerance);

// ASCII letters compared without regard to case: the labels programs print
// change case between releases ("Criteria For Assessing Goodness Of Fit").
bool EqualsNoCase(std::string_view a, std::string_view b);
bool StartsWithNoCase(std::string_view text, std::string_view prefix);
bool ContainsNoCase(std::string_view text, std::string_view needle);

// The file's name without its folders and its last extension: the model's
// name where the output gives none.
std::string FileStem(const std::string& source);

// Appends one step of a derivation, "; " between steps.
void AddStep(std::string& derivation, const std::string& step);

// "12.5" for 12.5, the shortest text that reads back as the number.
std::string Shown(double number);

}  // namespace drav::selection::fits
