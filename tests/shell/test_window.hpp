#pragma once
// A small window built the way the program's windows are, for the tests of
// the widget contract: a field, an area and a button, with the shared menu
// bar and one menu handler.
#include <functional>
#include <vector>

#include "shell/implicit.hpp"
#include "sheets/property_sheet.hpp"
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
  bool consumeFieldKeys = false;
  int fieldOpens = 0, closes = 0, infoChosen = 0;
  std::function<bool()> onPress = [] { return false; };

 protected:
  void Layout() override {
    SetMenuBar(MenuBar1::Shared());
    SetProperties(*this, EncodeSheet({{"Title", std::string("Test")}, {"Width", std::int64_t{400}},
                                      {"Height", std::int64_t{300}}, {"Resizeable", false},
                                      {"MacProcID", std::int64_t{0}}, {"Visible", true}}));
  }
  void CreateControls() override {
    auto* field = new TextField;
    AddControl("field", field);
    SetProperties(*field, EncodeSheet({{"Left", std::int64_t{10}}, {"Top", std::int64_t{10}},
                                       {"Width", std::int64_t{50}}, {"Height", std::int64_t{22}},
                                       {"MaximumCharactersAllowed", std::int64_t{2}},
                                       {"ValidationMask", std::string("##")}, {"TabStop", true}}));
    field->KeyDown = [this](const std::string& key) {
      fieldKeys.push_back(key);
      return consumeFieldKeys;
    };
    field->Open = [this] { ++fieldOpens; };

    auto* area = new TextArea;
    AddControl("area", area);
    SetProperties(*area, EncodeSheet({{"Left", std::int64_t{10}}, {"Top", std::int64_t{40}},
                                      {"Width", std::int64_t{300}}, {"Height", std::int64_t{150}},
                                      {"AllowTabs", false}, {"UnicodeMode", std::int64_t{0}}}));

    auto* button = new PushButton;
    AddControl("button", button);
    SetProperties(*button, EncodeSheet({{"Left", std::int64_t{10}}, {"Top", std::int64_t{200}},
                                        {"Width", std::int64_t{100}}, {"Height", std::int64_t{40}},
                                        {"Caption", std::string("Press")}, {"TabStop", false}}));
    button->MouseDown = [this](std::int64_t, std::int64_t) { return onPress(); };
  }
  void AddMenuHandlers() override {
    AddMenuHandler("InfoItem", [this] {
      ++infoChosen;
      return true;
    });
  }
  void Event_Close() override {
    ++closes;
    if (quitOnClose) Quit(0);
  }

 public:
  bool quitOnClose = false;
};

}  // namespace drav::testing_support
