#pragma once
// A small window built the way the program's windows are, for the tests of
// the widget contract: a field, an area and a button, with the shared menu
// bar and one menu handler.
#include <functional>
#include <vector>

#include "shell/implicit.hpp"
#include "shell/sheet.hpp"
#include "shell/push_button.hpp"
#include "shell/text_area.hpp"
#include "shell/text_field.hpp"
#include "windows/menu_bar1.hpp"

namespace drav::testing_support {

class TestWnd : public Window {
 public:
  static constexpr const char* kClassName = "TestWnd.TestWnd";
  TestWnd() : Window(kClassName) {}

  TextField& field() const { return ControlAs<TextField>("field"); }
  TextArea& area() const { return ControlAs<TextArea>("area"); }
  PushButton& button() const { return ControlAs<PushButton>("button"); }

  // What the handlers saw, and what they answer.
  std::vector<std::string> fieldKeys;
  std::function<bool()> onKey = [] { return false; };
  int fieldOpens = 0, closes = 0;
  std::function<bool()> onPress = [] { return false; };

 protected:
  void Layout() override {
    SetMenuBar(MenuBar1::Shared());
    SetProperties(*this, Sheet().Text("Title", "Test").Integer("Width", 400).Integer("Height", 300)
                             .Boolean("Resizeable", false).Integer("MacProcID", 0).Boolean("Visible", true).Bytes());
  }
  static Sheet At(std::int64_t left, std::int64_t top, std::int64_t width, std::int64_t height) {
    return Sheet().Integer("Left", left).Integer("Top", top).Integer("Width", width).Integer("Height", height);
  }
  void CreateControls() override {
    auto* field = new TextField;
    AddControl("field", field);
    SetProperties(*field, At(10, 10, 50, 22).Integer("MaximumCharactersAllowed", 2)
                              .Text("ValidationMask", "##").Boolean("TabStop", true).Bytes());
    field->KeyDown = [this](const std::string& key) {
      fieldKeys.push_back(key);
      return onKey();
    };
    field->Open = [this] { ++fieldOpens; };
    auto* area = new TextArea;
    AddControl("area", area);
    SetProperties(*area, At(10, 40, 300, 150).Boolean("AllowTabs", false).Integer("UnicodeMode", 0).Bytes());
    auto* button = new PushButton;
    AddControl("button", button);
    SetProperties(*button, At(10, 200, 100, 40).Text("Caption", "Press").Boolean("TabStop", false).Bytes());
    button->MouseDown = [this](std::int64_t, std::int64_t) { return onPress(); };
  }
  void Event_Close() override { ++closes; }
};

}  // namespace drav::testing_support
