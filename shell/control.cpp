#include "shell/control.hpp"

#include "shell/handler_guard.hpp"
#include "shell/qt_convert.hpp"

namespace drav {

void Control::Opened() {
  if (Open) internal::GuardHandler(Open);
}

void RectControl::SetAccessibleText(const std::string& name, const std::string& description) {
  widget_->setAccessibleName(ToQ(name));
  widget_->setAccessibleDescription(ToQ(description));
}

bool RectControl::ApplyProperty(const Property& p) {
  const auto integer = [&] { return static_cast<int>(std::get<std::int64_t>(p.value)); };
  QRect g = widget_->geometry();
  if (p.name == "Left") {
    g.moveLeft(integer());
  } else if (p.name == "Top") {
    g.moveTop(integer());
  } else if (p.name == "Width") {
    g.setWidth(integer());
  } else if (p.name == "Height") {
    g.setHeight(integer());
  } else if (p.name == "Visible") {
    widget_->setVisible(std::get<bool>(p.value));
    return true;
  } else if (p.name == "Enabled") {
    widget_->setEnabled(std::get<bool>(p.value));
    return true;
  } else if (p.name == "Tooltip") {
    widget_->setToolTip(ToQ(std::get<std::string>(p.value)));
    return true;
  } else if (p.name == "TabStop") {
    widget_->setFocusPolicy(std::get<bool>(p.value) ? Qt::StrongFocus : Qt::ClickFocus);
    return true;
  } else {
    return false;
  }
  widget_->setGeometry(g);
  return true;
}

}  // namespace drav
