#include "shell/menu_item.hpp"

#include "base/text.hpp"
#include "shell/runtime.hpp"

namespace drav {

MenuItem& MenuItem::AddMenu(std::unique_ptr<MenuItem> item) {
  items_.push_back(std::move(item));
  return *items_.back();
}

MenuItem* MenuItem::Child(const std::string& name) const {
  for (const auto& item : items_) {
    if (item->Name == name) return item.get();
  }
  return nullptr;
}

MenuItem* MenuItem::Lookup(const std::string& name) const {
  for (const auto& item : items_) {
    if (item->Name == name) return item.get();
    if (MenuItem* found = item->Lookup(name)) return found;
  }
  return nullptr;
}

void QuitMenuItem::Event_Action() { Quit(0); }

std::string PlatformShortcut(const std::string& shortcut) { return ReplaceAll(shortcut, "Cmd+", "Ctrl+"); }

}  // namespace drav
