#pragma once
#include "shell/canvas.hpp"
#include "shell/label.hpp"
#include "shell/push_button.hpp"
#include "shell/round_rectangle.hpp"
#include "shell/text_area.hpp"
#include "shell/text_field.hpp"
#include "shell/window.hpp"
#include "windows/menu_item_accessors.hpp"

namespace drav {

// The main window: the count field, "Load Data", "Clear", "Information" and
// the report area. It holds no data of its own; all state lives in its
// controls.
class ControlWnd : public Window, public MenuItemAccessors<ControlWnd> {
 public:
  static constexpr const char* kClassName = "ControlWnd.ControlWnd";
  ControlWnd() : Window(kClassName) {}

  TextField& pFld() const { return ControlAs<TextField>("pFld"); }
  PushButton& clearBtn() const { return ControlAs<PushButton>("clearBtn"); }
  PushButton& helpBtn() const { return ControlAs<PushButton>("helpBtn"); }
  PushButton& calcBtn() const { return ControlAs<PushButton>("calcBtn"); }
  TextArea& ResultsFld() const { return ControlAs<TextArea>("ResultsFld"); }
  Label& Label1() const { return ControlAs<Label>("Label1"); }
  TextField& TextField1() const { return ControlAs<TextField>("TextField1"); }
  Canvas& Canvas1() const { return ControlAs<Canvas>("Canvas1"); }
  RoundRectangle& RoundRectangle1() const { return ControlAs<RoundRectangle>("RoundRectangle1"); }

  bool pFld_KeyDown(TextField& field, const std::string& key);
  void pFld_Open(TextField& field);
  bool clearBtn_MouseDown(PushButton& button, std::int64_t x, std::int64_t y);
  bool helpBtn_MouseDown(PushButton& button, std::int64_t x, std::int64_t y);
  bool calcBtn_MouseDown(PushButton& button, std::int64_t x, std::int64_t y);
  bool ResultsFld_KeyDown(TextArea& area, const std::string& key);
  void ResultsFld_Open(TextArea& area);
  void Label1_Open(Label& label);
  void TextField1_Open(TextField& field);

 protected:
  void Layout() override;
  void CreateControls() override;
  void AddMenuHandlers() override;
  void Event_Close() override;

 private:
  void CreateControls0();
  bool FileQuit_Action();
  bool InfoItem_Action();
  bool AboutItem_Action();
};

}  // namespace drav
