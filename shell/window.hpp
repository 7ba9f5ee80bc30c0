#pragma once
#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "base/runtime_exception.hpp"
#include "shell/propertied.hpp"

namespace drav {

class Control;
class MenuBar;
class MenuBarView;

// Base of the program's windows: a content area of the sheet's size, the
// window's controls by name, its menu bar and its menu handlers.
//
// Building (Constructor) calls the events Layout, CreateControls and
// AddMenuHandlers, raises Open on every control, builds the menus, and
// shows the window when its sheet says Visible.
class Window : public QMainWindow, public Propertied {
 public:
  explicit Window(std::string fullClassName);
  ~Window() override;

  const std::string& FullClassName() const { return className_; }
  void Constructor();
  void Show();
  void Hide();

  const std::shared_ptr<MenuBar>& GetMenuBar() const { return menuBar_; }
  void SetMenuBar(std::shared_ptr<MenuBar> bar) { menuBar_ = std::move(bar); }
  MenuBarView* GetMenuBarView() const { return menuBarView_; }

  void AddControl(const std::string& name, Control* control);
  Control* ControlByName(const std::string& name) const;
  // The control of that name as its class; IllegalCastException otherwise.
  template <class C>
  C& ControlAs(const std::string& name) const {
    auto* control = dynamic_cast<C*>(ControlByName(name));
    if (control == nullptr) throw IllegalCastException("no control \"" + name + "\" of that class in " + className_);
    return *control;
  }

  // Menu handlers by item name; True means the item's action is done.
  void AddMenuHandler(const std::string& itemName, std::function<bool()> handler);
  bool HasMenuHandler(const std::string& itemName) const { return menuHandlers_.contains(itemName); }
  bool RunMenuHandler(const std::string& itemName);

  QWidget* Content() const { return content_; }

 protected:
  virtual void Layout() {}
  virtual void CreateControls() {}
  virtual void AddMenuHandlers() {}
  // The window is being closed by its close button.
  virtual void Event_Close() {}
  // A key or mouse press that no control took; True consumes it.
  virtual bool Event_KeyDown(const std::string&) { return false; }
  virtual bool Event_MouseDown(std::int64_t, std::int64_t) { return false; }

  bool ApplyProperty(const Property& property) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void ApplyFrame();
  void PlaceOnFirstShow();
  int MenuBarHeight() const;
  void Unregister();

  std::string className_;
  QWidget* content_;
  std::map<std::string, Control*> controls_;
  std::vector<Control*> creationOrder_;
  std::map<std::string, std::function<bool()>> menuHandlers_;
  std::shared_ptr<MenuBar> menuBar_;
  MenuBarView* menuBarView_ = nullptr;
  bool registered_ = false;
  bool visible_ = false;
  bool placed_ = false;
  std::int64_t defaultLocation_ = 0;
  bool resizeable_ = true;
  std::int64_t type_ = 0;
  bool closeButton_ = true, minimizeButton_ = true, maximizeButton_ = true, menuBarVisible_ = true;
  QSize size_{100, 100}, minimum_{64, 64}, maximum_{32000, 32000};
};

}  // namespace drav
