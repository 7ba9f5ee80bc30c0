#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenuBar>
#include <QtTest>

#include "shell/menu_bar_view.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/test_window.hpp"

namespace drav {

using testing_support::TestWnd;

class MenuBarTest : public QObject {
  Q_OBJECT

  TestWnd* w = nullptr;
  QAction* Item(const char* name) { return w->GetMenuBarView()->Action(name); }

 private slots:
  void init() {
    QApplication::clipboard()->clear();
    w = &Implicit<TestWnd>();
    w->activateWindow();
    w->field().SetFocus();
    QApplication::processEvents();
  }
  void cleanup() { w->close(); }

  void treeInDisplayOrder() {
    struct Row {
      const char* path;
      const char* text;
      const char* shortcut;
    };
    const std::shared_ptr<MenuBar1> bar = MenuBar1::Shared();
    std::vector<std::string> seen;
    for (const auto& menu : bar->Items()) {
      seen.push_back(menu->Name + "=" + menu->Value);
      for (const auto& item : menu->Items()) seen.push_back("  " + item->Name + "=" + item->Value + "|" + item->Shortcut);
    }
    const std::vector<std::string> expected = {
        "FileMenu=&File",       "  FileQuit=&Quit|Cmd+Q",       "  AboutItem=About Drav|",
        "EditMenu=&Edit",       "  EditUndo=&Undo|Cmd+Z",       "  UntitledMenu1=-|",
        "  EditCut=Cu&t|Cmd+X", "  EditCopy=&Copy|Cmd+C",       "  EditPaste=&Paste|Cmd+V",
        "  EditClear=&Delete|", "  UntitledMenu0=-|",           "  EditSelectAll=Select &All|Cmd+A",
        "InfoMenu=Window",      "  ControlItem=Control|",       "  InfoItem=Information|"};
    QCOMPARE(seen, expected);
    QCOMPARE(bar.get(), MenuBar1::Shared().get());
    QVERIFY(dynamic_cast<QuitMenuItem*>(bar->Lookup("FileQuit")) != nullptr);
    QVERIFY(dynamic_cast<PrefsMenuItem*>(bar->Lookup("AboutItem")) != nullptr);
  }

  void windowShowsTheBarWithPlatformShortcuts() {
    QCOMPARE(w->menuBar()->actions().size(), 3);
    QCOMPARE(Item("FileQuit")->shortcut(), QKeySequence("Ctrl+Q"));
    QCOMPARE(Item("EditSelectAll")->shortcut(), QKeySequence("Ctrl+A"));
    QVERIFY(Item("EditClear")->shortcut().isEmpty());
    QVERIFY(Item("UntitledMenu1")->isSeparator());
  }

  void enablingFollowsHandlersAndOwnActions() {
    QVERIFY(Item("InfoItem")->isEnabled());      // the window has a handler
    QVERIFY(!Item("ControlItem")->isEnabled());  // no handler, no action of its own
    QVERIFY(Item("FileQuit")->isEnabled());      // its own action quits
    Item("InfoItem")->trigger();
    QCOMPARE(w->infoChosen, 1);
  }

  void editEnablingFollowsTheFocusedControl() {
    QVERIFY(!Item("EditCopy")->isEnabled());
    QVERIFY(!Item("EditSelectAll")->isEnabled());
    QVERIFY(!Item("EditPaste")->isEnabled());
    w->field().SetText("42");
    QVERIFY(Item("EditSelectAll")->isEnabled());
    w->field().Edit()->selectAll();
    QVERIFY(Item("EditCopy")->isEnabled());
    QVERIFY(Item("EditCut")->isEnabled());
    QApplication::clipboard()->setText("7");
    QVERIFY(Item("EditPaste")->isEnabled());
  }

  void editShortcutsActWithoutPassingTheKeyFilter() {
    w->consumeFieldKeys = true;  // the filter would swallow every key
    w->field().SetText("42");
    QTest::keySequence(w->field().Edit(), QKeySequence("Ctrl+A"));
    QCOMPARE(w->field().Edit()->selectedText(), QString("42"));
    QTest::keySequence(w->field().Edit(), QKeySequence("Ctrl+C"));
    QCOMPARE(QApplication::clipboard()->text(), QString("42"));
    QTest::keySequence(w->field().Edit(), QKeySequence("Ctrl+X"));
    QCOMPARE(w->field().Text(), std::string());
    QTest::keySequence(w->field().Edit(), QKeySequence("Ctrl+V"));
    QCOMPARE(w->field().Text(), std::string("42"));
    QTest::keySequence(w->field().Edit(), QKeySequence("Ctrl+Z"));
    QCOMPARE(w->field().Text(), std::string());
    QVERIFY(w->fieldKeys.empty());
  }

  void pasteKeepsTheFieldsMaskAndLimit() {
    QApplication::clipboard()->setText("123abc");
    Item("EditPaste")->trigger();
    QVERIFY(w->field().Text().size() <= 2);
    w->field().SetText("");
    QApplication::clipboard()->setText("x9");
    Item("EditPaste")->trigger();
    QCOMPARE(w->field().Text(), std::string());  // the mask takes digits only
    QApplication::clipboard()->setText("9");
    Item("EditPaste")->trigger();
    QCOMPARE(w->field().Text(), std::string("9"));
  }

  void editItemsWorkOnTheArea() {
    w->area().SetText("abc");
    w->area().SetFocus();
    QApplication::processEvents();
    Item("EditSelectAll")->trigger();
    Item("EditClear")->trigger();
    QCOMPARE(w->area().Text(), std::string());
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::MenuBarTest)
#include "test_menu_bar.moc"
