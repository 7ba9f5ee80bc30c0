#pragma once
// What a person's hands do, for the window tests: keys go to whatever has
// the focus, menus open from the bar by mouse or access key and show their
// items as drawn, an item is chosen by its access key.
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QtTest>

namespace drav::testing_support {

// Brings the window in front, where its keys and shortcuts go.
inline bool Activate(QWidget& window) {
  window.activateWindow();
  return QTest::qWaitForWindowActive(&window, 5000);
}

// Types at the focus, wherever it is; nothing if no widget has it.
inline void Type(const QString& keys) {
  if (QWidget* focus = QApplication::focusWidget()) QTest::keyClicks(focus, keys);
}
inline void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  if (QWidget* focus = QApplication::focusWidget()) QTest::keyClick(focus, key, modifiers);
}

inline QMenu* OpenPopup() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

// Clicks the action that shows this text, as drawn without its access mark.
template <typename MenuOrBar>
void ClickShown(MenuOrBar* where, const QString& text) {
  for (QAction* action : where->actions()) {
    if (action->text().remove(QLatin1Char('&')) == text) {
      QTest::mouseClick(where, Qt::LeftButton, {}, where->actionGeometry(action).center());
      return;
    }
  }
}

// A click on the menu's title in the bar: "Edit", "File", "Window".
inline QMenu* OpenMenuByMouse(QMainWindow& window, const QString& title) {
  ClickShown(window.menuBar(), title);
  return OpenPopup();
}

// Alt and the title's access key, typed at the focus.
inline QMenu* OpenMenuByKey(Qt::Key accessKey) {
  Press(accessKey, Qt::AltModifier);
  return OpenPopup();
}

// The items the open menu shows enabled, by their text without access marks.
inline QStringList EnabledItems(const QMenu* menu) {
  QStringList enabled;
  if (menu == nullptr) return {QStringLiteral("<no menu open>")};
  for (const QAction* item : menu->actions()) {
    if (!item->isSeparator() && item->isEnabled()) enabled << item->text().remove(QLatin1Char('&'));
  }
  return enabled;
}

// Chooses an item of the open menu by its access key; Escape closes it.
inline void ChooseInMenu(Qt::Key accessKey) {
  if (QMenu* menu = OpenPopup()) QTest::keyClick(menu, accessKey);
}

// Clicks the item of the open menu that shows this text.
inline void ChooseByMouse(const QString& text) {
  if (QMenu* menu = OpenPopup()) ClickShown(menu, text);
}

}  // namespace drav::testing_support
