#include "analysis/val.hpp"

#include <charconv>
#include <cstddef>
#include <limits>
#include <system_error>

namespace drav {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t SkipDigits(std::string_view s, std::size_t i) {
  while (i < s.size() && IsDigit(s[i])) ++i;
  return i;
}

// from_chars reports a number beyond the double range as out of range and
// leaves the value alone. Whether it overflowed or underflowed follows from
// the power of ten of its first significant digit: positive means too large,
// and stands as the largest finite double.
double OutOfRange(std::string_view intDigits, std::string_view fracDigits, long long exponent) {
  long long lead = 0;
  const std::size_t firstInt = intDigits.find_first_not_of('0');
  if (firstInt != std::string_view::npos) {
    lead = static_cast<long long>(intDigits.size() - firstInt);
  } else {
    const std::size_t firstFrac = fracDigits.find_first_not_of('0');
    if (firstFrac == std::string_view::npos) return 0.0;
    lead = -static_cast<long long>(firstFrac);
  }
  return exponent + lead > 0 ? std::numeric_limits<double>::max() : 0.0;
}

}  // namespace

std::optional<double> LeadingNumber(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;

  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
    negative = text[i] == '-';
    ++i;
  }

  const std::size_t start = i;
  i = SkipDigits(text, i);
  std::string_view intDigits = text.substr(start, i - start);
  std::string_view fracDigits;
  if (i < text.size() && text[i] == '.') {
    const std::size_t fracEnd = SkipDigits(text, i + 1);
    fracDigits = text.substr(i + 1, fracEnd - i - 1);
    if (!intDigits.empty() || !fracDigits.empty()) i = fracEnd;
  }
  if (intDigits.empty() && fracDigits.empty()) return std::nullopt;

  // An exponent counts only when at least one digit follows its letter and
  // sign: "12e" and "12e+" are 12 followed by junk.
  long long exponent = 0;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    std::size_t j = i + 1;
    bool negativeExponent = false;
    if (j < text.size() && (text[j] == '+' || text[j] == '-')) negativeExponent = text[j++] == '-';
    const std::size_t expEnd = SkipDigits(text, j);
    if (expEnd > j) {
      for (std::size_t k = j; k < expEnd && exponent < 1'000'000; ++k) exponent = exponent * 10 + (text[k] - '0');
      if (negativeExponent) exponent = -exponent;
      i = expEnd;
    }
  }

  double value = 0.0;
  const auto result = std::from_chars(text.data() + start, text.data() + i, value, std::chars_format::general);
  if (result.ec == std::errc::result_out_of_range) value = OutOfRange(intDigits, fracDigits, exponent);
  return negative ? -value : value;
}

double Val(std::string_view text) { return LeadingNumber(text).value_or(0.0); }

}  // namespace drav
