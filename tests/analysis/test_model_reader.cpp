#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "analysis/model_reader.hpp"
#include "tests/analysis/temp_file.hpp"

namespace drav {
namespace {

using testing_support::TempFile;

struct Tables {
  TextTable text{kMaxModels, kTextColumns};
  NumberTable stat{kMaxModels, kStatColumns};
};

Tables Read(std::string_view contents, std::int32_t count) {
  TempFile file(contents);
  FolderItem item(file.Path());
  TextInputStream stream = TextInputStream::Open(item);
  stream.SetEncoding(Encodings::UTF8);
  Tables tables;
  tables.text.Redim(count, kTextColumns);
  tables.stat.Redim(count, kStatColumns);
  ReadModels(stream, count, tables.text, tables.stat);
  return tables;
}

struct LineCase {
  const char* name;
  const char* line;
  const char* modelName;
  const char* aicText;
  double aic;
};

class LineForms : public testing::TestWithParam<LineCase> {};

TEST_P(LineForms, FillRowOne) {
  const LineCase& c = GetParam();
  const Tables t = Read(std::string(c.line) + "\nZ\t1\n", 2);
  EXPECT_EQ(t.text(1, kNameColumn), c.modelName);
  EXPECT_EQ(t.text(1, kAicTextColumn), c.aicText);
  EXPECT_EQ(t.stat(1, kAicColumn), c.aic);
  EXPECT_EQ(t.text(2, kNameColumn), "Z");  // the next line is the next row
}

INSTANTIATE_TEST_SUITE_P(
    Table, LineForms,
    testing::Values(LineCase{"Tab", "A1\t204", "A1", "204", 204},
                    LineCase{"Comma", "A1,204", "A1", "204", 204},
                    LineCase{"LongName", "Model1234567\t70896.872", "Model123", "70896.872", 70896.872},
                    LineCase{"Negative", "A1\t-35.5", "A1", "-35.5", -35.5},
                    LineCase{"CommaInName", "A,1\t204", "A", "1", 1},
                    LineCase{"DecimalComma", "A1\t204,5", "A1", "204", 204},
                    LineCase{"TwoTabs", "A1\t\t204", "A1", "", 0},
                    LineCase{"BlankOnly", "A1 204", "A1 204", "", 0},
                    LineCase{"NoName", "\t204", "", "204", 204},
                    LineCase{"NotANumber", "A1\tabc", "A1", "abc", 0},
                    LineCase{"Empty", "", "", "", 0},
                    LineCase{"ThirdFieldIgnored", "A1\t204\tnote", "A1", "204", 204},
                    LineCase{"BlankAfterTab", "A1, 204", "A1", " 204", 204},
                    LineCase{"Exponent", "A1\t1.5E+3", "A1", "1.5E+3", 1500},
                    LineCase{"MultiByteName", "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\t3",
                             "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", "3", 3}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ReadModels, ShortFileLeavesEmptyRowsBehindItsEnd) {
  const Tables t = Read("A1\t204\nA2\t202", 4);
  EXPECT_EQ(t.text(2, kNameColumn), "A2");
  for (int row : {3, 4}) {
    EXPECT_EQ(t.text(row, kNameColumn), "");
    EXPECT_EQ(t.text(row, kAicTextColumn), "");
    EXPECT_EQ(t.stat(row, kAicColumn), 0.0);
  }
}

TEST(ReadModels, LinesBehindTheCountAreNotRead) {
  const Tables t = Read("A1\t204\nA2\t202\nA3\t1\n", 2);
  EXPECT_EQ(t.text.RowBound(), 2);
  EXPECT_EQ(t.stat(2, kAicColumn), 202);
}

TEST(ReadModels, EmptyLineIsAModelAndShiftsTheRest) {
  const Tables t = Read("A1\t204\n\nA2\t202\nA3\t206\n", 3);
  EXPECT_EQ(t.text(2, kNameColumn), "");
  EXPECT_EQ(t.stat(2, kAicColumn), 0.0);
  EXPECT_EQ(t.text(3, kNameColumn), "A2");
}

TEST(ReadModels, HeaderLineIsAModelWithAicZero) {
  const Tables t = Read("Model\tAIC\nA1\t204\n", 2);
  EXPECT_EQ(t.text(1, kNameColumn), "Model");
  EXPECT_EQ(t.stat(1, kAicColumn), 0.0);
}

TEST(ReadModels, LineEndsDoNotChangeTheTables) {
  for (const char* contents : {"A1\t204\rA2,202\r", "A1\t204\r\nA2,202\r\n", "A1\t204\nA2,202"}) {
    const Tables t = Read(contents, 2);
    EXPECT_EQ(t.text(1, kNameColumn), "A1") << contents;
    EXPECT_EQ(t.stat(1, kAicColumn), 204) << contents;
    EXPECT_EQ(t.text(2, kNameColumn), "A2") << contents;
    EXPECT_EQ(t.stat(2, kAicColumn), 202) << contents;
  }
}

// Lines far longer than anything kept of them: the name is still cut to its
// eight characters, the value still read in full, and the next line found.
TEST(ReadModels, HugeFieldsGiveWhatShortOnesGive) {
  const std::size_t huge = 3 * TextInputStream::kChunkSize + 17;
  const std::string name = "\xC3\xA9" + std::string(huge, 'n');
  const std::string digits = "-1" + std::string(huge, '0') + "e-" + std::to_string(huge);
  const Tables t = Read(name + "\t" + digits + "\t" + std::string(huge, 'x') + "\n" +  //
                            std::string(huge, 'm') + ",7.25\n" +                            //
                            "c," + std::string(huge, '9') + "\n",
                        3);
  EXPECT_EQ(t.text(1, kNameColumn), "\xC3\xA9nnnnnnn");
  EXPECT_EQ(t.stat(1, kAicColumn), -1.0);
  EXPECT_EQ(t.text(2, kNameColumn), "mmmmmmmm");
  EXPECT_EQ(t.text(2, kAicTextColumn), "7.25");
  EXPECT_EQ(t.stat(2, kAicColumn), 7.25);
  EXPECT_EQ(t.text(3, kNameColumn), "c");
  EXPECT_EQ(t.stat(3, kAicColumn), std::numeric_limits<double>::max());
  EXPECT_LT(t.text(1, kAicTextColumn).size(), 1000u);  // kept by its value, not whole
}

TEST(ReadModels, ColumnsThreeToFiveStayEmpty) {
  const Tables t = Read("A1\t204\tx\ty\n", 2);
  for (int column : {3, 4, 5}) EXPECT_EQ(t.text(1, column), "");
}

}  // namespace
}  // namespace drav
