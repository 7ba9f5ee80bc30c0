#pragma once
// A property sheet written as readable data, turned into the byte form that
// SetProperties reads:
//
//   Sheet().Integer("Left", 220).Text("Caption", "Clear").Colour("TextColor", 0x3D0002)
#include <cstdint>
#include <string>
#include <vector>

#include "sheets/property_sheet.hpp"

namespace drav {

class Sheet {
 public:
  Sheet& Boolean(const char* name, bool value) { return Add(name, value); }
  Sheet& Integer(const char* name, std::int64_t value) { return Add(name, value); }
  Sheet& Size(const char* name, float value) { return Add(name, drav::Single{value}); }
  Sheet& Real(const char* name, double value) { return Add(name, value); }
  // 0xRRGGBB, opaque.
  Sheet& Colour(const char* name, std::uint32_t rgb) {
    return Add(name, Color{static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
                           static_cast<std::uint8_t>(rgb)});
  }
  Sheet& Text(const char* name, std::string value) { return Add(name, std::move(value)); }
  // The entries of another sheet, appended.
  Sheet& With(const Sheet& more) {
    entries_.insert(entries_.end(), more.entries_.begin(), more.entries_.end());
    return *this;
  }

  const std::vector<Property>& Entries() const { return entries_; }
  std::string Bytes() const { return EncodeSheet(entries_); }

 private:
  Sheet& Add(const char* name, PropertyValue value) {
    entries_.push_back({name, std::move(value)});
    return *this;
  }
  std::vector<Property> entries_;
};

}  // namespace drav
