#include "base/number_text.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/text.hpp"

namespace drav::selection {
std::optional<double> ParseNumber(std::string_view cell, bool decimalComma) {
  cell = Trimmed(cell);
  if (cell.size() > 1 && cell[0] == '+' && cell[1] != '-') cell.remove_prefix(1);
  if (cell.empty()) return std::nullopt;
  double value = 0;
  std::from_chars_result result{};
  if (decimalComma) {
    if (cell.find('.') != std::string_view::npos) return std::nullopt;
    // Numbers are short; a longer cell is not one we would read anyway.
    char text[128];
    if (cell.size() > sizeof text) return std::nullopt;
    std::replace_copy(cell.begin(), cell.end(), text, ',', '.');
    result = std::from_chars(text, text + cell.size(), value);
    if (result.ec != std::errc() || result.ptr != text + cell.size()) return std::nullopt;
  } else {
    result = std::from_chars(cell.data(), cell.data() + cell.size(), value);
    if (result.ec != std::errc() || result.ptr != cell.data() + cell.size()) return std::nullopt;
  }
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

bool IsMissing(std::string_view cell) {
  cell = Trimmed(cell);
  return cell.empty() || cell == "NA";
}

void AppendShortest(std::string& out, double number) {
  if (std::isinf(number)) {
    out += number < 0 ? "-Inf" : "Inf";
    return;
  }
  char text[32];
  // Whole numbers in full, so that a count of a million is 1000000, not
  // 1e+06; both read back the same.
  const bool whole = std::fabs(number) < 1e15 && number == std::trunc(number);
  const auto result = whole ? std::to_chars(text, text + sizeof text, number, std::chars_format::fixed)
                            : std::to_chars(text, text + sizeof text, number);
  out.append(text, result.ptr);
}

std::string Percent(double level) {
  std::string text;
  AppendShortest(text, level * 100);
  return text + "%";
}

std::string Rounded(double number, int digits) {
  std::string text;
  AppendRounded(text, number, digits);
  return text;
}

void AppendRounded(std::string& out, double number, int digits) {
  if (std::isinf(number)) {
    out += number < 0 ? "-Inf" : "Inf";
    return;
  }
  if (std::isnan(number)) {
    out += "NAN";  // as Format prints it
    return;
  }
  // The largest double has 309 integer digits; decimals are few.
  char text[400];
  const auto result = std::to_chars(text, text + sizeof text, std::fabs(number), std::chars_format::fixed,
                                    std::clamp(digits, 0, 40));
  // A negative number that rounds to zero prints as zero, with no minus.
  if (number < 0 && std::any_of(text, result.ptr, [](char c) { return c >= '1' && c <= '9'; })) out += '-';
  out.append(text, result.ptr);
}

}  // namespace drav::selection
