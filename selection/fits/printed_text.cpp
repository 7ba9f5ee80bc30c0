#include "selection/fits/printed_text.hpp"

#include <charconv>
#include <cmath>
#include <string>

namespace drav::selection::fits {
namespace {

bool Blank(char c) { return c == ' ' || c == '\t' || c == '\f' || c == '\r' || c == '\v'; }

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool Digit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::vector<PrintedLine> SplitLines(std::string_view text) {
  std::vector<PrintedLine> lines;
  std::int64_t number = 1;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\n' && text[i] != '\r') continue;
    lines.push_back({text.substr(start, i - start), number++});
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    start = i + 1;
  }
  if (start < text.size()) lines.push_back({text.substr(start), number});
  return lines;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && Blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && Blank(text.back())) text.remove_suffix(1);
  return text;
}

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  std::size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && Blank(text[i])) ++i;
    const std::size_t start = i;
    while (i < text.size() && !Blank(text[i])) ++i;
    if (i > start) words.push_back(text.substr(start, i - start));
  }
  return words;
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
  if (needle.size() > text.size()) return false;
  for (std::size_t i = 0; i + needle.size() <= text.size(); ++i) {
    if (EqualsNoCase(text.substr(i, needle.size()), needle)) return true;
  }
  return false;
}

std::optional<Printed> ReadPrinted(std::string_view word) {
  if (word.size() > 1 && word[0] == '+' && word[1] != '-') word.remove_prefix(1);
  if (word.empty()) return std::nullopt;
  double value = 0;
  const auto result = std::from_chars(word.data(), word.data() + word.size(), value);
  if (result.ec != std::errc() || result.ptr != word.data() + word.size() || !std::isfinite(value)) {
    return std::nullopt;
  }
  // The last digit's place: decimals after the mark, moved by the exponent.
  int decimals = 0;
  int exponent = 0;
  const std::size_t mark = word.find('.');
  const std::size_t e = word.find_first_of("eE");
  if (mark != std::string_view::npos) {
    decimals = static_cast<int>((e == std::string_view::npos ? word.size() : e) - mark - 1);
  }
  if (e != std::string_view::npos) {
    std::string_view power = word.substr(e + 1);
    if (!power.empty() && power[0] == '+') power.remove_prefix(1);
    std::from_chars(power.data(), power.data() + power.size(), exponent);
  }
  return Printed{value, 0.5 * std::pow(10.0, exponent - decimals)};
}

std::optional<Printed> ReadGrouped(std::string_view word, char group, bool decimalComma) {
  std::string plain;
  plain.reserve(word.size());
  const char mark = decimalComma ? ',' : '.';
  std::size_t end = word.find(mark);
  if (end == std::string_view::npos) end = word.find_first_of("eE");
  if (end == std::string_view::npos) end = word.size();
  // Separators must stand every three digits, counted back from the mark.
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
  if (std::fabs(x - whole) > tolerance) return std::nullopt;
  return whole;
}

}  // namespace drav::selection::fits
