#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

#include "analysis/runtime_exception.hpp"
#include "shell/label.hpp"
#include "shell/picture.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/test_window.hpp"

namespace drav {

using testing_support::TestWnd;

class WindowContractTest : public QObject {
  Q_OBJECT

 private slots:
  void hideAndShowKeepTheSameObjectAndContents() {
    TestWnd& first = Implicit<TestWnd>();
    QVERIFY(first.isVisible());
    first.field().SetText("12");
    first.area().SetText("report\r");
    first.Hide();
    QVERIFY(!first.isVisible());
    TestWnd& again = Implicit<TestWnd>();
    QCOMPARE(&again, &first);
    again.Show();
    QVERIFY(again.isVisible());
    QCOMPARE(again.fieldOpens, 1);  // Open runs once per control, not per showing
    QCOMPARE(again.field().Text(), std::string("12"));
    QCOMPARE(again.area().Text(), std::string("report\r"));
    again.close();
  }

  void closedWindowIsMadeAnew() {
    TestWnd& first = Implicit<TestWnd>();
    first.field().SetText("5");
    first.close();
    QCOMPARE(first.closes, 1);
    QVERIFY(GetImplicitWindow(TestWnd::kClassName) == nullptr);
    TestWnd& second = Implicit<TestWnd>();
    QCOMPARE(second.field().Text(), std::string());
    QCOMPARE(second.fieldOpens, 1);
    second.close();
  }

  void buttonActsAtThePressBeforeAnyRelease() {
    TestWnd& w = Implicit<TestWnd>();
    int presses = 0;
    bool clicked = false;
    connect(w.button().Button(), &QPushButton::clicked, this, [&] { clicked = true; });
    w.onPress = [&] {
      ++presses;
      return false;
    };
    QTest::mousePress(w.button().Button(), Qt::LeftButton);
    QCOMPARE(presses, 1);
    QTest::mouseRelease(w.button().Button(), Qt::LeftButton);
    QVERIFY(clicked);  // False lets the toolkit go on with the press
    w.close();
  }

  void modalAlertInsideThePressLeavesTheButtonUp() {
    TestWnd& w = Implicit<TestWnd>();
    w.onPress = [] {
      QTimer::singleShot(0, [] {
        if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
      });
      QMessageBox::information(nullptr, "Drav", "inside the press");
      return false;
    };
    QTest::mousePress(w.button().Button(), Qt::LeftButton);
    QVERIFY(!w.button().Button()->isDown());
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
