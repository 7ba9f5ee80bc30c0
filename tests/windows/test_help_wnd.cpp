#include <QClipboard>
#include <QtTest>

#include "analysis/text.hpp"
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

  // The document's shape and the lines it must hold word for word.
  void documentHasItsShapeAndQuotedLines() {
    const std::string& doc = HelpDocument();
    QCOMPARE(std::count(doc.begin(), doc.end(), '\r'), 104);  // 105 lines, the last without an end
    QVERIFY(doc.find('\n') == std::string::npos);
    QVERIFY(doc.back() != '\r');
    QCOMPARE(Len(doc), std::int64_t{10143});
    const auto times = [](int n, const std::string& piece) {
      std::string row;
      while (n-- > 0) row += piece;
      return row;
    };
    const std::string en = "\xE2\x80\x93", rule24 = times(24, en), rule47 = times(47, en);
    for (const std::string& needle :
         {std::string("AIC = -2 ln(ML) + 2k"),
          "is:\r" + rule24 + "\rDrav\tEvidence Ratio\r" + rule24 + "\r2\t\t2.7\r", std::string("\r50\t\t72 billion\r"),
          std::string("[AICw = exp(-(1/2\xE2\x88\x86)) or AICw = exp (\xE2\x88\x86/2)]"),
          std::string("\rInput\rA tab-delimited text file (.txt) is used for data input. This file must contain data in two "
                      "columns: (1) model name (string of 8 or fewer characters) and (2) the AIC value. Tabs separate "
                      "the two data columns and each line ends with a return.\r"),
          std::string("\rNumber of models = 5\r\rA1\t204\rA2\t202\rB1\t206\rB2\t206\rC1\t214\r"),
          "\rResults:\r" + rule47 + "\rModel\tAIC\t\tDrav\tweight\t\tER\r" + rule47 + "\r",
          std::string("\rC1         +214.0       12.0       0.0015         403.43    \r") + rule47 + "\r",
          std::string("\r   Number of Free Parameters = 45\r   Loglikelihood H0 Vaue = -35403.436\r"
                      "   AIC = (45*2) + (-2 * -35403.436) = 70896.872\r"),
          "\r     " + times(62, "\xE2\x80\xA2") + "\r", "\r\r\r" + times(80, en) + "\r"}) {
      QVERIFY2(doc.find(needle) != std::string::npos, needle.c_str());
    }
    QCOMPARE(doc.rfind("Drav\r\r", 0), std::size_t{0});
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
