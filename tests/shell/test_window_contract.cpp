#include <QApplication>
#include <QtTest>
#include <cerrno>

#include "base/runtime_exception.hpp"
#include "shell/label.hpp"
#include "shell/picture.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/test_window.hpp"

namespace drav {

using testing_support::TestWnd;

class WindowContractTest : public QObject {
  Q_OBJECT

  std::vector<std::string> alerts;

 private slots:
  void init() {
    alerts.clear();
    Application::Instance()->ShowFailure = [this](const std::string& text) { alerts.push_back(text); };
  }

  // A hidden window is the same object with its contents; a closed one is
  // gone, and the next mention makes it anew, empty.
  void windowLivesUntilItCloses() {
    TestWnd& first = Implicit<TestWnd>();
    first.field().SetText("12");
    first.area().SetText("report\r");
    first.Hide();
    QVERIFY(!first.isVisible());
    QCOMPARE(&Implicit<TestWnd>(), &first);
    first.Show();
    QVERIFY(first.isVisible());
    QCOMPARE(first.fieldOpens, 1);  // Open runs once per control, not per showing
    QCOMPARE(first.field().Text(), std::string("12"));
    QCOMPARE(first.area().Text(), std::string("report\r"));
    first.close();
    QCOMPARE(first.closes, 1);
    QVERIFY(GetImplicitWindow(TestWnd::kClassName) == nullptr);
    TestWnd& second = Implicit<TestWnd>();
    QCOMPARE(second.field().Text(), std::string());
    QCOMPARE(second.fieldOpens, 1);
    second.close();
  }

  // MouseDown runs at the left button's press, before any release; its
  // True keeps the press from the toolkit, so no click follows. (A modal
  // alert inside the handler is the windows' fault tests' to press.)
  void buttonPress_data() {
    QTest::addColumn<int>("mouseButton");
    QTest::addColumn<QString>("handler");
    QTest::addColumn<int>("presses");
    QTest::addColumn<bool>("clicked");
    QTest::newRow("left, goes on") << int(Qt::LeftButton) << "false" << 1 << true;
    QTest::newRow("left, consumed") << int(Qt::LeftButton) << "true" << 1 << false;
    QTest::newRow("right") << int(Qt::RightButton) << "false" << 0 << false;
    QTest::newRow("middle") << int(Qt::MiddleButton) << "false" << 0 << false;
  }
  void buttonPress() {
    QFETCH(int, mouseButton);
    QFETCH(QString, handler);
    QFETCH(int, presses);
    QFETCH(bool, clicked);
    TestWnd& w = Implicit<TestWnd>();
    int seen = 0;
    bool wasClicked = false;
    connect(w.button().Button(), &QPushButton::clicked, this, [&] { wasClicked = true; });
    w.onPress = [&] {
      ++seen;
      return handler == "true";
    };
    QTest::mousePress(w.button().Button(), Qt::MouseButton(mouseButton));
    QCOMPARE(seen, presses);
    QTest::mouseRelease(w.button().Button(), Qt::MouseButton(mouseButton));
    QCOMPARE(wasClicked, clicked);
    w.close();
  }

  // What a press or key handler throws is told in one alert, End alone
  // silently; the window and its contents stay as they were, the key does
  // nothing, and the next press works.
  void exceptionFromAHandler_data() {
    QTest::addColumn<bool>("fromKey");
    QTest::addColumn<QString>("thrown");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("press, input/output") << false << "io" << QStringList{"/data/models.txt", "Permission denied", "13"};
    QTest::newRow("key, any exception") << true << "std" << QStringList{"table index out of bounds"};
    QTest::newRow("press, end") << false << "end" << QStringList{};
  }
  void exceptionFromAHandler() {
    QFETCH(bool, fromKey);
    QFETCH(QString, thrown);
    QFETCH(QStringList, told);
    TestWnd& w = Implicit<TestWnd>();
    w.field().SetText("5");
    w.area().SetText("report\r");
    const auto fail = [thrown]() -> bool {
      if (thrown == "io") throw IOException("/data/models.txt", EACCES);
      if (thrown == "std") throw std::runtime_error("table index out of bounds");
      throw EndException();
    };
    (fromKey ? w.onKey : w.onPress) = fail;
    if (fromKey) QTest::keyClick(w.field().Edit(), Qt::Key_7);
    if (!fromKey) QTest::mousePress(w.button().Button(), Qt::LeftButton);
    QCOMPARE(alerts.size(), std::size_t(told.isEmpty() ? 0 : 1));
    for (const QString& part : told) QVERIFY2(alerts[0].find(part.toStdString()) != std::string::npos, alerts[0].c_str());
    QVERIFY(w.isVisible());
    QCOMPARE(w.field().Text(), std::string("5"));
    QCOMPARE(w.area().Text(), std::string("report\r"));
    QVERIFY(!w.button().Button()->isDown());
    int presses = 0;
    w.onPress = [&] { ++presses; return false; };
    QTest::mouseClick(w.button().Button(), Qt::LeftButton);
    QCOMPARE(presses, 1);
    w.close();
  }

  void missingPictureIsNil() { QVERIFY(Picture::OpenFromApp("no-such-picture.png") == nullptr); }

  void fetchingAControlAsAnotherClassThrows() {
    TestWnd& w = Implicit<TestWnd>();
    QVERIFY_THROWS_EXCEPTION(IllegalCastException, w.ControlAs<Label>("field"));
    QVERIFY_THROWS_EXCEPTION(IllegalCastException, w.ControlAs<TextField>("nothing"));
    w.close();
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::WindowContractTest)
#include "test_window_contract.moc"
