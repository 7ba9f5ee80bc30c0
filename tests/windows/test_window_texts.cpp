#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOption>
#include <QTextBlock>
#include <QTextEdit>
#include <QtTest>

#include "shell/implicit.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "windows/about_wnd.hpp"
#include "windows/control_wnd.hpp"
#include "windows/help_wnd.hpp"

namespace drav {
namespace {

// The room a one-line edit has for its text: its contents less the frame,
// the text margins and the two pixels that QLineEdit keeps on either side.
int Room(const QLineEdit& edit) {
  QStyleOptionFrame option;
  option.initFrom(&edit);
  option.lineWidth = edit.hasFrame() ? edit.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &edit) : 0;
  const QRect contents = edit.style()->subElementRect(QStyle::SE_LineEditContents, &option, &edit);
  return contents.width() - edit.textMargins().left() - edit.textMargins().right() - 4;
}

int Room(const QAbstractButton& button) {
  QStyleOptionButton option;
  option.initFrom(&button);
  return button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button).width();
}

// Every text that the window's widgets put on the screen, with " (cut)"
// behind one that does not fit its widget or whose widget's contents reach
// outside the window (a frame may stand over the edge): a
// text as a reader sees it, not as a property holds it. A text area counts
// by its first line, the title of what it holds.
QStringList ShownTexts(const Window& window) {
  QStringList shown;
  for (QWidget* widget : window.Content()->findChildren<QWidget*>()) {
    if (!widget->isVisible()) continue;
    QString text;
    bool fits = true;
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
      text = edit->displayText();
      fits = edit->fontMetrics().horizontalAdvance(text) <= Room(*edit);
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
      text = label->text();
      const QRect room = label->contentsRect();
      const int wrap = label->wordWrap() ? Qt::TextWordWrap : Qt::TextSingleLine;
      const QRect needed = label->fontMetrics().boundingRect(room, wrap | int(label->alignment()), text);
      fits = needed.width() <= room.width() && needed.height() <= room.height();
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
      text = button->text();
      fits = button->fontMetrics().horizontalAdvance(text) <= Room(*button);
    } else if (auto* area = qobject_cast<QTextEdit*>(widget)) {
      text = area->document()->firstBlock().text();
    }
    if (text.isEmpty()) continue;
    const QRect contents = widget->contentsRect();
    if (!window.Content()->rect().contains(contents.translated(widget->mapTo(window.Content(), QPoint())))) {
      fits = false;
    }
    shown << (fits ? text : text + " (cut)");
  }
  shown.sort();
  return shown;
}

}  // namespace

// The fixed texts of the three windows, read as they stand on the screen:
// each whole, in its place, and nothing else beside them.
class WindowTextsTest : public QObject {
  Q_OBJECT

 private slots:
  void cleanup() {
    delete GetImplicitWindow(helpWnd::kClassName);
    delete GetImplicitWindow(ControlWnd::kClassName);
    delete GetImplicitWindow(AboutWnd::kClassName);
  }

  void everyFixedTextShowsWhole_data() {
    QTest::addColumn<QString>("window");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("main window") << "ControlWnd" << "Drav"
                                 << QStringList{"Number of Models (2-99):",
                                                "Akaike weights and evidence ratios from your AIC values "
                                                "\u2014 the Drav project",
                                                "Load Data", "Clear", "Information"};
    QTest::newRow("splash panel") << "AboutWnd" << "" << QStringList{"Drav 2.1 \u00A9 the Drav project"};
    QTest::newRow("Information window") << "helpWnd" << "Info" << QStringList{"Drav"};
  }
  void everyFixedTextShowsWhole() {
    QFETCH(QString, window);
    QFETCH(QString, title);
    QFETCH(QStringList, texts);
    Window* shown = nullptr;
    if (window == "ControlWnd") shown = &Implicit<ControlWnd>();
    if (window == "AboutWnd") shown = &Implicit<AboutWnd>();
    if (window == "helpWnd") shown = &Implicit<helpWnd>();
    shown->Show();
    QVERIFY(QTest::qWaitForWindowExposed(shown));
    QCOMPARE(shown->windowTitle(), title);
    texts.sort();
    QCOMPARE(ShownTexts(*shown), texts);
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::WindowTextsTest)
#include "test_window_texts.moc"
