#include <QApplication>
#include <QtTest>

#include "analysis/end_of_line.hpp"
#include "base/text.hpp"
#include "shell/runtime.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/test_window.hpp"

namespace drav {

using testing_support::TestWnd;

class TextControlsTest : public QObject {
  Q_OBJECT

  TestWnd* w = nullptr;

 private slots:
  void init() {
    w = &Implicit<TestWnd>();
    w->activateWindow();
    w->field().SetFocus();
    QApplication::processEvents();
  }
  void cleanup() { w->close(); }

  // The code KeyDown sees for a typed character, a chord and a modifier
  // alone (none); the codes of the named keys are the control window's key
  // filter's to show (test_control_wnd). A key the handler consumes leaves
  // the text and the caret alone.
  void keyCodes_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("code");
    QTest::newRow("digit") << int(Qt::Key_5) << 0 << "5" << 53;
    // With a modifier held the key decides, not the control character.
    QTest::newRow("ctrl+k") << int(Qt::Key_K) << int(Qt::ControlModifier) << "\x0b" << int('k');
    QTest::newRow("e acute") << int(Qt::Key_Eacute) << 0 << QString(QChar(0xE9)) << 0xE9;
    QTest::newRow("shift alone") << int(Qt::Key_Shift) << int(Qt::ShiftModifier) << "" << -1;
  }
  void keyCodes() {
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, text);
    QFETCH(int, code);
    w->field().SetText("42");
    w->field().Edit()->setCursorPosition(1);
    w->onKey = [] { return true; };
    QKeyEvent press(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers), text);
    QApplication::sendEvent(w->field().Edit(), &press);
    QCOMPARE(w->fieldKeys.size(), std::size_t(code < 0 ? 0 : 1));
    if (code >= 0) QCOMPARE(Asc(w->fieldKeys[0]), std::int64_t{code});
    QCOMPARE(w->field().Text(), std::string("42"));
    QCOMPARE(w->field().Edit()->cursorPosition(), 1);
  }

  // Typed keys raise KeyDown and then, passed, reach the field within its
  // mask and limit; text set by the program raises none.
  void passedKeysReachTheFieldWithinMaskAndLimit() {
    w->field().SetText("9");
    QTest::keyClicks(w->field().Edit(), "x1234");
    QCOMPARE(w->field().Text(), std::string("91"));
    QCOMPARE(w->fieldKeys.size(), std::size_t{5});
  }

  // The area reads back exactly the line ends it was given. A run sets the
  // old text with a new report behind it: only the tail is laid out, and
  // what the user sees must be as if all of it had been set, with no step
  // to undo.
  void areaShowsWhatWasSet_data() {
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("lines");
    QTest::newRow("CR") << "" << "a\rb\rc" << 3;
    QTest::newRow("LF, mixed, empty") << "a\nb" << "x\r\n\ry" << 3;
    QTest::newRow("report behind report") << "A\rB\r" << "A\rB\rC\rD\r" << 5;
    QTest::newRow("CR LF split between the two") << "A\r" << "A\r\nB" << 2;
    QTest::newRow("shorter text") << "A\rB\rC" << "A" << 1;
    QTest::newRow("other text") << "A\rB" << "X\rB\rC" << 3;
    QTest::newRow("emptied") << "A\r\nB\r\n" << "" << 1;
  }
  void areaShowsWhatWasSet() {
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(int, lines);
    w->area().SetText(first.toStdString());
    w->area().SetText(second.toStdString());
    QCOMPARE(QString::fromStdString(w->area().Text()), second);
    QCOMPARE(w->area().Edit()->document()->blockCount(), lines);
    QCOMPARE(w->area().Edit()->toPlainText(), QString(second).replace("\r\n", "\n").replace('\r', '\n'));
    QVERIFY(!w->area().CanUndo());
  }

  void typedLineBreakReadsBackAsTheBuildLineEnd() {
    w->area().SetText("one\rtwo");
    w->area().SetFocus();
    QTest::keyClick(w->area().Edit(), Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(w->area().Edit(), Qt::Key_Return);
    QTest::keyClicks(w->area().Edit(), "x");
    QCOMPARE(w->area().Text(), "one" + EndOfLine::Build() + "two" + EndOfLine::Build() + "x");
  }

  void styledBoldCountsCharactersNotBytes() {
    w->area().SetText("\xC3\xA9t\xC3\xA9 \xF0\x9F\x98\x80x\r\nrest");
    StyledText& styled = w->area().GetStyledText();
    styled.Bold(0, 4, true);
    for (int i = 0; i < 4; ++i) QVERIFY2(styled.IsBold(i), qPrintable(QString::number(i)));
    QVERIFY(!styled.IsBold(4));
    styled.Bold(5, 1, true);  // "x" behind the four-byte character
    QVERIFY(styled.IsBold(5));
    QVERIFY(!styled.IsBold(8));  // "r" behind CR LF, which is two characters
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::TextControlsTest)
#include "test_text_controls.moc"
