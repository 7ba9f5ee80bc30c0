#pragma once
// The text functions the analysis and the report are written in. Texts are
// UTF-8 in std::string; counts are in characters, never bytes.
#include <cstdint>
#include <string>
#include <string_view>

namespace drav {

// Number of characters.
std::int64_t Len(std::string_view text);

// The first `count` characters; the whole text when it is shorter, the
// empty text for a count of zero or less. Never pads.
std::string Left(std::string_view text, std::int64_t count);

// The index-th field (from 1) between occurrences of `separator`. Every
// occurrence ends a field, so adjacent separators enclose an empty one.
// An index past the last field, or below 1, gives the empty text.
std::string NthField(std::string_view text, std::string_view separator, std::int64_t index);

// Every occurrence of `find`, scanned from the left, replaced; replaced text
// is not scanned again. An empty `find` changes nothing. Takes the text by
// value so that a moved-in text is changed in place where it can be.
std::string ReplaceAll(std::string text, std::string_view find, std::string_view replacement);

// The text without the blanks (spaces and tabs) at either end. Inline:
// readers ask it of every cell of a table.
inline std::string_view Trimmed(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

// The one-character text of a code point.
std::string Chr(std::int64_t code);

// The code point of the first character; 0 for the empty text.
std::int64_t Asc(std::string_view text);

}  // namespace drav
