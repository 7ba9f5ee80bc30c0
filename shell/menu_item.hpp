#pragma once
// The menu model: one tree, shared by the application and every window that
// shows a bar. Each window builds its own Qt menus from it (menu_bar_view).
#include <memory>
#include <string>
#include <vector>

namespace drav {

class MenuItem {
 public:
  MenuItem() = default;
  virtual ~MenuItem() = default;
  MenuItem(const MenuItem&) = delete;
  MenuItem& operator=(const MenuItem&) = delete;

  std::string Name;
  bool AutoEnabled = true;
  std::string Value;     // the item's text; & marks the access key, "-" a separator
  bool Visible = true;
  std::string Shortcut;  // text form such as "Cmd+Q"; empty for none

  bool IsSeparator() const { return Value == "-"; }

  // Adds an item at the end of this menu; gives it back.
  MenuItem& AddMenu(std::unique_ptr<MenuItem> item);
  // The direct sub-item of that name, or nil.
  MenuItem* Child(const std::string& name) const;
  // The item of that name anywhere below, or nil.
  MenuItem* Lookup(const std::string& name) const;
  const std::vector<std::unique_ptr<MenuItem>>& Items() const { return items_; }

  // Whether the item acts by itself when the window in front has no handler
  // for it, and that action.
  virtual bool HasOwnAction() const { return false; }
  virtual void Event_Action() {}

 private:
  std::vector<std::unique_ptr<MenuItem>> items_;
};

class MenuBar : public MenuItem {};

// The item the toolkit places as Quit: its own action quits.
class QuitMenuItem : public MenuItem {
 public:
  bool HasOwnAction() const override { return true; }
  void Event_Action() override;
};

// The item the toolkit places in the application menu on macOS. Its own
// action is the runtime's preferences action, which does nothing here.
class PrefsMenuItem : public MenuItem {
 public:
  bool HasOwnAction() const override { return false; }
};

// The shortcut text with the platform's modifier: "Cmd" is Ctrl off macOS
// (and Qt's Ctrl is already Cmd on macOS).
std::string PlatformShortcut(const std::string& shortcut);

}  // namespace drav
