#include "selection/fits/html_text.hpp"

#include <charconv>

#include "base/text.hpp"

namespace drav::selection::fits {
namespace {

// The character an entity at text[at] ("&lt;") stands for, and its length;
// none for one that stands for no character a printed output needs.
bool Entity(std::string_view text, std::size_t at, char& character, std::size_t& length) {
  static constexpr std::pair<std::string_view, char> kNamed[] = {
      {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}, {"&nbsp;", ' '}};
  for (const auto& [name, c] : kNamed) {
    if (text.substr(at, name.size()) == name) {
      character = c;
      length = name.size();
      return true;
    }
  }
  if (text.substr(at, 2) != "&#") return false;
  const std::size_t end = text.find(';', at);
  if (end == std::string_view::npos || end - at > 8) return false;
  const bool hex = at + 2 < end && (text[at + 2] == 'x' || text[at + 2] == 'X');
  const char* first = text.data() + at + (hex ? 3 : 2);
  unsigned code = 0;
  const auto result = std::from_chars(first, text.data() + end, code, hex ? 16 : 10);
  if (result.ec != std::errc() || result.ptr != text.data() + end || code == 0 || code >= 128) return false;
  character = static_cast<char>(code);
  length = end - at + 1;
  return true;
}

}  // namespace

bool LooksLikeHtml(std::string_view text) {
  const std::string_view start = Trimmed(text.substr(0, 1024));
  return start.starts_with("<!DOCTYPE") || start.starts_with("<!doctype") || start.starts_with("<html") ||
         start.starts_with("<HTML") || text.find("<pre") != std::string_view::npos;
}

std::string HtmlText(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  bool inTag = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\n') {
      shown += c;  // a tag that spans lines keeps them
    } else if (inTag) {
      inTag = c != '>';
    } else if (c == '<') {
      inTag = true;
    } else if (char decoded = 0; c == '&' && [&] {
                 std::size_t length = 0;
                 if (!Entity(text, i, decoded, length)) return false;
                 i += length - 1;
                 return true;
               }()) {
      shown += decoded;
    } else {
      shown += c;
    }
  }
  return shown;
}

}  // namespace drav::selection::fits
