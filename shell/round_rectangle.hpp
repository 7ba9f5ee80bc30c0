#pragma once
#include "shell/control.hpp"
#include "sheets/property_value.hpp"

namespace drav {

// A filled, bordered rectangle with rounded corners that draws itself from
// its sheet. Corners larger than the shape are clipped to half its height.
class RoundRectangle : public RectControl {
 public:
  RoundRectangle();
  struct Style {
    Color fill{255, 255, 255};
    Color border{0, 0, 0};
    double borderThickness = 1.0;
    double cornerWidth = 0, cornerHeight = 0;
  };

 protected:
  bool ApplyProperty(const Property& property) override;

 private:
  Style style_;
};

}  // namespace drav
