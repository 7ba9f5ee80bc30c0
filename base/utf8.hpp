#pragma once
// UTF-8 as the core's texts hold it. A byte that starts no valid sequence
// counts as one character of its own, so that counting and cutting never
// split a valid character and never stall on a broken one.
#include <cstddef>
#include <string>
#include <string_view>

namespace drav::utf8 {

inline constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

// Bytes taken by the character that starts at s[i]: the length of a valid
// sequence (1 to 4), or 1 for a byte that begins none.
std::size_t CharLength(std::string_view s, std::size_t i);

// True when every byte of s belongs to a valid UTF-8 sequence.
bool IsValid(std::string_view s);

// s with each byte that begins no valid sequence replaced by U+FFFD.
std::string Sanitize(std::string s);

// Appends the UTF-8 form of the code point; a surrogate or a value beyond
// U+10FFFF appends U+FFFD.
void Append(std::string& out, char32_t codePoint);

// The code point of the character at s[i], U+FFFD for an invalid byte.
char32_t Decode(std::string_view s, std::size_t i);

}  // namespace drav::utf8
