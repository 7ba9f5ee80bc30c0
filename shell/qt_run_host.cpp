#include "shell/qt_run_host.hpp"

#include <QFileDialog>

#include "shell/alert_box.hpp"
#include "shell/qt_convert.hpp"

namespace drav {
namespace {

// Gives the keyboard back to the window under a closed modal. A window
// manager does this by itself; without one (a bare X server) the focus
// would stay with the dialog that is gone.
void Reactivate(QWidget* parent) {
  if (parent != nullptr) parent->window()->activateWindow();
}

}  // namespace

void QtAlert::MsgBox(const std::string& text) {
  // A line end behind the message would only show as an empty line.
  QString shown = drav::ToQ(text);
  while (shown.endsWith(QLatin1Char('\n')) || shown.endsWith(QLatin1Char('\r'))) shown.chop(1);
  AlertBox box(QMessageBox::NoIcon, shown, parent_);
  box.exec();
  Reactivate(parent_);
}

std::optional<FolderItem> QtOpenFileDialog::ShowModal() {
  QFileDialog dialog(parent_);
  dialog.setFileMode(QFileDialog::ExistingFile);
  const bool chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
  Reactivate(parent_);
  if (!chosen) return std::nullopt;
  return FolderItem(dialog.selectedFiles().constFirst().toStdString());
}

}  // namespace drav
