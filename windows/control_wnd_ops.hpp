#pragma once
#include "analysis/window_ops.hpp"
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
  void SetResultsText(const std::string& text) override { window_.ResultsFld().SetText(text); }

 private:
  ControlWnd& window_;
};

}  // namespace drav
