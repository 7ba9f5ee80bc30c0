#include "selection/fits/printed_text.hpp"

#include <charconv>
#include <cmath>

#include "selection/number_text.hpp"

namespace drav::selection::fits {

std::vector<TextLine> SplitLines(std::string_view text) {
  std::vector<TextLine> lines;
  std::size_t begin = 0;
  std::int64_t number = 1;
  while (begin < text.size()) {
    std::size_t end = text.find_first_of("\r\n", begin);
    if (end == std::string_view::npos) end = text.size();
    lines.push_back({text.substr(begin, end - begin), number++});
    if (end < text.size() && text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n') ++end;
    begin = end + 1;
  }
  return lines;
}

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::vector<std::string_view> Words(std::string_view line) {
  std::vector<std::string_view> words;
  std::size_t i = 0;
  while (true) {
    i = line.find_first_not_of(" \t", i);
    if (i == std::string_view::npos) break;
    std::size_t end = line.find_first_of(" \t", i);
    if (end == std::string_view::npos) end = line.size();
    words.push_back(line.substr(i, end - i));
    i = end;
  }
  return words;
}

bool StartsWithWord(std::string_view line, std::string_view word) {
  return Trim(line).starts_with(word);
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
  int exponent = 0;
  if (exponentAt != std::string_view::npos) {
    std::from_chars(word.data() + exponentAt + 1 + (word[exponentAt + 1] == '+'), word.data() + word.size(), exponent);
  }
  const std::size_t point = mantissa.find('.');
  const int decimals = point == std::string_view::npos ? 0 : static_cast<int>(mantissa.size() - point - 1);
  return Printed{value, 0.5 * std::pow(10.0, exponent - decimals)};
}

std::optional<Printed> NumberAfter(std::string_view line, std::string_view label, bool fortranExponent) {
  const std::string_view trimmed = Trim(line);
  if (!trimmed.starts_with(label)) return std::nullopt;
  const auto words = Words(trimmed.substr(label.size()));
  if (words.empty()) return std::nullopt;
  return ReadPrinted(words.front(), fortranExponent);
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
