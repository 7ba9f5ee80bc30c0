#pragma once
// Entries that the controls of every window share.
#include "shell/sheet.hpp"

namespace drav {

// Place, locks and tab order of a control.
inline Sheet Place(std::int64_t left, std::int64_t top, std::int64_t width, std::int64_t height,
                   std::int64_t tabIndex, bool lockLeftTop) {
  return Sheet()
      .Integer("Left", left).Integer("Top", top).Integer("Width", width).Integer("Height", height)
      .Boolean("LockLeft", lockLeftTop).Boolean("LockTop", lockLeftTop)
      .Boolean("LockRight", false).Boolean("LockBottom", false)
      .Integer("TabIndex", tabIndex).Integer("TabPanelIndex", 0)
      // -2147483648: the control belongs to no control set.
      .Integer("Index", -2147483648LL)
      .Boolean("AllowAutoDeactivate", true).Boolean("Enabled", true).Text("Tooltip", "");
}

// A font and its styles, as the sheets write them.
inline Sheet Font(const char* name, float size, bool bold) {
  return Sheet()
      .Text("FontName", name).Size("FontSize", size).Integer("FontUnit", 0)
      .Boolean("Bold", bold).Boolean("Italic", false).Boolean("Underline", false);
}

inline Sheet NoDataBinding() {
  return Sheet().Text("InitialParent", "").Text("DataSource", "").Text("DataField", "");
}

}  // namespace drav
