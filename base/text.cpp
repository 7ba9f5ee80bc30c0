#include "base/text.hpp"

#include "base/utf8.hpp"

namespace drav {

namespace {

// Bytes of the character at text[i]; plain ASCII, the common case, inline.
std::size_t Step(std::string_view text, std::size_t i) {
  return static_cast<unsigned char>(text[i]) < 0x80 ? 1 : utf8::CharLength(text, i);
}

}  // namespace

std::int64_t Len(std::string_view text) {
  std::int64_t count = 0;
  for (std::size_t i = 0; i < text.size(); i += Step(text, i)) ++count;
  return count;
}

std::string Left(std::string_view text, std::int64_t count) {
  std::size_t end = 0;
  for (std::int64_t taken = 0; taken < count && end < text.size(); ++taken) {
    end += Step(text, end);
  }
  return std::string(text.substr(0, end));
}

std::string NthField(std::string_view text, std::string_view separator, std::int64_t index) {
  if (index < 1) return {};
  if (separator.empty()) return index == 1 ? std::string(text) : std::string();
  std::size_t start = 0;
  for (std::int64_t field = 1; field < index; ++field) {
    const std::size_t found = text.find(separator, start);
    if (found == std::string_view::npos) return {};
    start = found + separator.size();
  }
  const std::size_t end = text.find(separator, start);
  return std::string(text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start));
}

std::string ReplaceAll(std::string text, std::string_view find, std::string_view replacement) {
  std::size_t found = find.empty() ? std::string::npos : text.find(find);
  if (found == std::string::npos) return text;
  if (find.size() == replacement.size()) {
    for (; found != std::string::npos; found = text.find(find, found + find.size())) {
      text.replace(found, find.size(), replacement);
    }
    return text;
  }
  std::string out;
  out.reserve(text.size());
  std::size_t start = 0;
  for (; found != std::string::npos; found = text.find(find, start)) {
    out.append(text, start, found - start);
    out.append(replacement);
    start = found + find.size();
  }
  out.append(text, start);
  return out;
}

std::string Chr(std::int64_t code) {
  std::string out;
  utf8::Append(out, code < 0 || code > 0x10FFFF ? char32_t{0xFFFD} : static_cast<char32_t>(code));
  return out;
}

std::int64_t Asc(std::string_view text) {
  return text.empty() ? 0 : static_cast<std::int64_t>(utf8::Decode(text, 0));
}

}  // namespace drav
