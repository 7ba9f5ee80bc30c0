#pragma once
// UTF-16 text, as it arrives in chunks of bytes, turned into UTF-8. A chunk
// may end inside a code unit or between the two halves of a surrogate pair;
// the decoder keeps what it has seen of them for the next chunk. Broken
// pairs and an odd last byte become U+FFFD.
#include <string>
#include <string_view>

namespace drav {

class Utf16Decoder {
 public:
  explicit Utf16Decoder(bool bigEndian) : bigEndian_(bigEndian) {}

  // Appends the UTF-8 form of `bytes` to `out`. With `atEnd` nothing may
  // follow, so a half-seen character is given up as U+FFFD.
  void Decode(std::string_view bytes, bool atEnd, std::string& out);

 private:
  bool bigEndian_;
  std::string carry_;  // an odd byte waiting for its partner
  char32_t highSurrogate_ = 0;
};

}  // namespace drav
