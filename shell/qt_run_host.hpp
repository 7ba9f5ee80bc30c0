#pragma once
// The outside world of an analysis run on the desktop: Qt's modal alert and
// its open-file dialog.
#include "analysis/alert.hpp"
#include "analysis/open_file_dialog.hpp"

class QWidget;

namespace drav {

class QtAlert : public Alert {
 public:
  explicit QtAlert(QWidget* parent) : parent_(parent) {}
  void MsgBox(const std::string& text) override;

 private:
  QWidget* parent_;
};

// The platform's open-file dialog with no title and no filter, so every
// file can be chosen; it opens in the folder of the last file chosen.
class QtOpenFileDialog : public OpenFileDialog {
 public:
  explicit QtOpenFileDialog(QWidget* parent) : parent_(parent) {}
  std::optional<FolderItem> ShowModal() override;

 private:
  QWidget* parent_;
};


}  // namespace drav
