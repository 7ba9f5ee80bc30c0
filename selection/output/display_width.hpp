#pragma once
// How many terminal columns a text takes, so that a table of names in
// Chinese, Japanese or Korean, or with combining accents, stays aligned.
#include <cstdint>
#include <string_view>

namespace drav::selection {

// East Asian wide and fullwidth characters take two columns, combining
// marks and zero-width characters none, everything else one.
std::int64_t DisplayWidth(std::string_view text);

}  // namespace drav::selection
