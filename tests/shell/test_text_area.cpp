#include <QtTest>

#include "shell/implicit.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/test_window.hpp"

namespace drav {

using testing_support::TestWnd;

// A run sets the area's old text with a new report behind it; only the tail
// is laid out, and what the user sees and can undo must be as if all of it
// had been set.
class TextAreaTest : public QObject {
  Q_OBJECT

 private slots:
  void settingALongerTextShowsItWhole_data() {
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("lines");
    QTest::newRow("report behind report") << "A\rB\r" << "A\rB\rC\rD\r" << 5;
    QTest::newRow("CR LF split between the two") << "A\r" << "A\r\nB" << 2;
    QTest::newRow("shorter text") << "A\rB\rC" << "A" << 1;
    QTest::newRow("other text") << "A\rB" << "X\rB\rC" << 3;
  }
  void settingALongerTextShowsItWhole() {
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(int, lines);
    TestWnd& w = Implicit<TestWnd>();
    w.area().SetText(first.toStdString());
    w.area().SetText(second.toStdString());
    QCOMPARE(QString::fromStdString(w.area().Text()), second);
    QCOMPARE(w.area().Edit()->document()->blockCount(), lines);
    QCOMPARE(w.area().Edit()->toPlainText(), QString(second).replace("\r\n", "\n").replace('\r', '\n'));
    QVERIFY(!w.area().CanUndo());  // a run is no step the user can undo
    w.close();
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::TextAreaTest)
#include "test_text_area.moc"
