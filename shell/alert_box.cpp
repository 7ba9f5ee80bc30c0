#include "shell/alert_box.hpp"

namespace drav {

AlertBox::AlertBox(Icon icon, const QString& text, QWidget* parent)
    : QMessageBox(icon, QStringLiteral("Drav"), text, QMessageBox::Ok, parent) {
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

}  // namespace drav
