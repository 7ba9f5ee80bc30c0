#include <QtTest>
#include <cerrno>

#include "analysis/runtime_exception.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/test_window.hpp"

namespace drav {

using testing_support::TestWnd;

class UnhandledPathTest : public QObject {
  Q_OBJECT

  std::vector<std::string> alerts;

 private slots:
  void init() {
    alerts.clear();
    Application::Instance()->ShowFailure = [this](const std::string& text) { alerts.push_back(text); };
  }

  void exceptionFromAHandlerLeavesEverythingAsItWas() {
    TestWnd& w = Implicit<TestWnd>();
    w.field().SetText("5");
    w.area().SetText("report\r");
    w.onPress = []() -> bool { throw IOException("/data/models.txt", EACCES); };
    QTest::mousePress(w.button().Button(), Qt::LeftButton);
    QCOMPARE(alerts.size(), std::size_t{1});
    QVERIFY(alerts[0].find("/data/models.txt") != std::string::npos);
    QVERIFY(alerts[0].find("Permission denied") != std::string::npos);
    QVERIFY(alerts[0].find("13") != std::string::npos);
    QVERIFY(w.isVisible());
    QCOMPARE(w.field().Text(), std::string("5"));
    QCOMPARE(w.area().Text(), std::string("report\r"));
    QVERIFY(!w.button().Button()->isDown());

    // The program goes on: the next press works.
    int presses = 0;
    w.onPress = [&] {
      ++presses;
      return false;
    };
    QTest::mouseClick(w.button().Button(), Qt::LeftButton);
    QCOMPARE(presses, 1);
    w.close();
  }

  void endExceptionIsDroppedWithoutAWord() {
    TestWnd& w = Implicit<TestWnd>();
    w.onPress = []() -> bool { throw EndException(); };
    QTest::mousePress(w.button().Button(), Qt::LeftButton);
    QVERIFY(alerts.empty());
    w.close();
  }

  void anyExceptionIsNamed() {
    TestWnd& w = Implicit<TestWnd>();
    w.onPress = []() -> bool { throw std::runtime_error("table index out of bounds"); };
    QTest::mousePress(w.button().Button(), Qt::LeftButton);
    QCOMPARE(alerts.size(), std::size_t{1});
    QVERIFY(alerts[0].find("table index out of bounds") != std::string::npos);
    w.close();
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::UnhandledPathTest)
#include "test_unhandled_path.moc"
