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

  void panelComesUpAloneWithItsPicture() {
    QVERIFY(about->isVisible());
    QVERIFY(GetImplicitWindow(ControlWnd::kClassName) == nullptr);
    QCOMPARE(about->Content()->size(), QSize(450, 350));
    QVERIFY(about->Canvas2().Backdrop() != nullptr);
    QCOMPARE(_x_Drav256().get(), about->Canvas2().Backdrop().get());  // read once, shared
  }

  void timerHandsOverAfterFourSeconds() {
    QTest::qWait(3500);
    QVERIFY(!MainWindowShown());
    QTRY_VERIFY_WITH_TIMEOUT(MainWindowShown(), 2000);
    QVERIFY(!about->isVisible());
    QVERIFY(!about->Timer1().IsActive());
  }

  // A press on the panel or its picture, or any key, hands over at once.
  // The panel holds no focus widget: its keys reach the window itself.
  void pressOrKeyHandsOverAtOnce_data() {
    QTest::addColumn<QString>("what");
    QTest::newRow("press on the background") << "background";
    QTest::newRow("press on the picture") << "picture";
    QTest::newRow("Escape") << "key";
  }
  void pressOrKeyHandsOverAtOnce() {
    QFETCH(QString, what);
    if (what == "background") QTest::mousePress(about->Content(), Qt::LeftButton, {}, QPoint(20, 20));
    if (what == "picture") QTest::mousePress(about->Canvas2().Widget(), Qt::LeftButton, {}, QPoint(100, 100));
    if (what == "key") QTest::keyClick(about->windowHandle(), Qt::Key_Escape);
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
