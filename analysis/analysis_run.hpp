#pragma once
#include "analysis/alert.hpp"
#include "analysis/date_text.hpp"
#include "analysis/open_file_dialog.hpp"
#include "analysis/window_ops.hpp"

namespace drav {

// Everything outside the core that one run talks to.
struct RunHost {
  WindowOps& window;
  Alert& alert;
  OpenFileDialog& dialog;
  const DateText& dates;
};

// How a run ended. The window ignores it (the button's handler returns False
// whatever happened); drav-report turns it into an exit status.
enum class RunOutcome {
  CountMissing,  // the count field was empty: first message, focus to the field
  CountInvalid,  // the count was below 2 or above 99: second message, focus to the field
  NoFile,        // the dialog was cancelled or the chosen file is not there: no word
  NoLowestAIC,   // no AIC below the search's start value: message, focus to the field
  Reported,      // the report was appended to the report area
};

inline constexpr const char* kCountMissingMessage = "Please enter the number of models in the set (2-99).";
inline constexpr const char* kCountInvalidMessage = "Please enter a valid number of models in the set (2-99).";
inline constexpr const char* kNoLowestAICMessage = "Sorry, can't find low AIC value. Check the data.";

// One press of "Load Data": validates the count, asks for the file, reads
// the models, computes the statistics and appends the report. A file that
// cannot be opened or read throws IOException, which the run does not catch;
// the window is then as it was before the press.
RunOutcome RunAnalysis(const RunHost& host);

}  // namespace drav
