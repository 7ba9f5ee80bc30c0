#include "selection/fits/r_named_vector.hpp"

namespace drav::selection::fits {
namespace {

// Whether every word of `line` fills the right of its column: the j-th
// ends where a column `width` wide with a blank after it ends.
bool InColumns(std::string_view line, const std::vector<std::string_view>& words, std::size_t width) {
  for (std::size_t j = 0; j < words.size(); ++j) {
    const auto begin = static_cast<std::size_t>(words[j].data() - line.data());
    const std::size_t columnBegin = j * (width + 1);
    if (begin < columnBegin || begin + words[j].size() != columnBegin + width) return false;
  }
  return true;
}

// One line of names over its line of values, appended to `out`; false
// where the two lines are not such a pair in columns `width` wide (0: as
// wide as the first name's column, for the first pair).
bool ReadPair(std::string_view names, std::string_view values, std::size_t& width, std::vector<NamedValue>& out) {
  const std::vector<std::string_view> nameWords = Words(names);
  if (nameWords.empty()) return false;
  for (const std::string_view name : nameWords) {
    if (!IsName(name)) return false;
  }
  const std::vector<std::string_view> valueWords = Words(values);
  if (valueWords.size() != nameWords.size()) return false;
  if (width == 0) width = static_cast<std::size_t>(nameWords[0].data() - names.data()) + nameWords[0].size();
  if (!InColumns(names, nameWords, width) || !InColumns(values, valueWords, width)) return false;
  std::vector<NamedValue> pair;
  for (std::size_t j = 0; j < nameWords.size(); ++j) {
    std::optional<Printed> value;
    if (valueWords[j] != "NA") {
      value = ReadPrinted(valueWords[j]);
      if (!value) return false;
    }
    pair.push_back({nameWords[j], value});
  }
  out.insert(out.end(), pair.begin(), pair.end());
  return true;
}

}  // namespace

const NamedValue* NamedVector::Find(std::string_view name) const {
  for (const NamedValue& v : values) {
    if (v.name == name) return &v;
  }
  return nullptr;
}

std::optional<NamedVector> NamedVectorAt(const std::vector<TranscriptLine>& lines, std::size_t index) {
  NamedVector vector;
  std::size_t width = 0;
  std::size_t perLine = 0;  // as many as the first line holds
  std::size_t previous = 0;
  for (std::size_t i = index; i + 1 < lines.size() && !lines[i].command && !lines[i + 1].command; i += 2) {
    // Every line of a wrapped vector but its last holds as many as fit.
    if (previous != perLine) break;
    std::vector<NamedValue> pair;
    if (!ReadPair(lines[i].text, lines[i + 1].text, width, pair)) break;
    if (perLine != 0 && pair.size() > perLine) break;
    bool repeated = false;
    for (const NamedValue& v : pair) repeated = repeated || vector.Find(v.name) != nullptr;
    if (repeated) break;
    if (perLine == 0) perLine = pair.size();
    previous = pair.size();
    vector.values.insert(vector.values.end(), pair.begin(), pair.end());
    vector.last = i + 1;
  }
  if (vector.values.empty()) return std::nullopt;
  return vector;
}

}  // namespace drav::selection::fits
