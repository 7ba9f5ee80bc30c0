#pragma once
#include <QMessageBox>

namespace drav {

// The program's modal alert: its title, one OK button, and a text that can
// be selected with the mouse or keyboard and copied with Ctrl+C, so that a
// message can be quoted word for word.
class AlertBox : public QMessageBox {
 public:
  AlertBox(Icon icon, const QString& text, QWidget* parent);
};

}  // namespace drav
