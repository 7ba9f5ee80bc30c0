#pragma once
#include <string>

namespace drav {

// The five operations an analysis run needs of the main window: the count
// field's text and focus, and the report area's text and visibility.
class WindowOps {
 public:
  virtual ~WindowOps() = default;
  virtual std::string CountText() = 0;
  virtual void FocusCount() = 0;
  virtual void SetResultsVisible(bool visible) = 0;
  virtual std::string ResultsText() = 0;
  virtual void SetResultsText(const std::string& text) = 0;
};

}  // namespace drav
