#pragma once
#include <cstdint>
#include <string>
#include <variant>

namespace drav {

// A colour as the sheets write it: #RRGGBB and an alpha where 0 is opaque.
struct Color {
  std::uint8_t red = 0, green = 0, blue = 0;
  std::uint8_t alpha = 0;
  bool operator==(const Color&) const = default;
};

// A single (4-byte float) is its own type: only FontSize uses it.
struct Single {
  float value = 0;
  bool operator==(const Single&) const = default;
};

using PropertyValue = std::variant<bool, std::int64_t, Single, double, Color, std::string>;

struct Property {
  std::string name;
  PropertyValue value;
  bool operator==(const Property&) const = default;
};

}  // namespace drav
