#pragma once
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <map>
#include <string>

class QAction;

namespace drav {

class MenuBar;
class MenuItem;
class TextEdit;
class Window;

// One window's Qt menus, built from the shared menu model. An item runs the
// window's handler for it; failing that its own action (Quit); failing that,
// for the six Edit items, the command on the window's focused text control.
// Enabling follows the same rule and the focused control's state.
class MenuBarView : public QObject {
 public:
  MenuBarView(Window& window, MenuBar& bar);

  QAction* Action(const std::string& itemName) const;
  // Recomputes which items are enabled.
  void UpdateEnabling();
  // Runs the item as a choice from the menu would.
  void Choose(const std::string& itemName);

 private:
  void Build(MenuItem& menu, QWidget* into);
  bool IsEnabled(const MenuItem& item) const;
  TextEdit* FocusedText() const;

  Window& window_;
  std::map<std::string, QAction*> actions_;
  std::map<std::string, MenuItem*> items_;
  QPointer<QWidget> keysFrom_;
};

}  // namespace drav
