#include "selection/fits/printed_text.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/number_text.hpp"

namespace drav::selection::fits {

namespace {

bool Blank(char c) { return c == ' ' || c == '\t'; }

bool Digit(char c) { return c >= '0' && c <= '9'; }

// Every printed number is read with its last digit's place; pow() for
// each was a fifth of reading a listing.
double PowerOfTen(int exponent) {
  static constexpr double kTens[] = {1e-16, 1e-15, 1e-14, 1e-13, 1e-12, 1e-11, 1e-10, 1e-9, 1e-8, 1e-7, 1e-6,
                                     1e-5,  1e-4,  1e-3,  1e-2,  1e-1,  1e0,   1e1,   1e2,  1e3,  1e4,  1e5,
                                     1e6,   1e7,   1e8,   1e9,   1e10,  1e11,  1e12,  1e13, 1e14, 1e15, 1e16};
  if (exponent < -16 || exponent > 16) return std::pow(10.0, exponent);
  return kTens[exponent + 16];
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::vector<TextLine> SplitLines(std::string_view text) {
  // Whole folders of outputs are read: memchr finds the line ends, and a
  // text without any CR (most) needs no second look for one.
  std::vector<TextLine> lines;
  lines.reserve(text.size() / 48 + 1);
  const bool carriageReturns = std::memchr(text.data(), '\r', text.size()) != nullptr;
  std::size_t begin = 0;
  std::int64_t number = 1;
  while (begin < text.size()) {
    std::size_t end = begin;
    if (carriageReturns) {
      while (end < text.size() && text[end] != '\n' && text[end] != '\r') ++end;
    } else {
      const void* found = std::memchr(text.data() + begin, '\n', text.size() - begin);
      end = found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) : text.size();
    }
    lines.push_back({text.substr(begin, end - begin), number++});
    if (end < text.size() && text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n') ++end;
    begin = end + 1;
  }
  return lines;
}

std::vector<std::string_view> Words(std::string_view line) {
  // Every line of every output is split, most of them rows of numbers:
  // counted first, the words take one allocation, not one per doubling.
  std::size_t count = 0;
  for (std::size_t i = 0; i < line.size(); ++i) count += !Blank(line[i]) && (i == 0 || Blank(line[i - 1]));
  std::vector<std::string_view> words;
  words.reserve(count);
  std::size_t i = 0;
  while (true) {
    while (i < line.size() && Blank(line[i])) ++i;
    if (i == line.size()) break;
    std::size_t end = i;
    while (end < line.size() && !Blank(line[end])) ++end;
    words.push_back(line.substr(i, end - i));
    i = end;
  }
  return words;
}

bool StartsWithWord(std::string_view line, std::string_view word) {
  std::size_t at = 0;
  while (at < line.size() && Blank(line[at])) ++at;
  return line.substr(at, word.size()) == word;
}

std::optional<Printed> ReadPrinted(std::string_view word, bool fortranExponent) {
  if (word.ends_with('*')) word.remove_suffix(1);
  if (word.starts_with('+')) word.remove_prefix(1);
  if (word.empty()) return std::nullopt;
  std::string copy;
  if (fortranExponent) {
    if (const auto d = word.find_first_of("Dd"); d != std::string_view::npos) {
      copy.assign(word);
      copy[d] = 'E';
      word = copy;
    }
  }
  double value = 0;
  const auto result = std::from_chars(word.data(), word.data() + word.size(), value);
  if (result.ec != std::errc() || result.ptr != word.data() + word.size() || !std::isfinite(value)) {
    return std::nullopt;
  }
  // How finely it was printed: the last digit before any exponent.
  const std::size_t exponentAt = word.find_first_of("eE");
  const std::string_view mantissa = word.substr(0, exponentAt);
  // Beyond a few hundred either way a power of ten is 0 or infinite: an
  // exponent of any length stays in that range, and no sum of it overflows.
  constexpr std::int64_t kFarthest = 400;
  std::int64_t exponent = 0;
  if (exponentAt != std::string_view::npos) {
    const char* digits = word.data() + exponentAt + 1 + (word[exponentAt + 1] == '+');
    if (std::from_chars(digits, word.data() + word.size(), exponent).ec == std::errc::result_out_of_range) {
      exponent = word[exponentAt + 1] == '-' ? -kFarthest : kFarthest;
    }
  }
  const std::size_t point = mantissa.find('.');
  std::int64_t decimals = point == std::string_view::npos ? 0 : static_cast<std::int64_t>(mantissa.size() - point - 1);
  // A whole number's trailing zeros may be rounding, not digits: R prints
  // an AIC of 18913.95 to four significant digits as "18910", which fixes
  // it only to within 5.
  if (point == std::string_view::npos && value != 0) {
    for (std::size_t i = mantissa.size(); i-- > 0 && mantissa[i] == '0';) --decimals;
  }
  const auto scale = static_cast<int>(std::clamp(exponent - decimals, -kFarthest, kFarthest));
  return Printed{value, 0.5 * PowerOfTen(scale)};
}

std::optional<Printed> NumberAfter(std::string_view line, std::string_view label, bool fortranExponent) {
  std::size_t at = 0;
  while (at < line.size() && Blank(line[at])) ++at;
  if (line.substr(at, label.size()) != label) return std::nullopt;
  at += label.size();
  while (at < line.size() && Blank(line[at])) ++at;
  std::size_t end = at;
  while (end < line.size() && !Blank(line[end])) ++end;
  if (end == at) return std::nullopt;
  return ReadPrinted(line.substr(at, end - at), fortranExponent);
}

std::optional<Printed> ReadGrouped(std::string_view word, char group, bool decimalComma) {
  const char mark = decimalComma ? ',' : '.';
  std::size_t end = word.find(mark);
  if (end == std::string_view::npos) end = word.find_first_of("eE");
  if (end == std::string_view::npos) end = word.size();
  std::string plain;
  plain.reserve(word.size());
  // Separators stand every three digits, counted back from the mark.
  int digitsSinceGroup = 0;
  bool grouped = false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    const char c = word[i];
    if (i < end && group != 0 && c == group) {
      if (digitsSinceGroup == 0 || (grouped && digitsSinceGroup != 3) || (!grouped && digitsSinceGroup > 3)) {
        return std::nullopt;
      }
      grouped = true;
      digitsSinceGroup = 0;
      continue;
    }
    if (i < end && Digit(c)) ++digitsSinceGroup;
    if (decimalComma && c == '.') return std::nullopt;
    plain += c == mark ? '.' : c;
  }
  if (grouped && digitsSinceGroup != 3) return std::nullopt;
  return ReadPrinted(plain);
}

std::optional<double> WholeNumber(double x, double tolerance) {
  const double whole = std::round(x);
  // Within half a unit every number is near a whole one: that fixes none.
  if (tolerance >= 0.5 || std::fabs(x - whole) > tolerance) return std::nullopt;
  return whole;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (Lower(a[i]) != Lower(b[i])) return false;
  }
  return true;
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && EqualsNoCase(text.substr(0, prefix.size()), prefix);
}

bool ContainsNoCase(std::string_view text, std::string_view needle) {
  for (std::size_t i = 0; i + needle.size() <= text.size(); ++i) {
    if (EqualsNoCase(text.substr(i, needle.size()), needle)) return true;
  }
  return false;
}

std::string FileStem(const std::string& source) {
  std::string_view name = source;
  if (const auto slash = name.find_last_of("/\\"); slash != std::string_view::npos) name.remove_prefix(slash + 1);
  if (const auto dot = name.rfind('.'); dot != std::string_view::npos && dot > 0) name = name.substr(0, dot);
  return std::string(name);
}

void AddStep(std::string& derivation, const std::string& step) {
  if (!derivation.empty()) derivation.append("; ");
  derivation.append(step);
}

std::string Shown(double number) {
  std::string text;
  AppendShortest(text, number);
  return text;
}

}  // namespace drav::selection::fits
