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

// A click on the menu's title in the bar, as drawn: "Edit", "File", "Window".
inline QMenu* OpenMenuByMouse(QMainWindow& window, const QString& title) {
  QMenuBar* bar = window.menuBar();
  for (QAction* menu : bar->actions()) {
    if (menu->text().remove(QLatin1Char('&')) == title) {
      QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu).center());
    }
  }
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
  QMenu* menu = OpenPopup();
  if (menu == nullptr) return;
  for (QAction* item : menu->actions()) {
    if (item->text().remove(QLatin1Char('&')) == text) {
      QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item).center());
      return;
    }
  }
}

}  // namespace drav::testing_support
