#include <QtTest>

#include "base/runtime_exception.hpp"
#include "sheets/property_sheet.hpp"
#include "tests/shell/qt_test_main.hpp"
#include "tests/shell/test_window.hpp"

namespace drav {

class PropertySheetTest : public QObject {
  Q_OBJECT
 private slots:
  void roundTripKeepsEveryType() {
    const std::vector<Property> sheet = {
        {"Visible", true},
        {"Left", std::int64_t{-1}},
        {"Index", std::int64_t{-2147483648LL}},
        {"FontSize", Single{12.0f}},
        {"CornerWidth", 16.0},
        {"FillColor", Color{0x80, 0x00, 0x02}},
        {"BorderColor", Color{0x80, 0x00, 0x02, 0x40}},  // an alpha other than opaque survives too
        {"Value", std::string("Number of Models (2-99):\xE2\x80\x93")},
        {"Title", std::string()},
    };
    QCOMPARE(DecodeSheet(EncodeSheet(sheet)), sheet);
  }

  void byteFormIsLittleEndianWithOpaqueAlphaZero() {
    const std::string bytes = EncodeSheet({{"Width", std::int64_t{700}}, {"TextColor", Color{0x3D, 0x00, 0x02}},
                                           {"Name", std::string("pFld")}, {"Bold", false}});
    const std::string expected = std::string("Width ") + std::string("\xBC\x02\0\0\0\0\0\0", 8) +
                                 std::string("TextColor ") + std::string("\x02\x00\x3D\x00", 4) +
                                 std::string("Name ") + std::string("\x04\0\0\0", 4) + "pFld" +
                                 std::string("Bold ") + std::string(1, '\0');
    QCOMPARE(bytes, expected);
  }

  void malformedSheetsFailLoudly_data() {
    QTest::addColumn<QByteArray>("bytes");
    const std::string good = EncodeSheet({{"Width", std::int64_t{700}}, {"Title", std::string("Drav")}});
    QTest::newRow("cut in a value") << QByteArray::fromStdString(good.substr(0, 10));
    QTest::newRow("cut in a text") << QByteArray::fromStdString(good.substr(0, good.size() - 1));
    QTest::newRow("name without blank") << QByteArray("Width");
    QTest::newRow("unknown name") << QByteArray::fromStdString(std::string("Colour ") + std::string(4, '\0'));
    QTest::newRow("boolean not 0 or 1") << QByteArray("Visible \x02");
    QTest::newRow("boolean with its high bit set") << QByteArray("Visible \x80");
  }
  void malformedSheetsFailLoudly() {
    QFETCH(QByteArray, bytes);
    QVERIFY_THROWS_EXCEPTION(UnsupportedFormatException, DecodeSheet(bytes.toStdString()));
  }

  void valueOfTheWrongTypeIsRefused() {
    QVERIFY_THROWS_EXCEPTION(UnsupportedFormatException, EncodeSheet({{"Width", std::string("700")}}));
    QVERIFY_THROWS_EXCEPTION(UnsupportedFormatException, EncodeSheet({{"FontSize", 12.0}}));
  }

  void setPropertiesAppliesAndKeepsWhatHasNoCounterpart() {
    auto& w = Implicit<testing_support::TestWnd>();
    QCOMPARE(w.field().Widget()->geometry(), QRect(10, 10, 50, 22));
    QCOMPARE(w.KeptProperties().size(), std::size_t{1});
    QCOMPARE(w.KeptProperties()[0].name, std::string("MacProcID"));
    QCOMPARE(w.area().KeptProperties()[0].name, std::string("UnicodeMode"));
    w.close();
  }
};

}  // namespace drav

DRAV_QTEST_MAIN(drav::PropertySheetTest)
#include "test_property_sheet.moc"
