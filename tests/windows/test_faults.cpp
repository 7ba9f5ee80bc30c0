#include <QTemporaryDir>
#include <QtTest>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "shell/implicit.hpp"
#include "shell/runtime.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/user_input.hpp"
#include "tests/windows/modal_answerer.hpp"
#include "windows/control_wnd.hpp"

namespace drav {

using namespace testing_support;
namespace fs = std::filesystem;

// Root reads any file, whatever its permissions say. While one of these
// lives, the process holds back that power (it stays root, so it still
// reaches every folder it owns, a build tree of mode 0700 among them), and
// a file without read permission is refused to it as to anyone.
class WithoutReadingAnyFile {
 public:
  WithoutReadingAnyFile() { Set(false); }
  ~WithoutReadingAnyFile() { Set(true); }
  WithoutReadingAnyFile(const WithoutReadingAnyFile&) = delete;
  WithoutReadingAnyFile& operator=(const WithoutReadingAnyFile&) = delete;

 private:
  static void Set(bool held) {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2]{};
    if (syscall(SYS_capget, &header, data) != 0) return;
    constexpr unsigned kPowers = (1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH);
    data[0].effective = held ? data[0].effective | (data[0].permitted & kPowers) : data[0].effective & ~kPowers;
    syscall(SYS_capset, &header, data);
  }
};

// Whatever a file holds, Drav answers as it should, never crashes, and the
// report already on the screen survives every failure unchanged.
class FaultsTest : public QObject {
  Q_OBJECT

  ControlWnd* w = nullptr;
  QTemporaryDir dir;
  const fs::path folder = dir.path().toStdString();
  std::vector<std::string> failures;
  std::string earlier;  // the report on the screen before each case

  fs::path Write(const std::string& name, const std::string& bytes) {
    const fs::path path = folder / name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }

  // One press of "Load Data" with the count typed and the file chosen. An
  // alert that follows is copied as a user quotes it, into `failures`.
  void Run(const char* count, const fs::path& file, bool alerted = false) {
    w->pFld().SetText(count);
    ModalAnswerer answers;
    answers.ChooseFile(QString::fromStdString(file.string()));
    if (alerted) answers.CopyMessage();
    QTest::mousePress(w->calcBtn().Button(), Qt::LeftButton);
    QVERIFY(answers.Done());
    failures.insert(failures.end(), answers.messages.begin(), answers.messages.end());
  }


 private slots:
  void initTestCase() {
    // Whether an alert's text can be selected is otherwise the desktop
    // style's choice: Fusion lets the mouse select it, the plain style
    // leaves it fixed. The plain one shows what the program itself does.
    QApplication::setStyle(QStringLiteral("windows"));
  }

  void init() {
    failures.clear();
    w = &Implicit<ControlWnd>();
    w->Show();
    QVERIFY(Activate(*w));
    Run("5", DRAV_SOURCE_DIR "/examples/five-models.txt");
    earlier = w->ResultsFld().Text();
    QVERIFY(!earlier.empty());
    QVERIFY(Activate(*w));
  }
  void cleanup() { delete GetImplicitWindow(ControlWnd::kClassName); }

  // A file that cannot be read, or a pipe or device that would never end,
  // is told in a message that names it, and that can be copied to be
  // quoted; the report on the screen stays,
  // "Load Data" is not left drawn down, and the next run works. How the
  // reader treats odd contents is the core's to test.
  void unreadableInputIsToldAndTheProgramGoesOn_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no permission") << "locked.txt" << "Permission denied (error " + QString::number(EACCES) + ")";
    QTest::newRow("named pipe") << "pipe" << "It is a named pipe, not a regular file";
    QTest::newRow("device") << "/dev/zero" << "It is a device, not a regular file";
  }
  void unreadableInputIsToldAndTheProgramGoesOn() {
    QFETCH(QString, path);
    QFETCH(QString, reason);
    fs::path file = path.toStdString();
    if (path == "locked.txt") fs::permissions(file = Write("locked.txt", "A\t1\nB\t2\n"), fs::perms::none);
    if (path == "pipe") QVERIFY(mkfifo((file = folder / "pipe").c_str(), 0600) == 0);
    {
      const WithoutReadingAnyFile asAnyone;
      Run("2", file, true);
    }
    QCOMPARE(failures.size(), std::size_t{1});
    QVERIFY2(failures[0].find(file.filename().string()) != std::string::npos, failures[0].c_str());
    QVERIFY2(failures[0].find(reason.toStdString()) != std::string::npos, failures[0].c_str());
    QCOMPARE(w->ResultsFld().Text(), earlier);
    QVERIFY(!w->calcBtn().Button()->isDown());
    Run("2", Write("fine.txt", "A\t1\nB\t2\n"));
    const std::string now = w->ResultsFld().Text();  // the next report goes below the earlier one
    QCOMPARE(now.substr(0, earlier.size()), earlier);
    QVERIFY(now.find("File: fine.txt", earlier.size()) != std::string::npos);
  }

  // What is typed is what the count holds, within its mask and limit. A
  // count refused by a message sends the focus back to the count; a run
  // that reaches its report leaves the focus where it was, in the report.
  void countsAtAndBeyondTheLimits_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("inField");
    QTest::addColumn<QString>("message");
    const QString invalid = "Please enter a valid number of models in the set (2-99).";
    QTest::newRow("none") << "" << "" << "Please enter the number of models in the set (2-99).";
    QTest::newRow("1") << "1" << "1" << invalid;
    QTest::newRow("99") << "99" << "99" << "";
    QTest::newRow("100 keeps two digits") << "100" << "10" << "";
  }
  void countsAtAndBeyondTheLimits() {
    QFETCH(QString, typed);
    QFETCH(QString, inField);
    QFETCH(QString, message);
    QTest::mouseClick(w->pFld().Edit(), Qt::LeftButton);
    w->pFld().Edit()->clear();
    Type(typed);
    QCOMPARE(QString::fromStdString(w->pFld().Text()), inField);
    QTest::mouseClick(w->ResultsFld().Edit()->viewport(), Qt::LeftButton);
    const std::string shown = w->ResultsFld().Text();  // the keys blanked it
    ModalAnswerer answers;
    if (message.isEmpty()) answers.ChooseFile(QStringLiteral(DRAV_SOURCE_DIR "/examples/ninety-nine-models.txt"));
    if (!message.isEmpty()) answers.CopyMessage();  // the message as the user can quote it
    QTest::mousePress(w->calcBtn().Button(), Qt::LeftButton);
    QVERIFY(answers.Done());
    QVERIFY(!w->calcBtn().Button()->isDown());
    QCOMPARE(w->focusWidget(), message.isEmpty() ? w->ResultsFld().Widget() : w->pFld().Widget());
    if (!message.isEmpty()) {
      QCOMPARE(QString::fromStdString(answers.messages[0]), message);
      QCOMPARE(w->ResultsFld().Text(), shown);
    }
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::FaultsTest)
#include "test_faults.moc"
