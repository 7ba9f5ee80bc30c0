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

  std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    std::string text = HelpDocument();
    for (std::size_t start = 0;;) {
      const std::size_t end = text.find('\r', start);
      lines.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
      if (end == std::string::npos) break;
      start = end + 1;
    }
    return lines;
  }

 private slots:
  void cleanup() {
    delete GetImplicitWindow(helpWnd::kClassName);
    delete GetImplicitWindow(ControlWnd::kClassName);
  }

  void documentHasItsShapeAndQuotedLines() {
    const std::string& doc = HelpDocument();
    const std::vector<std::string> lines = Lines();
    QCOMPARE(lines.size(), std::size_t{105});
    QVERIFY(doc.find('\n') == std::string::npos);
    QVERIFY(doc.back() != '\r');
    QCOMPARE(Len(doc), std::int64_t{10143});
    QCOMPARE(lines[0], std::string("Drav"));
    QCOMPARE(lines[1], std::string());
    const std::string en = "\xE2\x80\x93";
    std::string rule24, rule47, rule80;
    for (int i = 0; i < 24; ++i) rule24 += en;
    for (int i = 0; i < 47; ++i) rule47 += en;
    for (int i = 0; i < 80; ++i) rule80 += en;
    for (const std::string& needle :
         {std::string("AIC = -2 ln(ML) + 2k"),
          std::string("The strength of the evidence for a model computed from Drav values is:"),
          rule24 + "\rDrav\tEvidence Ratio\r" + rule24 + "\r2\t\t2.7\r", std::string("\r50\t\t72 billion\r"),
          std::string("[AICw = exp(-(1/2\xE2\x88\x86)) or AICw = exp (\xE2\x88\x86/2)]"), std::string("245 times stronger"),
          std::string("\rInput\rA tab-delimited text file (.txt) is used for data input. This file must contain data in two "
                      "columns: (1) model name (string of 8 or fewer characters) and (2) the AIC value. Tabs separate "
                      "the two data columns and each line ends with a return.\r"),
          std::string("\rNumber of models = 5\r\rA1\t204\rA2\t202\rB1\t206\rB2\t206\rC1\t214\r"),
          "\rResults:\r" + rule47 + "\rModel\tAIC\t\tDrav\tweight\t\tER\r" + rule47 + "\r",
          std::string("\rC1         +214.0       12.0       0.0015         403.43    \r") + rule47 + "\r",
          std::string("\r   Number of Free Parameters = 45\r   Loglikelihood H0 Vaue = -35403.436\r"
                      "   AIC = (45*2) + (-2 * -35403.436) = 70896.872\r"),
          "\r     " + std::string(), "\r\r\r" + rule80 + "\r"}) {
      QVERIFY2(doc.find(needle) != std::string::npos, needle.c_str());
    }
    std::string bullets = "     ";
    for (int i = 0; i < 62; ++i) bullets += "\xE2\x80\xA2";
    QVERIFY(std::find(lines.begin(), lines.end(), bullets) != lines.end());
  }

  void openingShowsTheDocumentWithOnlyItsTitleBold() {
    helpWnd& help = Implicit<helpWnd>();
    QVERIFY(help.isVisible());
    QCOMPARE(help.windowTitle(), QString("Info"));
    TextArea& area = help.EditField1();
    QCOMPARE(area.Text(), HelpDocument() + "Error message");
    StyledText& styled = area.GetStyledText();
    for (int i = 0; i < 4; ++i) QVERIFY(styled.IsBold(i));
    QVERIFY(!styled.IsBold(4));
    QVERIFY(!styled.IsBold(6));
    QVERIFY(!styled.IsBold(Len(HelpDocument()) + 2));  // the appended literal
    QVERIFY(!area.IsReadOnly());
  }

  // A fresh window has nothing to undo: the document, its bold title and
  // the appended literal are in place before the user's history starts.
  // Its Edit menu works on the document as the main window's does.
  void freshDocumentHasNothingToUndoAndCopies() {
    QApplication::clipboard()->clear();
    helpWnd& help = Implicit<helpWnd>();
    QVERIFY(Activate(help));
    QTest::mouseClick(help.EditField1().Edit()->viewport(), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), help.EditField1().Widget());
    Press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(help.EditField1().Text(), HelpDocument() + "Error message");
    QVERIFY(help.EditField1().GetStyledText().IsBold(0));
    Press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(EnabledItems(OpenMenuByMouse(help, "Edit")), (QStringList{"Cut", "Copy", "Delete", "Select All"}));
    ChooseInMenu(Qt::Key_C);
    QVERIFY(QApplication::clipboard()->text().startsWith("Drav\n"));
  }

  void editsAreForgottenWhenTheWindowCloses() {
    helpWnd& first = Implicit<helpWnd>();
    QVERIFY(Activate(first));
    QTest::mouseClick(first.EditField1().Edit()->viewport(), Qt::LeftButton);
    Type("note");
    Press(Qt::Key_Tab);  // moves on, types nothing
    const auto tabs = [](const std::string& text) { return std::count(text.begin(), text.end(), '\t'); };
    QCOMPARE(tabs(first.EditField1().Text()), tabs(HelpDocument()));
    QVERIFY(first.EditField1().Text() != HelpDocument() + "Error message");
    first.close();
    helpWnd& second = Implicit<helpWnd>();
    QCOMPARE(second.EditField1().Text(), HelpDocument() + "Error message");
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
