#include "shell/qt_run_host.hpp"

#include <QFileDialog>
#include <QFileInfo>
#include <QPixmapCache>

#ifdef __GLIBC__
#include <malloc.h>
#endif

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

// Keeps Qt's pixmap cache shut while a dialog is up. A dialog's icons are
// new pixmaps each time one is made, and the cache files what is drawn from
// them under names built from the pixmap, which nothing asks for once the
// dialog has gone. Qt 6.4's cache never forgets such a name, even after it
// has dropped the pixmap (on a clear, or when full), so every dialog left a
// few kilobytes behind for good. Drawn without the cache a dialog looks the
// same; the windows below fill it again at their next paint.
class PixmapCacheOff {
 public:
  PixmapCacheOff() : limit_(QPixmapCache::cacheLimit()) { QPixmapCache::setCacheLimit(0); }
  ~PixmapCacheOff() { QPixmapCache::setCacheLimit(limit_); }
  PixmapCacheOff(const PixmapCacheOff&) = delete;
  PixmapCacheOff& operator=(const PixmapCacheOff&) = delete;

 private:
  int limit_;
};

// Hands the memory that a closed dialog freed back to the system. The
// open-file dialog, its model of the folder and the thread that reads it
// take several hundred kilobytes and free them all on closing, but glibc
// gives the top of its heap back only when a large block happens to be
// freed there; without this the process kept that much more after a run,
// or not, by chance.
void ReturnFreedMemory() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
}

}  // namespace

void QtAlert::MsgBox(const std::string& text) {
  // A line end behind the message would only show as an empty line.
  QString shown = drav::ToQ(text);
  while (shown.endsWith(QLatin1Char('\n')) || shown.endsWith(QLatin1Char('\r'))) shown.chop(1);
  const PixmapCacheOff uncached;
  AlertBox box(QMessageBox::NoIcon, shown, parent_);
  box.exec();
  Reactivate(parent_);
}

std::optional<FolderItem> QtOpenFileDialog::ShowModal() {
  QString file;
  {
    const PixmapCacheOff uncached;
    QFileDialog dialog(parent_, QString(), LastFolder());
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
      file = dialog.selectedFiles().constFirst();
    }
    Reactivate(parent_);
  }
  ReturnFreedMemory();
  if (file.isEmpty()) return std::nullopt;
  LastFolder() = QFileInfo(file).absolutePath();
  return FolderItem(file.toStdString());
}

}  // namespace drav
