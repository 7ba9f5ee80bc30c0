#include "base/utf16_decoder.hpp"

#include "base/utf8.hpp"

namespace drav {

void Utf16Decoder::Decode(std::string_view raw, bool atEnd, std::string& out) {
  std::string bytes = carry_;
  bytes.append(raw);
  std::size_t i = 0;
  for (; i + 1 < bytes.size(); i += 2) {
    const auto b0 = static_cast<unsigned char>(bytes[i]);
    const auto b1 = static_cast<unsigned char>(bytes[i + 1]);
    const char32_t unit = bigEndian_ ? char32_t((b0 << 8) | b1) : char32_t(b0 | (b1 << 8));
    if (highSurrogate_ != 0) {
      if (unit >= 0xDC00 && unit <= 0xDFFF) {
        utf8::Append(out, 0x10000 + ((highSurrogate_ - 0xD800) << 10) + (unit - 0xDC00));
        highSurrogate_ = 0;
        continue;
      }
      utf8::Append(out, 0xFFFD);
      highSurrogate_ = 0;
    }
    if (unit >= 0xD800 && unit <= 0xDBFF) {
      highSurrogate_ = unit;
    } else {
      utf8::Append(out, unit);  // a lone low surrogate becomes U+FFFD
    }
  }
  carry_.assign(bytes, i);
  if (atEnd) {
    if (highSurrogate_ != 0 || !carry_.empty()) utf8::Append(out, 0xFFFD);
    highSurrogate_ = 0;
    carry_.clear();
  }
}

}  // namespace drav
