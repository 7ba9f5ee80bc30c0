#pragma once
#include "analysis/window_ops.hpp"
#include "base/text.hpp"
#include "windows/control_wnd.hpp"

namespace drav {

// The five operations of an analysis run, bound to the count field pFld and
// the report area ResultsFld.
class ControlWndOps : public WindowOps {
 public:
  explicit ControlWndOps(ControlWnd& window) : window_(window) {}
  std::string CountText() override { return window_.pFld().Text(); }
  void FocusCount() override { window_.pFld().SetFocus(); }
  void SetResultsVisible(bool visible) override { window_.ResultsFld().SetVisible(visible); }
  std::string ResultsText() override { return window_.ResultsFld().Text(); }
  // A report added below others is brought into view from its first line:
  // left where it was, the view would show only the earlier ones.
  void SetResultsText(const std::string& text) override {
    TextArea& area = window_.ResultsFld();
    const std::string before = area.Text();
    area.SetText(text);
    if (text.starts_with(before)) area.ScrollToTop(Len(before));
  }

 private:
  ControlWnd& window_;
};

}  // namespace drav
