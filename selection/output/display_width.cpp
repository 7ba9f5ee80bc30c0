#include "selection/output/display_width.hpp"

#include <algorithm>
#include <iterator>

#include "base/utf8.hpp"

namespace drav::selection {
namespace {

struct Range {
  char32_t first;
  char32_t last;
};

bool In(const Range* begin, const Range* end, char32_t c) {
  const Range* r = std::upper_bound(begin, end, c, [](char32_t v, const Range& x) { return v < x.first; });
  return r != begin && c <= std::prev(r)->last;
}

// The blocks a terminal draws two columns wide (Unicode's East Asian Width
// W and F), by block rather than by single character: names in tables are
// words, not rare symbols.
constexpr Range kWide[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x2E80, 0x303E},   {0x3041, 0x33FF},
    {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},   {0xA960, 0xA97F},   {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},   {0xFE10, 0xFE19},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
    {0x16FE0, 0x18CFF}, {0x1B000, 0x1B2FF}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

// Combining marks and zero-width characters: drawn on the one before.
constexpr Range kZero[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A}, {0x064B, 0x065F},
    {0x0E31, 0x0E31}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E}, {0x1160, 0x11FF}, {0x1AB0, 0x1AFF},
    {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x2060, 0x2064}, {0x20D0, 0x20FF}, {0x302A, 0x302F},
    {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF},
};

}  // namespace

std::int64_t DisplayWidth(std::string_view text) {
  std::int64_t width = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (static_cast<unsigned char>(text[i]) < 0x80) {
      ++width;
      ++i;
      continue;
    }
    const char32_t c = utf8::Decode(text, i);
    i += utf8::CharLength(text, i);
    if (In(std::begin(kZero), std::end(kZero), c)) continue;
    width += In(std::begin(kWide), std::end(kWide), c) ? 2 : 1;
  }
  return width;
}

}  // namespace drav::selection
