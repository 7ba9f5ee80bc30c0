#include "base/utf8.hpp"

namespace drav::utf8 {
namespace {

unsigned char Byte(std::string_view s, std::size_t i) {
  return static_cast<unsigned char>(s[i]);
}

bool IsContinuation(std::string_view s, std::size_t i) {
  return i < s.size() && (Byte(s, i) & 0xC0) == 0x80;
}

}  // namespace

std::size_t CharLength(std::string_view s, std::size_t i) {
  const unsigned char b = Byte(s, i);
  if (b < 0x80) return 1;
  // Bounds of the second byte per RFC 3629, which shut out overlong forms,
  // surrogates and code points above U+10FFFF.
  unsigned char lo = 0x80, hi = 0xBF;
  std::size_t length = 0;
  if (b >= 0xC2 && b <= 0xDF) {
    length = 2;
  } else if (b >= 0xE0 && b <= 0xEF) {
    length = 3;
    if (b == 0xE0) lo = 0xA0;
    if (b == 0xED) hi = 0x9F;
  } else if (b >= 0xF0 && b <= 0xF4) {
    length = 4;
    if (b == 0xF0) lo = 0x90;
    if (b == 0xF4) hi = 0x8F;
  } else {
    return 1;
  }
  if (i + 1 >= s.size() || Byte(s, i + 1) < lo || Byte(s, i + 1) > hi) return 1;
  for (std::size_t k = 2; k < length; ++k) {
    if (!IsContinuation(s, i + k)) return 1;
  }
  return length;
}

bool IsValid(std::string_view s) {
  for (std::size_t i = 0; i < s.size();) {
    if (Byte(s, i) < 0x80) {
      ++i;
      continue;
    }
    const std::size_t n = CharLength(s, i);
    if (n == 1) return false;
    i += n;
  }
  return true;
}

std::string Sanitize(std::string s) {
  if (IsValid(s)) return s;
  std::string out;
  out.reserve(s.size() + 16);
  for (std::size_t i = 0; i < s.size();) {
    const std::size_t n = CharLength(s, i);
    if (n == 1 && Byte(s, i) >= 0x80) {
      out += kReplacement;
    } else {
      out.append(s, i, n);
    }
    i += n;
  }
  return out;
}

void Append(std::string& out, char32_t cp) {
  if ((cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF) {
    out += kReplacement;
  } else if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

char32_t Decode(std::string_view s, std::size_t i) {
  const std::size_t n = CharLength(s, i);
  const unsigned char b = Byte(s, i);
  if (n == 1) return b < 0x80 ? char32_t{b} : char32_t{0xFFFD};
  char32_t cp = b & (0xFF >> (n + 1));
  for (std::size_t k = 1; k < n; ++k) cp = (cp << 6) | (Byte(s, i + k) & 0x3F);
  return cp;
}

}  // namespace drav::utf8
