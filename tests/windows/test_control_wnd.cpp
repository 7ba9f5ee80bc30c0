#include <QClipboard>
#include <QPixmapCache>
#include <QTemporaryDir>
#include <QtTest>

#include "base/text.hpp"
#include "shell/implicit.hpp"
#include "shell/runtime.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/user_input.hpp"
#include "tests/windows/modal_answerer.hpp"
#include "windows/control_wnd.hpp"
#include "windows/help_wnd.hpp"

namespace drav {

using namespace testing_support;

class ControlWndTest : public QObject {
  Q_OBJECT

  ControlWnd* w = nullptr;

  void Press(PushButton& button) { QTest::mousePress(button.Button(), Qt::LeftButton); }
  void TypeCount(const char* text) {
    QTest::mouseClick(w->pFld().Edit(), Qt::LeftButton);
    Type(text);
  }
  void ShowReport(const char* text) {
    w->ResultsFld().SetText(text);
    w->ResultsFld().SetVisible(true);
  }

 private slots:
  void init() {
    w = &Implicit<ControlWnd>();
    w->Show();
    QVERIFY(Activate(*w));
  }
  // Deleted, not closed: closing the main window quits, and a quit outside
  // a running event loop would end every later modal at once.
  void cleanup() {
    delete GetImplicitWindow(helpWnd::kClassName);
    delete GetImplicitWindow(ControlWnd::kClassName);
  }

  void startsEmptyWithTheFocusInTheCount() {
    QVERIFY(!w->ResultsFld().Visible());
    QCOMPARE(QApplication::focusWidget(), w->pFld().Widget());
    QVERIFY(w->TextField1().Widget()->font().bold());  // the caption
  }

  // Nothing a user presses moves the focus out of the count, and a run of
  // "Load Data", with a report or cancelled, leaves it there: what is typed
  // next lands in the count.
  void pressesLeaveTheFocusInTheCount_data() {
    QTest::addColumn<QString>("what");
    QTest::addColumn<QPoint>("at");
    QTest::newRow("Load Data, report") << "run" << QPoint();
    QTest::newRow("Load Data, cancelled") << "cancel" << QPoint();
    QTest::newRow("window background") << "content" << QPoint(620, 300);
    QTest::newRow("title picture") << "content" << QPoint(350, 40);
    QTest::newRow("credit line") << "content" << QPoint(350, 80);
    QTest::newRow("caption") << "content" << QPoint(100, 155);
    QTest::newRow("rule") << "content" << QPoint(300, 172);
    QTest::newRow("menu bar, past the menus") << "bar" << QPoint(-20, 5);
  }
  void pressesLeaveTheFocusInTheCount() {
    QFETCH(QString, what);
    QFETCH(QPoint, at);
    TypeCount("5");
    ModalAnswerer answers;
    if (what == "run") answers.ChooseFile(QStringLiteral(DRAV_SOURCE_DIR "/examples/five-models.txt"));
    if (what == "cancel") answers.Cancel();
    if (what == "run" || what == "cancel") Press(w->calcBtn());
    QVERIFY(answers.Done());
    if (what == "bar") QTest::mouseClick(w->menuBar(), Qt::LeftButton, {}, at + QPoint(w->menuBar()->width(), 0));
    if (what == "content") {
      QWidget* under = w->Content()->childAt(at);
      QWidget* target = under != nullptr ? under : w->Content();
      QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(w->Content(), at));
    }
    QVERIFY(Activate(*w));
    Type("7");
    QCOMPARE(QApplication::focusWidget(), w->pFld().Widget());
    QCOMPARE(w->pFld().Text(), std::string("57"));
    QCOMPARE(w->ResultsFld().Visible(), what == "run");
  }

  // Each new report is added below the others and shown from its first
  // line, its date, at the top of the view; a short last report, where the
  // text ends, is in view all the same.
  void newestReportComesIntoView() {
    TypeCount("99");
    QTextEdit* area = w->ResultsFld().Edit();
    const auto newestDateLine = [area] {
      const QTextCursor date = area->document()->find("Date:", area->document()->characterCount(),
                                                      QTextDocument::FindBackward);
      return area->cursorRect(date);
    };
    for (const char* example : {"ninety-nine-models", "ninety-nine-models", "ninety-nine-models", "five-models"}) {
      ModalAnswerer answers;
      answers.ChooseFile(QStringLiteral(DRAV_SOURCE_DIR "/examples/%1.txt").arg(example));
      if (std::string(example) == "five-models") {
        QVERIFY(Activate(*w));
        QTest::mouseClick(w->pFld().Edit(), Qt::LeftButton);
        testing_support::Press(Qt::Key_A, Qt::ControlModifier);
        Type("5");
        QCOMPARE(QString::fromStdString(w->pFld().Text()), QString("5"));
      }
      Press(w->calcBtn());
      QVERIFY(answers.Done());
      const QRect line = newestDateLine();
      QVERIFY2(area->viewport()->rect().contains(line), example);
      if (std::string(example) != "five-models") QVERIFY2(line.top() < line.height(), example);
    }
  }

  // The open-file dialog opens in the folder of the last file chosen, for
  // a second file of the same project; a cancelled dialog changes nothing.
  void openDialogStartsWhereTheLastFileWasChosen() {
    QTemporaryDir first, second;
    for (const QTemporaryDir* dir : {&first, &second}) {
      QFile file(dir->filePath("models.txt"));
      QVERIFY(file.open(QIODevice::WriteOnly));
      file.write("A\t1\nB\t2\n");
    }
    TypeCount("2");
    ModalAnswerer answers;
    answers.ChooseFile(first.filePath("models.txt")).NoteFolderAndCancel().NoteFolderAndCancel();
    answers.ChooseFile(second.filePath("models.txt")).NoteFolderAndCancel();
    for (int press = 0; press < 5; ++press) Press(w->calcBtn());
    QVERIFY(answers.Done());
    QCOMPARE(answers.folders, (QStringList{first.path(), first.path(), second.path()}));
  }

  // The dialogs of a run draw without Qt's pixmap cache, so that they leave
  // nothing in it; once each has closed, whether the run ends in a report,
  // a message or a cancel, the cache is back at its size and keeps what the
  // windows put in it.
  void pixmapCacheIsBackAfterEachDialog() {
    const int limit = QPixmapCache::cacheLimit();
    QVERIFY(limit > 0);
    ModalAnswerer answers;
    answers.ChooseFile(QStringLiteral(DRAV_SOURCE_DIR "/examples/five-models.txt")).CopyMessage().Cancel();
    const std::pair<const char*, const char*> runs[] = {{"report", "5"}, {"message", ""}, {"cancel", "5"}};
    for (const auto& [ending, count] : runs) {
      Press(w->clearBtn());
      Type(count);
      Press(w->calcBtn());
      QCOMPARE(w->ResultsFld().Visible(), std::string(ending) == "report");
      QCOMPARE(QPixmapCache::cacheLimit(), limit);
      QPixmap drawn(16, 16);
      drawn.fill(Qt::darkCyan);
      const QString key = QStringLiteral("drav-test-after-") + ending;
      QVERIFY2(QPixmapCache::insert(key, drawn), ending);
      QPixmap found;
      QVERIFY2(QPixmapCache::find(key, &found), ending);
      QCOMPARE(found.cacheKey(), drawn.cacheKey());
      QPixmapCache::remove(key);
    }
    QVERIFY(answers.Done());
    QCOMPARE(answers.messages.size(), std::size_t(1));
  }

  // The count is the window's one tab stop: Tab from the report goes to it,
  // and Tab in it finds no other stop, the frame least of all.
  void tabLandsInTheCount_data() {
    QTest::addColumn<bool>("fromReport");
    QTest::newRow("from the count") << false;
    QTest::newRow("from the report") << true;
  }
  void tabLandsInTheCount() {
    QFETCH(bool, fromReport);
    ShowReport("report");
    if (fromReport) QTest::mouseClick(w->ResultsFld().Edit()->viewport(), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), fromReport ? w->ResultsFld().Widget() : w->pFld().Widget());
    testing_support::Press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), w->pFld().Widget());
    testing_support::Press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), w->pFld().Widget());
    QCOMPARE(w->ResultsFld().Text(), std::string());  // Tab in the count blanks the report
  }

  // Each key in the count blanks the report, accepted or not. A refused
  // key beeps and leaves the text and the caret where they were.
  void keysAreFiltered_data() {
    QTest::addColumn<bool>("inReport");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("passes");
    const std::pair<const char*, std::pair<Qt::Key, bool>> count[] = {
        {"digit", {Qt::Key_7, true}}, {"letter", {Qt::Key_X, false}}, {"return", {Qt::Key_Return, false}},
        {"up", {Qt::Key_Up, false}}, {"left", {Qt::Key_Left, true}}, {"right", {Qt::Key_Right, true}},
        {"backspace", {Qt::Key_Backspace, true}}, {"forward delete", {Qt::Key_Delete, true}},
        {"full stop", {Qt::Key_Period, false}}, {"escape", {Qt::Key_Escape, false}},
        {"solidus, just below the digits", {Qt::Key_Slash, false}}};
    const std::pair<const char*, std::pair<Qt::Key, bool>> report[] = {
        {"letter", {Qt::Key_A, true}}, {"z, the last letter", {Qt::Key_Z, true}},
        {"full stop", {Qt::Key_Period, true}}, {"space", {Qt::Key_Space, true}}, {"return", {Qt::Key_Return, true}},
        {"comma", {Qt::Key_Comma, false}}, {"hyphen", {Qt::Key_Minus, false}}, {"left", {Qt::Key_Left, false}},
        {"down", {Qt::Key_Down, false}}, {"opening brace, just past the letters", {Qt::Key_BraceLeft, false}},
        {"tilde", {Qt::Key_AsciiTilde, false}}};
    for (const auto& [name, row] : count) QTest::addRow("count: %s", name) << false << int(row.first) << row.second;
    for (const auto& [name, row] : report) QTest::addRow("report: %s", name) << true << int(row.first) << row.second;
  }
  void keysAreFiltered() {
    QFETCH(bool, inReport);
    QFETCH(int, key);
    QFETCH(bool, passes);
    ShowReport("ab");
    if (inReport) QTest::mouseClick(w->ResultsFld().Edit()->viewport(), Qt::LeftButton);
    if (!inReport) TypeCount("4");
    TextEdit& field = inReport ? static_cast<TextEdit&>(w->ResultsFld()) : w->pFld();
    const std::string text = field.Text();
    const auto caret = [&] {
      return inReport ? w->ResultsFld().Edit()->textCursor().position() : w->pFld().Edit()->cursorPosition();
    };
    const int caretBefore = caret();
    const std::int64_t beeps = BeepCount();
    testing_support::Press(Qt::Key(key));
    QCOMPARE(BeepCount() - beeps, passes ? 0 : 1);
    if (!inReport) QCOMPARE(w->ResultsFld().Text(), std::string());
    QVERIFY(w->ResultsFld().Visible());
    if (passes && inReport) QVERIFY(field.Text() != text);
    if (passes) return;
    QCOMPARE(field.Text(), text);
    QCOMPARE(caret(), caretBefore);
  }

  void clearEmptiesBothAndHidesTheReport() {
    TypeCount("5");
    ShowReport("report");
    QTest::mouseClick(w->ResultsFld().Edit()->viewport(), Qt::LeftButton);
    Press(w->clearBtn());
    QCOMPARE(w->pFld().Text(), std::string());
    QCOMPARE(w->ResultsFld().Text(), std::string());
    QVERIFY(!w->ResultsFld().Visible());
    QCOMPARE(QApplication::focusWidget(), w->pFld().Widget());
  }

  // Information, by button or Window menu, brings the one help window to
  // the front, its text inside it: when new, when open behind the main
  // window, and when opened again after a close.
  void informationBringsTheOneHelpWindowToTheFront_data() {
    QTest::addColumn<bool>("byMenu");
    QTest::newRow("button") << false;
    QTest::newRow("Window menu") << true;
  }
  void informationBringsTheOneHelpWindowToTheFront() {
    QFETCH(bool, byMenu);
    for (const char* opening : {"new", "behind", "after a close"}) {
      QVERIFY(Activate(*w));
      if (byMenu) {
        OpenMenuByMouse(*w, "Window");
        ChooseByMouse("Information");
      } else {
        Press(w->helpBtn());
      }
      auto* help = dynamic_cast<helpWnd*>(GetImplicitWindow(helpWnd::kClassName));
      QVERIFY2(help != nullptr, opening);
      QTRY_COMPARE(QApplication::activeWindow(), help);
      QCOMPARE(w->focusWidget(), w->pFld().Widget());  // kept for when the main window is back in front
      QVERIFY(help->Content()->rect().contains(help->EditField1().Widget()->geometry().adjusted(1, 1, 0, 0)));
      if (std::string(opening) == "behind") help->close();
    }
    int helpWindows = 0;
    for (QWidget* top : QApplication::topLevelWidgets()) helpWindows += dynamic_cast<helpWnd*>(top) != nullptr;
    QCOMPARE(helpWindows, 1);
  }

  // A paste passes no key filter: the report stays, and the count's mask
  // keeps out what is no digit.
  void pasteIntoTheCountKeepsTheReport_data() {
    QTest::addColumn<QString>("clipboard");
    QTest::addColumn<QString>("count");
    QTest::newRow("digits") << "12" << "12";
    QTest::newRow("letters") << "abc" << "";
  }
  void pasteIntoTheCountKeepsTheReport() {
    QFETCH(QString, clipboard);
    QFETCH(QString, count);
    ShowReport("report");
    QApplication::clipboard()->setText(clipboard);
    OpenMenuByKey(Qt::Key_E);
    ChooseInMenu(Qt::Key_P);
    QCOMPARE(QString::fromStdString(w->pFld().Text()), count);
    QCOMPARE(w->ResultsFld().Text(), std::string("report"));
  }

  // Closing the main window, or Quit from either window, ends the program
  // with the Information window open; Quit closes the main window, whose
  // close quits once more, without harm.
  void endingTheProgram_data() {
    QTest::addColumn<QString>("how");
    QTest::newRow("close button") << "close";
    QTest::newRow("File, Quit") << "menu";
    QTest::newRow("Ctrl+Q in Information") << "help";
  }
  void endingTheProgram() {
    QFETCH(QString, how);
    Press(w->helpBtn());
    QWidget* front = how == "help" ? GetImplicitWindow(helpWnd::kClassName) : w;
    QVERIFY(Activate(*front));
    QTimer::singleShot(0, w, [this, how] {
      if (how == "close") w->close();
      if (how == "menu") OpenMenuByKey(Qt::Key_F);
      if (how == "menu") ChooseInMenu(Qt::Key_Q);
      if (how == "help") testing_support::Press(Qt::Key_Q, Qt::ControlModifier);
    });
    QTimer::singleShot(3000, [] { QCoreApplication::exit(99); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(GetImplicitWindow(ControlWnd::kClassName) == nullptr);
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::ControlWndTest)
#include "test_control_wnd.moc"
