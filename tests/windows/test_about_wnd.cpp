#include <QScreen>
#include <QtTest>

#include "shell/implicit.hpp"
#include "shell/runtime.hpp"
#include "shell/sheet.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/user_input.hpp"
#include "windows/about_wnd.hpp"
#include "windows/control_wnd.hpp"

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

  // The count runs from the panel's making; to spare the test its four
  // seconds it is re-armed, shorter, through its sheet as it was built.
  void Hurry() { SetProperties(about->Timer1(), Sheet().Integer("Period", 20).Bytes()); }

 private slots:
  void init() {
    about = &Implicit<AboutWnd>();
    QApplication::processEvents();
  }
  void cleanup() {
    if (auto* main = GetImplicitWindow(ControlWnd::kClassName)) delete main;
    delete GetImplicitWindow(AboutWnd::kClassName);
  }

  // The panel comes up alone, with its picture, stays long enough to be
  // read (a second here: a timer never fires early, so a busy machine only
  // makes it stay longer), and its timer hands over once.
  void panelComesUpAloneAndItsTimerHandsOverOnce() {
    QVERIFY(about->isVisible());
    QVERIFY(GetImplicitWindow(ControlWnd::kClassName) == nullptr);
    QVERIFY(about->Canvas2().Backdrop() != nullptr);
    QTest::qWait(1000);
    QVERIFY(about->isVisible());
    QVERIFY(GetImplicitWindow(ControlWnd::kClassName) == nullptr);
    Hurry();
    QTRY_VERIFY_WITH_TIMEOUT(MainWindowShown(), 5000);
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

  // The panel, and the main window it gives way to, come up in the middle
  // of the screen by their own sizes, menu bar included. The frame that the
  // platform adds once a window is up may shift it by its own width.
  void panelAndMainWindowComeUpCentred() {
    const QPoint middle = QGuiApplication::primaryScreen()->availableGeometry().center();
    const auto offCentre = [&](const QWidget& window) {
      return QString("%1 is centred at %2,%3, not %4,%5")
          .arg(window.windowTitle().isEmpty() ? "panel" : window.windowTitle())
          .arg(window.frameGeometry().center().x()).arg(window.frameGeometry().center().y())
          .arg(middle.x()).arg(middle.y()).toUtf8();
    };
    const auto centred = [&](const QWidget& window) {
      const QPoint off = window.frameGeometry().center() - middle;
      const int frame = (window.frameGeometry().width() - window.width()) / 2 + 1;
      return std::abs(off.x()) <= frame && std::abs(off.y()) <= frame;
    };
    QVERIFY2(centred(*about), offCentre(*about));
    QTest::mousePress(about->Content(), Qt::LeftButton, {}, QPoint(20, 20));
    QVERIFY(MainWindowShown());
    const QWidget& main = Implicit<ControlWnd>();
    QVERIFY2(centred(main), offCentre(main));
  }

  // After the hand-over, About shows the same panel, and it stays until a
  // press: its timer is spent.
  void aboutFromTheMenuStaysUntilAPress() {
    Hurry();
    QTRY_VERIFY_WITH_TIMEOUT(MainWindowShown(), 5000);
    ControlWnd& main = Implicit<ControlWnd>();
    main.pFld().SetText("7");
    QVERIFY(Activate(main));
    OpenMenuByMouse(main, "File");
    ChooseByMouse("About Drav");
    QVERIFY(about->isVisible());
    QCOMPARE(&Implicit<AboutWnd>(), about);
    QTest::qWait(300);  // fifteen periods
    QVERIFY(about->isVisible());
    QTest::mousePress(about->Content(), Qt::LeftButton);
    QVERIFY(!about->isVisible());
    QCOMPARE(&Implicit<ControlWnd>(), &main);  // not made twice, report state kept
    QCOMPARE(main.pFld().Text(), std::string("7"));
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::AboutWndTest)
#include "test_about_wnd.moc"
