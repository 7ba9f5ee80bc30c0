#include <QClipboard>
#include <QTemporaryDir>
#include <QtTest>
#include <filesystem>
#include <fstream>

#include "analysis/end_of_line.hpp"
#include "analysis/text.hpp"
#include "shell/implicit.hpp"
#include "shell/menu_bar_view.hpp"
#include "shell/runtime.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/windows/modal_answerer.hpp"
#include "windows/control_wnd.hpp"
#include "windows/help_wnd.hpp"

namespace drav {

using testing_support::ModalAnswerer;

namespace {

QString Example(const char* name) { return QStringLiteral(DRAV_SOURCE_DIR "/examples/") + name; }

std::string MissingMessage() { return "Please enter the number of models in the set (2-99)."; }
std::string InvalidMessage() { return "Please enter a valid number of models in the set (2-99)."; }

}  // namespace

class ControlWndTest : public QObject {
  Q_OBJECT

  ControlWnd* w = nullptr;

  void Press(PushButton& button) { QTest::mousePress(button.Button(), Qt::LeftButton); }
  void TypeCount(const char* text) {
    w->pFld().SetFocus();
    QTest::keyClicks(w->pFld().Edit(), text);
  }

 private slots:
  void init() {
    w = &Implicit<ControlWnd>();
    w->Show();
    w->pFld().SetFocus();
    QApplication::processEvents();
  }
  // Deleted, not closed: closing the main window quits, and a quit outside
  // a running event loop would end every later modal at once.
  void cleanup() {
    delete GetImplicitWindow(helpWnd::kClassName);
    delete GetImplicitWindow(ControlWnd::kClassName);
  }

  void startsEmptyWithTheFocusInTheCount() {
    QVERIFY(!w->ResultsFld().Visible());
    QCOMPARE(w->pFld().Text(), std::string());
    QCOMPARE(w->focusWidget(), w->pFld().Widget());
    QCOMPARE(w->windowTitle(), QString("Drav"));
    QCOMPARE(w->Content()->size(), QSize(700, 600));
    QCOMPARE(w->calcBtn().Widget()->geometry(), QRect(46, 530, 125, 50));
    QCOMPARE(w->TextField1().Text(), std::string("Number of Models (2-99):"));
    QCOMPARE(QFontInfo(w->Label1().Text()->font()).pixelSize(), 9);
  }

  void countMessagesSendTheFocusBackToTheCount_data() {
    QTest::addColumn<QString>("count");
    QTest::addColumn<QString>("message");
    QTest::newRow("empty") << "" << QString::fromStdString(MissingMessage());
    QTest::newRow("one") << "1" << QString::fromStdString(InvalidMessage());
    QTest::newRow("zero") << "0" << QString::fromStdString(InvalidMessage());
    QTest::newRow("leading zeros") << "00" << QString::fromStdString(InvalidMessage());
  }
  void countMessagesSendTheFocusBackToTheCount() {
    QFETCH(QString, count);
    QFETCH(QString, message);
    TypeCount(count.toLatin1().constData());
    w->ResultsFld().SetFocus();
    ModalAnswerer answers;
    answers.AcceptMessage();
    Press(w->calcBtn());
    QCOMPARE(answers.seen, std::vector<std::string>{message.toStdString()});
    QCOMPARE(w->focusWidget(), w->pFld().Widget());
    QCOMPARE(w->pFld().Text(), count.toStdString());
    QVERIFY(!w->ResultsFld().Visible());
    QVERIFY(!w->calcBtn().Button()->isDown());
  }

  void wholeRunFromThePressToTheReport() {
    TypeCount("5");
    ModalAnswerer answers;
    answers.ChooseFile(Example("five-models.txt"));
    Press(w->calcBtn());
    QVERIFY(answers.Done());
    QVERIFY(w->ResultsFld().Visible());
    const std::string report = w->ResultsFld().Text();
    QCOMPARE(report.rfind("Date: ", 0), std::size_t{0});
    QVERIFY(report.find(EndOfLine::Build() + "File: five-models.txt" + EndOfLine::Build()) != std::string::npos);
    QVERIFY(report.find("A2                +202.0             0.0                   0.6094           1.0") !=
            std::string::npos);
    QCOMPARE(w->pFld().Text(), std::string("5"));
  }

  void secondRunAppendsBehindTheFirst() {
    TypeCount("5");
    ModalAnswerer answers;
    answers.ChooseFile(Example("five-models.txt")).ChooseFile(Example("negative-aic.txt"));
    Press(w->calcBtn());
    const std::string first = w->ResultsFld().Text();
    Press(w->calcBtn());
    const std::string both = w->ResultsFld().Text();
    QCOMPARE(both.substr(0, first.size()), first);
    QVERIFY(both.substr(first.size()).find("File: negative-aic.txt") != std::string::npos);
  }

  void cancelInTheFirstRunLeavesTheAreaHidden() {
    TypeCount("5");
    ModalAnswerer answers;
    answers.Cancel();
    Press(w->calcBtn());
    QVERIFY(answers.Done());
    QVERIFY(!w->ResultsFld().Visible());
    QCOMPARE(w->ResultsFld().Text(), std::string());
  }

  void vanishedFileAndLowAicLeaveTheReportAlone() {
    TypeCount("5");
    ModalAnswerer first;
    first.ChooseFile(Example("five-models.txt"));
    Press(w->calcBtn());
    const std::string report = w->ResultsFld().Text();

    const QTemporaryDir folder;  // of this run alone: two runs at once must not share a file
    QVERIFY(folder.isValid());
    const std::filesystem::path gone = folder.filePath(QStringLiteral("vanishing.txt")).toStdString();
    std::ofstream(gone) << "A\t1\nB\t2\n";
    ModalAnswerer vanishing;
    vanishing.ChooseFile(QString::fromStdString(gone.string()), [gone] { std::filesystem::remove(gone); });
    Press(w->calcBtn());
    QCOMPARE(w->ResultsFld().Text(), report);

    const std::filesystem::path high = folder.filePath(QStringLiteral("high.txt")).toStdString();
    std::ofstream(high) << "A\t1e12\nB\t99999999999\n";
    w->pFld().SetText("2");  // with 5, the rows behind the file's end would hold 0.0
    ModalAnswerer lowAic;
    lowAic.ChooseFile(QString::fromStdString(high.string())).AcceptMessage();
    Press(w->calcBtn());
    QCOMPARE(lowAic.seen.back(), std::string("Sorry, can't find low AIC value. Check the data."));
    QCOMPARE(w->ResultsFld().Text(), report);
    QVERIFY(w->ResultsFld().Visible());
    QCOMPARE(w->focusWidget(), w->pFld().Widget());
  }

  void countKeysBlankTheReportAndFilter_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("passes");
    QTest::newRow("digit") << int(Qt::Key_7) << true;
    QTest::newRow("letter") << int(Qt::Key_X) << false;
    QTest::newRow("return") << int(Qt::Key_Return) << false;
    QTest::newRow("up") << int(Qt::Key_Up) << false;
    QTest::newRow("left") << int(Qt::Key_Left) << true;
    QTest::newRow("backspace") << int(Qt::Key_Backspace) << true;
    QTest::newRow("full stop") << int(Qt::Key_Period) << false;
    QTest::newRow("escape") << int(Qt::Key_Escape) << false;
  }
  void countKeysBlankTheReportAndFilter() {
    QFETCH(int, key);
    QFETCH(bool, passes);
    w->ResultsFld().SetText("report");
    w->ResultsFld().SetVisible(true);
    w->pFld().SetText("4");
    w->pFld().Edit()->setCursorPosition(1);
    const std::int64_t beeps = BeepCount();
    QTest::keyClick(w->pFld().Edit(), Qt::Key(key));
    QCOMPARE(w->ResultsFld().Text(), std::string());  // blanked, accepted or not
    QVERIFY(w->ResultsFld().Visible());
    QCOMPARE(BeepCount() - beeps, passes ? 0 : 1);
    if (!passes) QCOMPARE(w->pFld().Text(), std::string("4"));
  }

  void reportKeysFilter_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("passes");
    QTest::newRow("letter") << int(Qt::Key_A) << true;
    QTest::newRow("full stop") << int(Qt::Key_Period) << true;
    QTest::newRow("space") << int(Qt::Key_Space) << true;
    QTest::newRow("return") << int(Qt::Key_Return) << true;
    QTest::newRow("comma") << int(Qt::Key_Comma) << false;
    QTest::newRow("hyphen") << int(Qt::Key_Minus) << false;
    QTest::newRow("left") << int(Qt::Key_Left) << false;
    QTest::newRow("down") << int(Qt::Key_Down) << false;
  }
  void reportKeysFilter() {
    QFETCH(int, key);
    QFETCH(bool, passes);
    w->ResultsFld().SetVisible(true);
    w->ResultsFld().SetText("ab");
    w->ResultsFld().SetFocus();
    const int caret = w->ResultsFld().Edit()->textCursor().position();
    const std::int64_t beeps = BeepCount();
    QTest::keyClick(w->ResultsFld().Edit(), Qt::Key(key));
    QCOMPARE(BeepCount() - beeps, passes ? 0 : 1);
    if (!passes) {
      QCOMPARE(w->ResultsFld().Text(), std::string("ab"));
      QCOMPARE(w->ResultsFld().Edit()->textCursor().position(), caret);
    } else {
      QVERIFY(w->ResultsFld().Text() != "ab");
    }
  }

  void clearEmptiesBothAndHidesTheReport() {
    w->pFld().SetText("5");
    w->ResultsFld().SetText("report");
    w->ResultsFld().SetVisible(true);
    w->ResultsFld().SetFocus();
    Press(w->clearBtn());
    QCOMPARE(w->pFld().Text(), std::string());
    QCOMPARE(w->ResultsFld().Text(), std::string());
    QVERIFY(!w->ResultsFld().Visible());
    QCOMPARE(w->focusWidget(), w->pFld().Widget());
  }

  void informationTwiceGivesOneWindow() {
    Press(w->helpBtn());
    auto* first = GetImplicitWindow(helpWnd::kClassName);
    QVERIFY(first != nullptr && first->isVisible());
    Press(w->helpBtn());
    QCOMPARE(GetImplicitWindow(helpWnd::kClassName), first);
    int helpWindows = 0;
    for (QWidget* top : QApplication::topLevelWidgets()) helpWindows += dynamic_cast<helpWnd*>(top) != nullptr;
    QCOMPARE(helpWindows, 1);
  }

  void pasteIntoTheCountDoesNotBlankTheReport() {
    w->ResultsFld().SetText("report");
    QApplication::clipboard()->setText("12");
    w->GetMenuBarView()->Choose("EditPaste");
    QCOMPARE(w->pFld().Text(), std::string("12"));
    QCOMPARE(w->ResultsFld().Text(), std::string("report"));
  }

  void closingTheMainWindowEndsTheProgramWithHelpOpen() {
    Press(w->helpBtn());
    QTimer::singleShot(0, w, [this] { w->close(); });
    QTimer::singleShot(3000, [] { QCoreApplication::exit(99); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(GetImplicitWindow(ControlWnd::kClassName) == nullptr);
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::ControlWndTest)
#include "test_control_wnd.moc"
