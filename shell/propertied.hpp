#pragma once
#include <string_view>
#include <vector>

#include "sheets/property_value.hpp"

namespace drav {

// Anything a property sheet can be applied to: windows, controls, timers.
class Propertied {
 public:
  virtual ~Propertied() = default;

  // Properties this class has no counterpart for on this platform
  // (MacProcID, Composite, LiveResize and the like), kept as they came.
  const std::vector<Property>& KeptProperties() const { return kept_; }

 protected:
  // Applies one property; false when the class has no use for it, which
  // SetProperties then keeps.
  virtual bool ApplyProperty(const Property& property) = 0;

 private:
  friend void SetProperties(Propertied& object, std::string_view sheet);
  std::vector<Property> kept_;
};

// Applies every property the sheet's byte form names, in order. A sheet
// that is truncated or names an unknown property throws
// UnsupportedFormatException: a programming error, never user input.
void SetProperties(Propertied& object, std::string_view sheet);

}  // namespace drav
