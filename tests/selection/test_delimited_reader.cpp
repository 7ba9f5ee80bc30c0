// The reader against the ways real programs write delimited text.
#include "selection/delimited_reader.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "selection/errors.hpp"
#include "tests/selection/memory_input.hpp"

namespace drav::selection {
namespace {

using testing_support::MemoryInput;

struct Case {
  const char* name;
  std::string text;
  char separator;
  std::string header;            // fields joined by |
  std::vector<std::string> rows;  // each row's fields joined by |, then @line
};

template <typename Fields>
std::string Joined(const Fields& fields) {
  std::string out;
  bool first = true;
  for (std::string_view field : fields) {
    if (!first) out.push_back('|');
    out.append(field);
    first = false;
  }
  return out;
}

class ReaderCase : public ::testing::TestWithParam<Case> {};

TEST_P(ReaderCase, ReadsHeaderAndRecords) {
  const Case& c = GetParam();
  // Small chunks make records, quotes and CR LF pairs straddle two reads.
  for (std::size_t chunk : {1, 3, 4096}) {
    SCOPED_TRACE(chunk);
    auto file = MemoryInput(c.text);
    DelimitedReader reader(file.get(), "in.csv", {1024, chunk});
    EXPECT_EQ(reader.Separator(), c.separator);
    EXPECT_EQ(Joined(reader.Header()), c.header);
    std::vector<std::string> rows;
    while (reader.Next()) rows.push_back(Joined(reader.Fields()).append("@").append(std::to_string(reader.Line())));
    EXPECT_EQ(rows, c.rows);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, ReaderCase,
    ::testing::Values(
        Case{"RWriteCsv", "\"\",\"model\",\"AIC\"\n\"1\",\"a, b\",10.5\n\"2\",\"say \"\"hi\"\"\",NA\n", ',',
             "|model|AIC", {"1|a, b|10.5@2", "2|say \"hi\"|NA@3"}},
        Case{"WriteCsv2Semicolons", "model;aic\nm1;10,5\n", ';', "model|aic", {"m1|10,5@2"}},
        Case{"TabsWinAndCommasInNames", "model\taic\r\nx,y\t1\r\n", '\t', "model|aic", {"x,y|1@2"}},
        Case{"OldMacLineEnds", "model,aic\rm1,1\rm2,2", ',', "model|aic", {"m1|1@2", "m2|2@3"}},
        Case{"ByteOrderMark", "\xEF\xBB\xBFmodel,aic\nm1,1\n", ',', "model|aic", {"m1|1@2"}},
        Case{"QuotedLineEndCountsLines", "model,aic\n\"two\nlines\",1\nm2,2\n", ',', "model|aic",
             {"two\nlines|1@2", "m2|2@4"}},
        Case{"BlankAndEmptyRowsSkipped", "\nmodel,aic\n\n,\nm1,1\n,,\n", ',', "model|aic", {"m1|1@5"}},
        Case{"TrailingEmptyField", "a,b,c\n1,2,\n", ',', "a|b|c", {"1|2|@2"}}),
    [](const auto& info) { return info.param.name; });

struct Refusal {
  const char* name;
  std::string text;
  std::string message;
};

class ReaderRefusal : public ::testing::TestWithParam<Refusal> {};

TEST_P(ReaderRefusal, SaysWhy) {
  auto file = MemoryInput(GetParam().text);
  try {
    DelimitedReader reader(file.get(), "in.csv", {64, 16});
    while (reader.Next()) {
    }
    FAIL() << "no error";
  } catch (const DataError& error) {
    EXPECT_EQ(error.what(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, ReaderRefusal,
    ::testing::Values(Refusal{"Empty", "", "in.csv: no header line; the input is empty"},
                      Refusal{"BlankLinesOnly", "\n\r\n\n", "in.csv: no header line; the input is empty"},
                      Refusal{"Utf16", std::string("\xFF\xFEm\0", 4), "in.csv: the text is UTF-16; save it as UTF-8 (or CSV UTF-8)"},
                      Refusal{"NulBytes", std::string("model,aic\nm1,\0\0", 15), "in.csv:2: holds a NUL byte; this is not a text file"},
                      // The limit is 64 bytes here, 64 MiB in the program.
                      Refusal{"EndlessLine", "model,aic\n" + std::string(200, 'x'),
                              "in.csv:2: a line longer than 64 bytes; this is not a table"},
                      Refusal{"UnclosedQuote", "model,aic\n\"m1,1\n" + std::string(100, 'y'),
                              "in.csv:2: a line longer than 64 bytes; this is not a table"}),
    [](const auto& info) { return info.param.name; });

TEST(DelimitedReader, ReadFailureCarriesTheSystemsError) {
  // A stream open for writing only fails its first read with EBADF.
  std::FILE* writeOnly = std::fopen("/dev/null", "w");
  ASSERT_NE(writeOnly, nullptr);
  try {
    DelimitedReader reader(writeOnly, "out", {});
    FAIL() << "no error";
  } catch (const ReadError& error) {
    EXPECT_EQ(error.ErrorNumber(), EBADF);
  }
  std::fclose(writeOnly);
}

}  // namespace
}  // namespace drav::selection
