#pragma once
// The outside world of an analysis run when it runs from a terminal: the
// count comes from the command line, the file is named there too, messages
// go to standard error and the report area is a string.
#include <filesystem>
#include <iosfwd>
#include <string>

#include "analysis/alert.hpp"
#include "analysis/open_file_dialog.hpp"
#include "analysis/window_ops.hpp"

namespace drav::cli {

class ConsoleWindow : public WindowOps {
 public:
  explicit ConsoleWindow(std::string countText) : countText_(std::move(countText)) {}
  std::string CountText() override { return countText_; }
  void FocusCount() override {}
  void SetResultsVisible(bool) override {}
  std::string ResultsText() override { return resultsText_; }
  void SetResultsText(const std::string& text) override { resultsText_ = text; }

 private:
  std::string countText_;
  std::string resultsText_;
};

class StreamAlert : public Alert {
 public:
  explicit StreamAlert(std::ostream& out) : out_(out) {}
  void MsgBox(const std::string& text) override;

 private:
  std::ostream& out_;
};

// A dialog already answered: it yields the file named on the command line,
// which may be any readable stream, a pipe or standard input included.
class NamedFileDialog : public OpenFileDialog {
 public:
  explicit NamedFileDialog(std::filesystem::path path) : path_(std::move(path)) {}
  std::optional<FolderItem> ShowModal() override { return FolderItem(path_, FolderItem::Kinds::AnyStream); }

 private:
  std::filesystem::path path_;
};


}  // namespace drav::cli
