#pragma once
// Property sheets: the design-time properties of one window or control.
//
// The byte form is a run of entries with no count, separator or terminator:
// the property's name in ASCII, one blank, and the value in the form of the
// property's type (Boolean 1 byte; Integer 8 bytes little-endian signed;
// Single and Double IEEE 754 little-endian; Colour blue, green, red, alpha
// with alpha 0 opaque; Text a 4-byte little-endian length and UTF-8 bytes).
// The type of each property follows from its name alone.
#include <string>
#include <string_view>
#include <vector>

#include "sheets/property_value.hpp"

namespace drav {

enum class PropertyType { Boolean, Integer, Single, Double, Colour, Text };

// The type of a property the sheets may name; throws
// UnsupportedFormatException for a name no sheet may use.
PropertyType TypeOf(std::string_view name);

// The byte form of a sheet written as readable data. A value of the wrong
// type for its name throws UnsupportedFormatException.
std::string EncodeSheet(const std::vector<Property>& sheet);

// The entries of a byte form, in order. A truncated sheet, or one that names
// an unknown property, throws UnsupportedFormatException.
std::vector<Property> DecodeSheet(std::string_view bytes);

}  // namespace drav
