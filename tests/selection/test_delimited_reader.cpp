// The reader against the ways real programs write delimited text. Reading
// ahead on a second thread is test_shared_reading's to check.
#include "selection/input/delimited_reader.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/errors.hpp"
#include "tests/selection/memory_input.hpp"

namespace drav::selection {
namespace {

using testing_support::MemoryInput;

struct Case {
  const char* name;
  std::string text;
  // The separator and the header's fields joined by |; then each record's
  // fields, and @ the line it starts on; or the refusal where reading stops;
  // and the reader's note, if any.
  std::vector<std::string> read;
  InputEncoding encoding = InputEncoding::Detect;
};

// UTF-16 code units of ASCII text, little or big end first.
std::string Utf16(std::string_view mark, std::string_view ascii, bool bigEndian) {
  std::string out(mark);
  for (char c : ascii) {
    out += bigEndian ? '\0' : c;
    out += bigEndian ? c : '\0';
  }
  return out;
}

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
      Diagnostics diagnostics;
      DelimitedReader reader(file.get(), "in.csv", diagnostics, {64, chunk}, GetParam().encoding);
      read.push_back(std::string(1, reader.Separator()).append(" ").append(Joined(reader.Header())));
      while (reader.Next()) read.push_back(Joined(reader.Fields()) + "@" + std::to_string(reader.Line()));
      for (const Diagnostic& note : diagnostics.All()) read.push_back(note.text);
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
        // Empty quotes are empty fields; four quotes are a field of one.
        Case{"QuotesAloneOnALine", "model,aic\n\"\",\"\"\n\"\"\"\",\n", {", model|aic", "\"|@3"}},
        Case{"TrailingEmptyField", "a,b,c\n1,2,\n", {", a|b|c", "1|2|@2"}},
        // write.table as it stands: blanks between fields, names quoted; a
        // run of blanks is one separator, and the ends of a line are trimmed.
        Case{"RWriteTableBlanks", "\"logLik\" \"K\"\n\"y ~ a + b\" -80.5 3\n  m2    -81   2  \n",
             {"  logLik|K", "y ~ a + b|-80.5|3@2", "m2|-81|2@3"}},
        Case{"Empty", "", {"in.csv: no header line; the input is empty"}},
        Case{"BlankLinesOnly", "\n\r\n\n", {"in.csv: no header line; the input is empty"}},
        // Excel's "Unicode text": UTF-16 with a byte-order mark, tabs; é is U+00E9.
        Case{"Utf16LittleEndian", Utf16("\xFF\xFE", "model\tAIC\r\nTemp", false) + std::string("\xE9\0", 2) +
                                      Utf16("", "rature\t1\r\n", false),
             {"\t model|AIC", "Temp\xC3\xA9rature|1@2"}},
        Case{"Utf16BigEndian", Utf16("\xFE\xFF", "model,AIC\nm1,1\n", true), {", model|AIC", "m1|1@2"}},
        // Excel's CSV on Windows: Windows-1252, where E9 is é and 80 the euro sign.
        Case{"Windows1252", "model,AIC\r\nTemp\xE9rature,1\r\n\x80,2\r\n",
             {", model|AIC", "Temp\xC3\xA9rature|1@2", "\xE2\x82\xAC|2@3",
              "in.csv is not UTF-8; read as Windows-1252, in which byte E9 is '\xC3\xA9' (--encoding utf-8 refuses "
              "such a file)"}},
        Case{"Utf8ThenNotUtf8", "model,AIC\nTemp\xC3\xA9,1\nx\xE9,2\n",
             {", model|AIC", "Temp\xC3\xA9|1@2",
              "in.csv:3: byte E9 is not UTF-8, though the text before it is; --encoding windows-1252 reads the file "
              "as Windows-1252"}},
        Case{"Utf8Asked", "model,AIC\nx\xE9,2\n",
             {", model|AIC",
              "in.csv:2: byte E9 is not UTF-8, though the text before it is; --encoding windows-1252 reads the file "
              "as Windows-1252"},
             InputEncoding::Utf8},
        // Asked for, Windows-1252 reads the two bytes of a UTF-8 é as two characters.
        Case{"Windows1252Asked", "model,AIC\n\xC3\xA9,2\n", {", model|AIC", "\xC3\x83\xC2\xA9|2@2"},
             InputEncoding::Windows1252},
        Case{"NulBytes", std::string("model,aic\nm1,\0\0", 15),
             {", model|aic", "in.csv:2: holds a NUL byte; this is not a text file"}},
        // The limit is 64 bytes here, 64 MiB in the program.
        Case{"EndlessLine", "model,aic\n" + std::string(200, 'x'),
             {", model|aic", "in.csv:2: a line longer than 64 bytes; this is not a table"}},
        Case{"UnclosedQuoteRunsPastTheLimit", "model,aic\n\"m1,1\n" + std::string(100, 'y'),
             {", model|aic",
              "in.csv:2: the quote opened on line 2 is never closed within 64 bytes; a quoted field ends with a "
              "quote of its own"}},
        // A quote left open would swallow the rest of the file as one field.
        Case{"UnclosedQuoteAtTheEnd", "model,aic\n\"m1\nm2\",1\nm3,2\nm4,\"3\nm5,4\n",
             {", model|aic", "m1\nm2|1@2", "m3|2@4",
              "in.csv:5: the quote opened on line 5 is never closed; a quoted field ends with a quote of its own"}}),
    [](const auto& info) { return info.param.name; });

TEST(DelimitedReader, ReadFailureCarriesTheSystemsError) {
  // A stream open for writing only fails its first read with EBADF.
  std::FILE* writeOnly = std::fopen("/dev/null", "w");
  ASSERT_NE(writeOnly, nullptr);
  try {
    Diagnostics diagnostics;
    DelimitedReader reader(writeOnly, "out", diagnostics);
    FAIL() << "no error";
  } catch (const IOException& error) {
    EXPECT_EQ(error.ErrorNumber(), EBADF);
  }
  std::fclose(writeOnly);
}

}  // namespace
}  // namespace drav::selection
