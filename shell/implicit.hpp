#pragma once
#include "shell/runtime.hpp"
#include "shell/window.hpp"

namespace drav {

// The implicit instance of a window class: the live window, or a new one,
// built and (if its sheet says Visible) shown. A hidden window is live; a
// closed one is gone, so the next mention makes a new one.
template <class W>
W& Implicit() {
  if (Window* live = GetImplicitWindow(W::kClassName)) return static_cast<W&>(*live);
  auto* made = new W;
  made->Constructor();
  return *made;
}

}  // namespace drav
