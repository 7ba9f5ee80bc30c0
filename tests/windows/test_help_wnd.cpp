#include <QClipboard>
#include <QtTest>

#include "base/text.hpp"
#include "shell/implicit.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/user_input.hpp"
#include "windows/control_wnd.hpp"
#include "windows/help_document.hpp"
#include "windows/help_wnd.hpp"

namespace drav {

using namespace testing_support;

class HelpWndTest : public QObject {
  Q_OBJECT

 private slots:
  void cleanup() {
    delete GetImplicitWindow(helpWnd::kClassName);
    delete GetImplicitWindow(ControlWnd::kClassName);
  }

  // A new window shows the document and the appended literal with only the
  // title bold, all in place before the user's undo history starts. Its
  // Edit menu works on the document as the main window's does; Tab moves
  // on and types nothing; edits are forgotten when the window closes.
  void documentCanBeCopiedAndEditedUntilTheWindowCloses() {
    QApplication::clipboard()->clear();
    helpWnd& help = Implicit<helpWnd>();
    const std::string shown = HelpDocument() + "Error message";
    QVERIFY(Activate(help));
    QTest::mouseClick(help.EditField1().Edit()->viewport(), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), help.EditField1().Widget());
    Press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(help.EditField1().Text(), shown);
    StyledText& styled = help.EditField1().GetStyledText();
    for (int i = 0; i < 4; ++i) QVERIFY(styled.IsBold(i));
    for (std::int64_t plain : {std::int64_t{4}, std::int64_t{6}, Len(HelpDocument()) + 2}) QVERIFY(!styled.IsBold(plain));
    Press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(EnabledItems(OpenMenuByMouse(help, "Edit")), (QStringList{"Cut", "Copy", "Delete", "Select All"}));
    ChooseInMenu(Qt::Key_C);
    QVERIFY(QApplication::clipboard()->text().startsWith("Drav\n"));
    Press(Qt::Key_Tab);
    QCOMPARE(help.EditField1().Text(), shown);
    OpenMenuByKey(Qt::Key_E);
    ChooseInMenu(Qt::Key_D);
    QCOMPARE(help.EditField1().Text(), std::string());
    help.close();
    QCOMPARE(Implicit<helpWnd>().EditField1().Text(), shown);
  }

  // Each of the pair is live only in the other window.
  void controlAndInformationAreAPair() {
    ControlWnd& main = Implicit<ControlWnd>();
    main.Show();
    QVERIFY(Activate(main));
    QCOMPARE(EnabledItems(OpenMenuByMouse(main, "Window")), QStringList{"Information"});
    ChooseByMouse("Information");
    helpWnd& help = Implicit<helpWnd>();
    QVERIFY(Activate(help));
    QCOMPARE(EnabledItems(OpenMenuByMouse(help, "Window")), QStringList{"Control"});
    main.Hide();
    ChooseByMouse("Control");
    QVERIFY(main.isVisible());
    QCOMPARE(&Implicit<ControlWnd>(), &main);
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::HelpWndTest)
#include "test_help_wnd.moc"
