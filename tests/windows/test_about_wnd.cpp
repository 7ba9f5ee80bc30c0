#include <QtTest>

#include "shell/implicit.hpp"
#include "shell/runtime.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/user_input.hpp"
#include "windows/about_wnd.hpp"
#include "windows/control_wnd.hpp"
#include "windows/pictures.hpp"

namespace drav {

using namespace testing_support;

// The splash panel hands over to the main window by its timer, a press or a
// key. Each case starts a fresh panel, as a run of the program does.
class AboutWndTest : public QObject {
  Q_OBJECT

  AboutWnd* about = nullptr;

  bool MainWindowShown() const {
    auto* main = GetImplicitWindow(ControlWnd::kClassName);
    return main != nullptr && main->isVisible();
  }

 private slots:
  void init() {
    about = &Implicit<AboutWnd>();
    QApplication::processEvents();
  }
  void cleanup() {
    if (auto* main = GetImplicitWindow(ControlWnd::kClassName)) delete main;
    delete GetImplicitWindow(AboutWnd::kClassName);
  }

  void panelComesUpAloneWithItsPictureAndCredit() {
    QVERIFY(about->isVisible());
    QVERIFY(GetImplicitWindow(ControlWnd::kClassName) == nullptr);
    QVERIFY(about->windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(about->Content()->size(), QSize(450, 350));
    QVERIFY(about->Canvas2().Backdrop() != nullptr);
    QCOMPARE(about->Canvas2().Backdrop()->Width(), 256);
    QCOMPARE(_x_Drav256().get(), about->Canvas2().Backdrop().get());  // read once, shared
    QCOMPARE(QFontInfo(about->StaticText2().Text()->font()).pixelSize(), 9);
    QVERIFY(about->Timer1().IsActive());
    QCOMPARE(about->Timer1().Period(), std::int64_t{4000});
  }

  void timerHandsOverAfterFourSeconds() {
    QTest::qWait(3500);
    QVERIFY(!MainWindowShown());
    QTRY_VERIFY_WITH_TIMEOUT(MainWindowShown(), 2000);
    QVERIFY(!about->isVisible());
    QVERIFY(!about->Timer1().IsActive());
  }

  void pressHandsOverAtOnce() {
    QTest::mousePress(about->Content(), Qt::LeftButton, {}, QPoint(20, 20));
    QVERIFY(MainWindowShown());
    QVERIFY(!about->isVisible());
  }

  void pressOnThePictureHandsOverToo() {
    QTest::mousePress(about->Canvas2().Widget(), Qt::LeftButton, {}, QPoint(100, 100));
    QVERIFY(MainWindowShown());
  }

  void anyKeyHandsOver() {
    QTest::keyClick(about->windowHandle(), Qt::Key_Escape);  // the panel holds no focus widget
    QVERIFY(MainWindowShown());
    QVERIFY(!about->isVisible());
  }

  void aboutFromTheMenuStaysUntilAPressAndTheTimerStaysSpent() {
    QTest::keyClick(about->windowHandle(), Qt::Key_A);
    ControlWnd& main = Implicit<ControlWnd>();
    main.pFld().SetText("7");
    QTRY_VERIFY_WITH_TIMEOUT(!about->Timer1().IsActive(), 5000);  // it fired and repeated the hand-over
    QVERIFY(Activate(main));
    OpenMenuByMouse(main, "File");
    ChooseByMouse("About Drav");
    QVERIFY(about->isVisible());
    QCOMPARE(&Implicit<AboutWnd>(), about);  // the same panel, never a second one
    QTest::qWait(300);
    QVERIFY(about->isVisible());
    QVERIFY(!about->Timer1().IsActive());
    QTest::mousePress(about->Content(), Qt::LeftButton);
    QVERIFY(!about->isVisible());
    QCOMPARE(&Implicit<ControlWnd>(), &main);  // not made twice, report state kept
    QCOMPARE(main.pFld().Text(), std::string("7"));
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::AboutWndTest)
#include "test_about_wnd.moc"
