#include "shell/round_rectangle.hpp"

#include <QPainter>
#include <algorithm>

#include "shell/accessible_role.hpp"
#include "shell/qt_convert.hpp"

namespace drav {
namespace {

class ShapeWidget : public QWidget {
 public:
  explicit ShapeWidget(const RoundRectangle::Style& style) : style_(style) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double inset = style_.borderThickness / 2;
    const QRectF r = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    const double rx = std::min(style_.cornerWidth / 2, r.width() / 2);
    const double ry = std::min(style_.cornerHeight / 2, r.height() / 2);
    painter.setPen(style_.borderThickness > 0 ? QPen(ToQ(style_.border), style_.borderThickness) : QPen(Qt::NoPen));
    painter.setBrush(ToQ(style_.fill));
    painter.drawRoundedRect(r, rx, ry);
  }

 private:
  const RoundRectangle::Style& style_;
};

}  // namespace

// A screen reader reads the shape as what it does on the window: it divides.
RoundRectangle::RoundRectangle() : RectControl(new ShapeWidget(style_)) {
  SetAccessibleRole(*Widget(), QAccessible::Separator);
}

bool RoundRectangle::ApplyProperty(const Property& p) {
  if (p.name == "FillColor") {
    style_.fill = std::get<Color>(p.value);
  } else if (p.name == "BorderColor") {
    style_.border = std::get<Color>(p.value);
  } else if (p.name == "BorderThickness") {
    style_.borderThickness = std::get<double>(p.value);
  } else if (p.name == "CornerWidth") {
    style_.cornerWidth = std::get<double>(p.value);
  } else if (p.name == "CornerHeight") {
    style_.cornerHeight = std::get<double>(p.value);
  } else {
    return RectControl::ApplyProperty(p);
  }
  Widget()->update();
  return true;
}

}  // namespace drav
