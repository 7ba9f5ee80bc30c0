#include "shell/menu_bar_view.hpp"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMenuBar>
#include <functional>

#include "shell/handler_guard.hpp"
#include "shell/menu_item.hpp"
#include "shell/qt_convert.hpp"
#include "shell/text_edit.hpp"
#include "shell/window.hpp"

namespace drav {
namespace {

struct EditCommand {
  std::function<bool(const TextEdit&)> possible;
  std::function<void(TextEdit&)> run;
};

// The Edit items, by the names the text controls answer to.
const std::map<std::string, EditCommand>& EditCommands() {
  static const std::map<std::string, EditCommand> commands = {
      {"EditUndo", {[](const TextEdit& e) { return !e.IsReadOnly() && e.CanUndo(); }, [](TextEdit& e) { e.Undo(); }}},
      {"EditCut", {[](const TextEdit& e) { return !e.IsReadOnly() && e.HasSelection(); }, [](TextEdit& e) { e.Cut(); }}},
      {"EditCopy", {[](const TextEdit& e) { return e.HasSelection(); }, [](TextEdit& e) { e.Copy(); }}},
      {"EditPaste",
       {[](const TextEdit& e) { return !e.IsReadOnly() && !QApplication::clipboard()->text().isEmpty(); },
        [](TextEdit& e) { e.Paste(); }}},
      {"EditClear", {[](const TextEdit& e) { return !e.IsReadOnly() && e.HasSelection(); }, [](TextEdit& e) { e.Delete(); }}},
      {"EditSelectAll", {[](const TextEdit& e) { return !e.IsEmpty(); }, [](TextEdit& e) { e.SelectAll(); }}},
  };
  return commands;
}

}  // namespace

MenuBarView::MenuBarView(Window& window, MenuBar& bar) : QObject(&window), window_(window) {
  Build(bar, window.menuBar());
  // Enabling follows the window's handlers, the focus and the focused
  // control's state; these are the moments any of them can change.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* old, QWidget* now) {
    if (now != nullptr && now == window_.menuWidget() && old != nullptr && old->window() == &window_) keysFrom_ = old;
    UpdateEnabling();
  });
  connect(QApplication::clipboard(), &QClipboard::dataChanged, this, &MenuBarView::UpdateEnabling);
  UpdateEnabling();
}

void MenuBarView::Build(MenuItem& menu, QWidget* into) {
  for (const auto& owned : menu.Items()) {
    MenuItem& item = *owned;
    items_[item.Name] = &item;
    QAction* action = nullptr;
    if (auto* bar = qobject_cast<QMenuBar*>(into)) {
      QMenu* sub = bar->addMenu(ToQ(item.Value));
      action = sub->menuAction();
      connect(sub, &QMenu::aboutToShow, this, &MenuBarView::UpdateEnabling);
      Build(item, sub);
    } else if (item.IsSeparator()) {
      action = static_cast<QMenu*>(into)->addSeparator();
    } else {
      action = static_cast<QMenu*>(into)->addAction(ToQ(item.Value));
      action->setShortcut(QKeySequence(ToQ(PlatformShortcut(item.Shortcut))));
      action->setShortcutContext(Qt::WindowShortcut);
      if (dynamic_cast<const QuitMenuItem*>(&item)) action->setMenuRole(QAction::QuitRole);
      if (dynamic_cast<const PrefsMenuItem*>(&item)) action->setMenuRole(QAction::PreferencesRole);
      const std::string name = item.Name;
      connect(action, &QAction::triggered, this, [this, name] { internal::GuardHandler([&] { Choose(name); }); });
    }
    action->setVisible(item.Visible);
    action->setObjectName(ToQ(item.Name));
    actions_[item.Name] = action;
  }
}

QAction* MenuBarView::Action(const std::string& itemName) const {
  const auto found = actions_.find(itemName);
  return found == actions_.end() ? nullptr : found->second;
}

bool MenuBarView::IsEnabled(const MenuItem& item) const {
  if (!item.Items().empty()) return true;  // a menu
  if (!item.AutoEnabled) return true;
  if (window_.HasMenuHandler(item.Name) || item.HasOwnAction()) return true;
  const auto command = EditCommands().find(item.Name);
  if (command == EditCommands().end()) return false;
  const TextEdit* focused = FocusedText();
  return focused != nullptr && command->second.possible(*focused);
}

// The window's own focus child, which stays put while a menu is open or
// another window is in front. While the bar holds the keys (Alt, or a
// menu's access key) the Edit items still mean the control it took them
// from, as they do when the menu is opened with the mouse.
TextEdit* MenuBarView::FocusedText() const {
  QWidget* focus = window_.focusWidget();
  if (focus != nullptr && focus == window_.menuWidget()) focus = keysFrom_;
  return TextEdit::Of(focus);
}

void MenuBarView::UpdateEnabling() {
  for (const auto& [name, action] : actions_) {
    if (!items_[name]->IsSeparator()) action->setEnabled(IsEnabled(*items_[name]));
  }
}

void MenuBarView::Choose(const std::string& itemName) {
  MenuItem* item = items_.at(itemName);
  if (window_.RunMenuHandler(itemName)) return;
  if (item->HasOwnAction()) {
    item->Event_Action();
    return;
  }
  const auto command = EditCommands().find(itemName);
  if (command == EditCommands().end()) return;
  if (TextEdit* focused = FocusedText(); focused != nullptr && command->second.possible(*focused)) {
    command->second.run(*focused);
  }
  UpdateEnabling();
}

}  // namespace drav
