#include "windows/menu_bar1.hpp"

namespace drav {
namespace {

struct ItemSpec {
  const char* name;
  const char* text;
  const char* shortcut;  // nullptr: left untouched (the separators)
};

template <class Item = MenuItem>
std::unique_ptr<MenuItem> Make(const ItemSpec& entry) {
  auto item = std::make_unique<Item>();
  item->Name = entry.name;
  item->AutoEnabled = true;
  item->Value = entry.text;
  item->Visible = true;
  if (entry.shortcut != nullptr) item->Shortcut = entry.shortcut;
  return item;
}

}  // namespace

MenuBar1::MenuBar1() {
  Untitled0();
  Untitled1();
  Untitled2();
}

std::shared_ptr<MenuBar1> MenuBar1::Shared() {
  static const std::shared_ptr<MenuBar1> bar = std::make_shared<MenuBar1>();
  return bar;
}

void MenuBar1::Untitled0() {
  AddMenu(Make({"FileMenu", "&File", ""}));
  MenuItem& menu = *Child("FileMenu");
  menu.AddMenu(Make<QuitMenuItem>({"FileQuit", "&Quit", "Cmd+Q"}));
  menu.AddMenu(Make<PrefsMenuItem>({"AboutItem", "About Drav", ""}));
}

void MenuBar1::Untitled1() {
  AddMenu(Make({"EditMenu", "&Edit", ""}));
  MenuItem& menu = *Child("EditMenu");
  menu.AddMenu(Make({"EditUndo", "&Undo", "Cmd+Z"}));
  menu.AddMenu(Make({"UntitledMenu1", "-", nullptr}));
  menu.AddMenu(Make({"EditCut", "Cu&t", "Cmd+X"}));
  menu.AddMenu(Make({"EditCopy", "&Copy", "Cmd+C"}));
  menu.AddMenu(Make({"EditPaste", "&Paste", "Cmd+V"}));
  menu.AddMenu(Make({"EditClear", "&Delete", ""}));
  menu.AddMenu(Make({"UntitledMenu0", "-", nullptr}));
  menu.AddMenu(Make({"EditSelectAll", "Select &All", "Cmd+A"}));
}

void MenuBar1::Untitled2() {
  AddMenu(Make({"InfoMenu", "Window", ""}));
  MenuItem& menu = *Child("InfoMenu");
  menu.AddMenu(Make({"ControlItem", "Control", ""}));
  menu.AddMenu(Make({"InfoItem", "Information", ""}));
}

}  // namespace drav
