#include "shell/push_button.hpp"

#include <QMouseEvent>

#include "shell/handler_guard.hpp"
#include "shell/qt_convert.hpp"

namespace drav {

PushButton::PushButton() : PushButton(new QPushButton) {}

PushButton::PushButton(QPushButton* button) : RectControl(button), button_(button), style_(button) {
  button_->setAutoDefault(false);
  button_->installEventFilter(this);
}

bool PushButton::eventFilter(QObject* watched, QEvent* event) {
  if (watched != button_) {
    // A modal alert or dialog opened while the handler ran blocks the window.
    if (event->type() == QEvent::WindowBlocked) modalRan_ = true;
    return false;
  }
  if (event->type() != QEvent::MouseButtonPress || !MouseDown) return false;
  auto* press = static_cast<QMouseEvent*>(event);
  if (press->button() != Qt::LeftButton) return false;
  const QPoint at = press->position().toPoint();
  modalRan_ = false;
  QWidget* window = button_->window();
  window->installEventFilter(this);
  bool consumed = false;
  const bool completed = internal::GuardHandler([&] { consumed = MouseDown(at.x(), at.y()); });
  window->removeEventFilter(this);
  if (consumed) return true;
  if (!completed) {
    button_->setDown(false);  // the press ends with the failure
    return true;
  }
  // The modal took the release. Letting the button see this press now would
  // leave it drawn down with no release to come, so the press ends here;
  // nothing further was to happen anyway.
  if (modalRan_) {
    button_->setDown(false);
    return true;
  }
  return false;
}

bool PushButton::ApplyProperty(const Property& p) {
  if (p.name == "Caption") {
    button_->setText(ToQ(std::get<std::string>(p.value)));
  } else if (p.name == "TabStop") {
    // A button that is no tab stop never takes the focus from a text field.
    button_->setFocusPolicy(std::get<bool>(p.value) ? Qt::StrongFocus : Qt::NoFocus);
  } else if (style_.Apply(p)) {
    return true;
  } else {
    return RectControl::ApplyProperty(p);
  }
  return true;
}

}  // namespace drav
