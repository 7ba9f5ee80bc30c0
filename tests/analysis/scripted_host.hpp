#pragma once
// Fakes of the outside world of an analysis run: a window whose state can be
// read back, an alert that records its messages, a dialog answered in
// advance, and a pinned date.
#include <optional>
#include <string>
#include <vector>

#include "analysis/analysis_run.hpp"

namespace drav::testing_support {

class ScriptedWindow : public WindowOps {
 public:
  std::string CountText() override { return count; }
  void FocusCount() override { ++focusCalls; }
  void SetResultsVisible(bool visible) override { resultsVisible = visible; }
  std::string ResultsText() override { return results; }
  void SetResultsText(const std::string& text) override { results = text; }

  std::string count;
  std::string results;
  bool resultsVisible = false;
  int focusCalls = 0;
};

class RecordingAlert : public Alert {
 public:
  void MsgBox(const std::string& text) override { messages.push_back(text); }
  std::vector<std::string> messages;
};

class ScriptedDialog : public OpenFileDialog {
 public:
  std::optional<FolderItem> ShowModal() override {
    ++shown;
    return answer;
  }
  std::optional<FolderItem> answer;
  int shown = 0;
};

class FixedDateText : public DateText {
 public:
  std::string ShortDate(const Date&) const override { return "11/22/26"; }
  std::string ShortTime(const Date&) const override { return "9:58 PM"; }
};

struct ScriptedHost {
  ScriptedWindow window;
  RecordingAlert alert;
  ScriptedDialog dialog;
  FixedDateText dates;

  RunOutcome Run() { return RunAnalysis({window, alert, dialog, dates}); }
};

}  // namespace drav::testing_support
