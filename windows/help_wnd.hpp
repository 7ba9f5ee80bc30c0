#pragma once
#include "shell/text_area.hpp"
#include "shell/window.hpp"
#include "windows/menu_item_accessors.hpp"

namespace drav {

// The Information window: the help document in one editable text area.
// Edits live in this window object only; closing it forgets them.
class helpWnd : public Window, public MenuItemAccessors<helpWnd> {
 public:
  static constexpr const char* kClassName = "helpWnd.helpWnd";
  helpWnd() : Window(kClassName) {}

  TextArea& EditField1() const { return ControlAs<TextArea>("EditField1"); }
  void EditField1_Open(TextArea& area);

 protected:
  void Layout() override;
  void CreateControls() override;
  void AddMenuHandlers() override;

 private:
  void CreateControls0();
  bool ControlItem_Action();
};

}  // namespace drav
