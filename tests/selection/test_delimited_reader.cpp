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
  // The separator and the header's fields joined by |; then each record's
  // fields, and @ the line it starts on; or the refusal where reading stops.
  std::vector<std::string> read;
};

std::string Joined(const auto& fields) {
  std::string out;
  for (std::string_view field : fields) out.append("|").append(field);
  return out.substr(out.empty() ? 0 : 1);
}

class ReaderCase : public ::testing::TestWithParam<Case> {};

TEST_P(ReaderCase, ReadsHeaderAndRecordsOrSaysWhy) {
  // Small chunks make records, quotes and CR LF pairs straddle two reads.
  for (std::size_t chunk : {1, 3, 4096}) {
    SCOPED_TRACE(chunk);
    auto file = MemoryInput(GetParam().text);
    std::vector<std::string> read;
    try {
      DelimitedReader reader(file.get(), "in.csv", {64, chunk});
      read.push_back(std::string(1, reader.Separator()).append(" ").append(Joined(reader.Header())));
      while (reader.Next()) read.push_back(Joined(reader.Fields()) + "@" + std::to_string(reader.Line()));
    } catch (const DataError& error) {
      read.push_back(error.what());
    }
    EXPECT_EQ(read, GetParam().read);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, ReaderCase,
    ::testing::Values(
        Case{"RWriteCsv", "\"\",\"model\",\"AIC\"\n\"1\",\"a, b\",10.5\n\"2\",\"say \"\"hi\"\"\",NA\n",
             {", |model|AIC", "1|a, b|10.5@2", "2|say \"hi\"|NA@3"}},
        Case{"WriteCsv2Semicolons", "model;aic\nm1;10,5\n", {"; model|aic", "m1|10,5@2"}},
        Case{"TabsWinAndCommasInNames", "model\taic\r\nx,y\t1\r\n", {"\t model|aic", "x,y|1@2"}},
        Case{"OldMacLineEnds", "model,aic\rm1,1\rm2,2", {", model|aic", "m1|1@2", "m2|2@3"}},
        Case{"ByteOrderMark", "\xEF\xBB\xBFmodel,aic\nm1,1\n", {", model|aic", "m1|1@2"}},
        Case{"QuotedLineEndCountsLines", "model,aic\n\"two\nlines\",1\nm2,2\n", {", model|aic", "two\nlines|1@2", "m2|2@4"}},
        Case{"BlankAndEmptyRowsSkipped", "\nmodel,aic\n\n,\nm1,1\n,,\n", {", model|aic", "m1|1@5"}},
        Case{"TrailingEmptyField", "a,b,c\n1,2,\n", {", a|b|c", "1|2|@2"}},
        Case{"Empty", "", {"in.csv: no header line; the input is empty"}},
        Case{"BlankLinesOnly", "\n\r\n\n", {"in.csv: no header line; the input is empty"}},
        Case{"Utf16", std::string("\xFF\xFEm\0", 4), {"in.csv: the text is UTF-16; save it as UTF-8 (or CSV UTF-8)"}},
        Case{"NulBytes", std::string("model,aic\nm1,\0\0", 15),
             {", model|aic", "in.csv:2: holds a NUL byte; this is not a text file"}},
        // The limit is 64 bytes here, 64 MiB in the program.
        Case{"EndlessLine", "model,aic\n" + std::string(200, 'x'),
             {", model|aic", "in.csv:2: a line longer than 64 bytes; this is not a table"}},
        Case{"UnclosedQuote", "model,aic\n\"m1,1\n" + std::string(100, 'y'),
             {", model|aic", "in.csv:2: a line longer than 64 bytes; this is not a table"}}),
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
