#include <QClipboard>
#include <QtTest>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <random>
#include <sys/stat.h>
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

// Whatever a file holds, Drav answers as it should, never crashes, and the
// report already on the screen survives every failure unchanged.
class FaultsTest : public QObject {
  Q_OBJECT

  ControlWnd* w = nullptr;
  fs::path folder;
  std::vector<std::string> failures;
  std::string earlier;  // the report on the screen before each case

  fs::path Write(const std::string& name, const std::string& bytes) {
    const fs::path path = folder / name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }

  // One press of "Load Data" with the count typed and the file chosen.
  void Run(const char* count, const fs::path& file, bool expectMessage = false) {
    w->pFld().SetText(count);
    ModalAnswerer answers;
    answers.ChooseFile(QString::fromStdString(file.string()));
    if (expectMessage) answers.AcceptMessage();
    QTest::mousePress(w->calcBtn().Button(), Qt::LeftButton);
    QVERIFY(answers.Done());
  }

  std::string Added() const {
    const std::string now = w->ResultsFld().Text();
    return now.substr(0, earlier.size()) == earlier ? now.substr(earlier.size()) : "<earlier report changed>";
  }

 private slots:
  void initTestCase() {
    folder = fs::temp_directory_path() / ("drav-faults-" + std::to_string(getpid()));
    fs::create_directories(folder);
    Application::Instance()->ShowFailure = [this](const std::string& text) { failures.push_back(text); };
  }
  void cleanupTestCase() { fs::remove_all(folder); }

  void init() {
    failures.clear();
    w = &Implicit<ControlWnd>();
    w->Show();
    QVERIFY(Activate(*w));
    ModalAnswerer answers;
    answers.ChooseFile(QStringLiteral(DRAV_SOURCE_DIR "/examples/five-models.txt"));
    w->pFld().SetText("5");
    QTest::mousePress(w->calcBtn().Button(), Qt::LeftButton);
    earlier = w->ResultsFld().Text();
    QVERIFY(!earlier.empty());
    QVERIFY(Activate(*w));
  }
  void cleanup() { delete GetImplicitWindow(ControlWnd::kClassName); }

  void unreadableFileIsToldAndTheProgramGoesOn() {
    const fs::path locked = Write("locked.txt", "A\t1\nB\t2\n");
    fs::permissions(locked, fs::perms::none);
    // Root reads any file: the press runs as an ordinary user for this case.
    const bool root = geteuid() == 0;
    if (root) QVERIFY(seteuid(65534) == 0);
    Run("2", locked);
    if (root) QVERIFY(seteuid(0) == 0);
    QCOMPARE(failures.size(), std::size_t{1});
    QVERIFY(failures[0].find("locked.txt") != std::string::npos);
    QVERIFY(failures[0].find("Permission denied") != std::string::npos);
    QVERIFY(failures[0].find("(error " + std::to_string(EACCES) + ")") != std::string::npos);
    QCOMPARE(w->ResultsFld().Text(), earlier);
    QVERIFY(!w->calcBtn().Button()->isDown());
    // The program goes on: the next run works.
    Run("2", Write("fine.txt", "A\t1\nB\t2\n"));
    QVERIFY(Added().find("File: fine.txt") != std::string::npos);
  }

  void emptyFileGivesModelsOfAicZero() {
    Run("3", Write("empty.txt", ""));
    QVERIFY(failures.empty());
    QVERIFY(Added().find(std::string(20, ' ') + "+0.0") != std::string::npos);
  }

  void binaryFileIsReadAsText() {
    std::string bytes(4096, '\0');
    std::mt19937 random(7);
    for (char& c : bytes) c = static_cast<char>(random());
    Run("99", Write("binary.dat", bytes));
    QVERIFY(failures.empty());
    QVERIFY(Added().find("File: binary.dat") != std::string::npos);
  }

  void hugeLineIsOneModel() {
    std::string line = "big\t7\t";
    line.resize(200u << 20, 'x');
    Run("2", Write("one-line.txt", line));
    QVERIFY(failures.empty());
    const std::string added = Added();
    QVERIFY(added.find("big") != std::string::npos);
    QVERIFY(added.size() < 4096);
    fs::remove(folder / "one-line.txt");
  }

  // A pipe that nobody writes to, or a device without end, would freeze the
  // window: both are refused at once, with a message that names them.
  void streamsThatNeverEndAreRefusedAtOnce_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("kind");
    QTest::newRow("named pipe") << QString() << "a named pipe";
    QTest::newRow("device") << "/dev/zero" << "a device";
  }
  void streamsThatNeverEndAreRefusedAtOnce() {
    QFETCH(QString, path);
    QFETCH(QString, kind);
    if (path.isEmpty()) {
      path = QString::fromStdString((folder / "pipe").string());
      QVERIFY(mkfifo(path.toLocal8Bit().constData(), 0600) == 0);
    }
    Run("2", path.toStdString());
    QCOMPARE(failures.size(), std::size_t{1});
    QVERIFY2(failures[0].find(fs::path(path.toStdString()).filename().string()) != std::string::npos, failures[0].c_str());
    QVERIFY2(failures[0].find("It is " + kind.toStdString() + ", not a regular file") != std::string::npos,
             failures[0].c_str());
    QCOMPARE(w->ResultsFld().Text(), earlier);
  }

  // A value beyond the double range stands as the largest double of its
  // sign, so the best model's row still reads 0.0, 1.0 and 1.0.
  void overflowingAicKeepsTheBestRowFinite() {
    Run("3", Write("overflow.txt", "A1\t-1e999\nA2\t5\nA3\t1e999\n"));
    QVERIFY(failures.empty());
    const std::string added = Added();
    const std::string best = "A1" + std::string(16, ' ') + "0.0" + std::string(19, ' ') + "1.0" + std::string(17, ' ') +
                             "1.0" + std::string(17, ' ');
    QVERIFY2(added.find(best) != std::string::npos, added.c_str());
    QVERIFY2(added.find("NAN") == std::string::npos, added.c_str());
  }

  void gigabyteFileWithModelsAtItsHead() {
    const fs::path big = Write("gigabyte.txt", "A1\t204\nA2\t202\nB1\t206\n");
    fs::resize_file(big, std::uintmax_t{1} << 30);  // sparse: nothing is written
    Run("3", big);
    QVERIFY(Added().find("A2                +202.0") != std::string::npos);
    fs::remove(big);
  }

  void utf16AndInvalidUtf8() {
    std::u16string text = u"\u00C9t\u00E9\t10\r\nB\t12\r\n";
    std::string utf16 = "\xFF\xFE";
    for (char16_t c : text) utf16 += {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
    Run("2", Write("utf16.txt", utf16));
    QVERIFY(Added().find("\xC3\x89t\xC3\xA9") != std::string::npos);

    earlier = w->ResultsFld().Text();
    Run("2", Write("latin1.txt", "\xC9t\xE9\t10\nB\t12\n"));
    QVERIFY(Added().find("\xEF\xBF\xBDt\xEF\xBF\xBD") != std::string::npos);
  }

  void countsAtAndBeyondTheLimits_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("inField");
    QTest::addColumn<bool>("valid");
    QTest::newRow("0") << "0" << "0" << false;
    QTest::newRow("1") << "1" << "1" << false;
    QTest::newRow("2") << "2" << "2" << true;
    QTest::newRow("99") << "99" << "99" << true;
    QTest::newRow("100 keeps two digits") << "100" << "10" << true;
  }
  void countsAtAndBeyondTheLimits() {
    QFETCH(QString, typed);
    QFETCH(QString, inField);
    QFETCH(bool, valid);
    w->pFld().SetText("");
    QTest::mouseClick(w->pFld().Edit(), Qt::LeftButton);
    Type(typed);
    QCOMPARE(QString::fromStdString(w->pFld().Text()), inField);
    const std::string shown = w->ResultsFld().Text();  // the keys blanked it
    ModalAnswerer answers;
    if (valid) {
      answers.ChooseFile(QStringLiteral(DRAV_SOURCE_DIR "/examples/ninety-nine-models.txt"));
    } else {
      answers.AcceptMessage();
    }
    QTest::mousePress(w->calcBtn().Button(), Qt::LeftButton);
    QVERIFY(answers.Done());
    if (!valid) {
      QCOMPARE(answers.seen[0], std::string("Please enter a valid number of models in the set (2-99)."));
      QCOMPARE(w->ResultsFld().Text(), shown);
    }
  }

  void pastedLettersNeverReachTheCount() {
    w->pFld().SetText("");
    QTest::mouseClick(w->pFld().Edit(), Qt::LeftButton);
    QApplication::clipboard()->setText("abc");
    OpenMenuByKey(Qt::Key_E);
    ChooseInMenu(Qt::Key_P);
    QCOMPARE(w->pFld().Text(), std::string());
    QCOMPARE(w->ResultsFld().Text(), earlier);  // a paste passes no key filter
    ModalAnswerer answers;
    answers.AcceptMessage();
    QTest::mousePress(w->calcBtn().Button(), Qt::LeftButton);
    QCOMPARE(answers.seen[0], std::string("Please enter the number of models in the set (2-99)."));
    QCOMPARE(w->ResultsFld().Text(), earlier);
  }

  void quitFromTheMenuReachesQuitTwiceWithoutHarm() {
    QTimer::singleShot(0, w, [] {
      OpenMenuByKey(Qt::Key_F);
      ChooseInMenu(Qt::Key_Q);
    });
    QTimer::singleShot(3000, [] { QCoreApplication::exit(99); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(GetImplicitWindow(ControlWnd::kClassName) == nullptr);
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::FaultsTest)
#include "test_faults.moc"
