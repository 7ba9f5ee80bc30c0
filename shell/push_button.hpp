#pragma once
#include <QPushButton>
#include <functional>

#include "shell/control.hpp"
#include "shell/text_style.hpp"

namespace drav {

// A push button that works on the press: MouseDown is raised as the mouse
// button goes down, before any release, and may run a modal dialog. True
// from it consumes the press. The buttons of this program have no Action.
class PushButton : public RectControl {
 public:
  PushButton();
  QPushButton* Button() const { return button_; }

  std::function<bool(std::int64_t x, std::int64_t y)> MouseDown;

 protected:
  bool ApplyProperty(const Property& property) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit PushButton(QPushButton* button);
  QPushButton* button_;
  TextStyle style_;
  bool modalRan_ = false;
};

}  // namespace drav
