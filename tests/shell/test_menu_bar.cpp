#include <QApplication>
#include <QClipboard>
#include <QtTest>

#include "shell/runtime.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/test_window.hpp"
#include "tests/shell/user_input.hpp"

namespace drav {

using namespace testing_support;

// The shared bar as a user meets it: menus opened from the bar, items
// chosen by their access keys, shortcuts typed in the focused field.
class MenuBarTest : public QObject {
  Q_OBJECT

  TestWnd* w = nullptr;

 private slots:
  void init() {
    QApplication::clipboard()->clear();
    w = &Implicit<TestWnd>();
    QVERIFY(Activate(*w));
    QTest::mouseClick(w->field().Edit(), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), w->field().Widget());
  }
  void cleanup() {
    if (QMenu* menu = OpenPopup()) menu->close();
    w->close();
  }

  // The Edit items by menu, opened by mouse or Alt+E, and by their key
  // combinations. Opening the menu must not take the focus from the field,
  // or every item would show disabled. A combination is its item's
  // command, enabled or not: it never reaches the field's KeyDown filter,
  // whose refusal would beep. The field's mask and limit still hold for
  // what a paste brings.
  void editCommandsActOnTheFocusedField_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("selectAll");
    QTest::addColumn<QString>("clipboard");
    QTest::addColumn<QString>("how");  // "mouse", "Alt+E" or a key sequence
    QTest::addColumn<QStringList>("enabled");
    QTest::addColumn<int>("choose");
    QTest::addColumn<QString>("fieldAfter");
    QTest::addColumn<QString>("clipboardAfter");
    const QStringList all = {"Undo", "Cut", "Copy", "Paste", "Delete", "Select All"}, none;
    const int c = Qt::Key_C, u = Qt::Key_U, p = Qt::Key_P;
    QTest::newRow("mouse: copy") << "42" << true << "7" << "mouse" << all << c << "42" << "42";
    QTest::newRow("Alt+E: copy") << "42" << true << "7" << "Alt+E" << all << c << "42" << "42";
    QTest::newRow("Alt+E: undo typing") << "42" << false << "" << "Alt+E" << QStringList{"Undo", "Select All"} << u << "" << "";
    QTest::newRow("mouse: paste") << "" << false << "9" << "mouse" << QStringList{"Paste"} << p << "9" << "9";
    QTest::newRow("copy, nothing selected") << "42" << false << "" << "Ctrl+C" << none << 0 << "42" << "";
    QTest::newRow("undo, nothing to undo") << "" << false << "" << "Ctrl+Z" << none << 0 << "" << "";
    QTest::newRow("select all, empty field") << "" << false << "" << "Ctrl+A" << none << 0 << "" << "";
    QTest::newRow("cut, nothing selected") << "42" << false << "" << "Ctrl+X" << none << 0 << "42" << "";
    QTest::newRow("cut a selection") << "42" << true << "" << "Ctrl+X" << none << 0 << "" << "42";
    QTest::newRow("paste keeps the mask") << "" << false << "x9" << "Ctrl+V" << none << 0 << "" << "x9";
    QTest::newRow("paste keeps the limit") << "" << false << "123" << "Ctrl+V" << none << 0 << "12" << "123";
    QTest::newRow("undo a paste") << "" << false << "5" << "Ctrl+V, Ctrl+Z" << none << 0 << "" << "5";
  }
  void editCommandsActOnTheFocusedField() {
    QFETCH(QString, typed);
    QFETCH(bool, selectAll);
    QFETCH(QString, clipboard);
    QFETCH(QString, how);
    QFETCH(QStringList, enabled);
    QFETCH(int, choose);
    Type(typed);
    if (selectAll) Press(Qt::Key_A, Qt::ControlModifier);
    if (!clipboard.isEmpty()) QApplication::clipboard()->setText(clipboard);
    w->fieldKeys.clear();
    const std::int64_t beeps = BeepCount();
    w->onKey = [] { return true; };  // a key that reached the filter would be swallowed
    if (how == "mouse" || how == "Alt+E") {
      QMenu* edit = how == "mouse" ? OpenMenuByMouse(*w, "Edit") : OpenMenuByKey(Qt::Key_E);
      QCOMPARE(EnabledItems(edit).join(", "), enabled.join(", "));
      ChooseInMenu(Qt::Key(choose));
      QVERIFY(OpenPopup() == nullptr);
    } else {
      QTest::keySequence(QApplication::focusWidget(), QKeySequence(how));
    }
    QCOMPARE(QApplication::focusWidget(), w->field().Widget());
    QCOMPARE(w->fieldKeys, std::vector<std::string>());
    QCOMPARE(BeepCount(), beeps);
    QTEST(QString::fromStdString(w->field().Text()), "fieldAfter");
    QTEST(QApplication::clipboard()->text(), "clipboardAfter");
  }

  // A read-only control offers only what leaves its text alone, whatever
  // it has to undo and the clipboard holds.
  void readOnlyAreaOffersOnlyCopyAndSelectAll() {
    QTest::mouseClick(w->area().Edit()->viewport(), Qt::LeftButton);
    Type("abc");
    SetProperties(w->area(), Sheet().Boolean("ReadOnly", true).Bytes());
    Press(Qt::Key_A, Qt::ControlModifier);
    QApplication::clipboard()->setText("x");
    QCOMPARE(EnabledItems(OpenMenuByMouse(*w, "Edit")), (QStringList{"Copy", "Select All"}));
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::MenuBarTest)
#include "test_menu_bar.moc"
