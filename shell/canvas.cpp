#include "shell/canvas.hpp"

#include <QPainter>

#include "shell/accessible_role.hpp"

namespace drav {
namespace {

class BackdropWidget : public QWidget {
 public:
  const QPixmap* backdrop = nullptr;

 protected:
  void paintEvent(QPaintEvent*) override {
    if (backdrop == nullptr) return;
    QPainter painter(this);
    painter.drawPixmap(0, 0, *backdrop);
  }
};

}  // namespace

// A screen reader reads the canvas as the picture it shows.
Canvas::Canvas() : RectControl(new BackdropWidget) { SetAccessibleRole(*Widget(), QAccessible::Graphic); }

void Canvas::SetBackdrop(std::shared_ptr<Picture> picture) {
  backdrop_ = std::move(picture);
  static_cast<BackdropWidget*>(Widget())->backdrop = backdrop_ ? &backdrop_->Pixmap() : nullptr;
  Widget()->update();
}

bool Canvas::ApplyProperty(const Property& p) {
  if (p.name == "Transparent") {
    Widget()->setAttribute(Qt::WA_TranslucentBackground, std::get<bool>(p.value));
    Widget()->setAutoFillBackground(!std::get<bool>(p.value));
    return true;
  }
  if (p.name == "AllowFocus") {
    Widget()->setFocusPolicy(std::get<bool>(p.value) ? Qt::ClickFocus : Qt::NoFocus);
    return true;
  }
  return RectControl::ApplyProperty(p);
}

}  // namespace drav
