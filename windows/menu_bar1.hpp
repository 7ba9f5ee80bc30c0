#pragma once
#include <memory>

#include "shell/menu_item.hpp"

namespace drav {

// The program's one menu bar: "&File", "&Edit" and "Window". One object is
// shared by the application, ControlWnd and helpWnd.
class MenuBar1 : public MenuBar {
 public:
  MenuBar1();
  // The implicit instance: made at the first call, the same object after.
  static std::shared_ptr<MenuBar1> Shared();

 private:
  void Untitled0();  // "&File"
  void Untitled1();  // "&Edit"
  void Untitled2();  // "Window"
};

}  // namespace drav
