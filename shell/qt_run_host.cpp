#include "shell/qt_run_host.hpp"

#include <QFileDialog>
#include <QFileInfo>
#include <QPixmapCache>

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

// The folder of the last file chosen in this run of the program. Like the
// platform's own dialogs, the next one opens there, so that a second file
// from the same project is one click away; nothing of it outlives the run.
QString& LastFolder() {
  static QString folder;
  return folder;
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
  QString file;
  {
    QFileDialog dialog(parent_, QString(), LastFolder());
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
      file = dialog.selectedFiles().constFirst();
    }
    Reactivate(parent_);
  }
  // The dialog drew its icons into Qt's pixmap cache, under the keys of
  // icon objects that went with it. Nothing asks for them again, and the
  // cache would keep them up to its limit of 10 MB, a little more at every
  // run; what the windows need of it is drawn again at their next paint.
  QPixmapCache::clear();
  if (file.isEmpty()) return std::nullopt;
  LastFolder() = QFileInfo(file).absolutePath();
  return FolderItem(file.toStdString());
}

}  // namespace drav
