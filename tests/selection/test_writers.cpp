// The writers through the selection table's layout: what a spreadsheet, a
// JSON parser or LaTeX would make of their output.
#include <gtest/gtest.h>

#include <cmath>

#include "selection/delimited_reader.hpp"
#include "selection/delimited_writer.hpp"
#include "selection/json_writer.hpp"
#include "selection/latex_writer.hpp"
#include "selection/markdown_writer.hpp"
#include "selection/number_text.hpp"
#include "selection/table_layout.hpp"
#include "selection/text_writer.hpp"
#include "tests/selection/memory_input.hpp"

namespace drav::selection {
namespace {

// Two models: one with every character that needs care in some format, and
// one so far behind that its evidence ratio is infinite.
class Writers : public ::testing::Test {
 protected:
  Writers() {
    table_.sets = {""};
    Candidate a;
    a.model = "a_b&c%$#{}~^\\ \"q\", x|y\t\x01";
    a.value = 0.1 + 0.2;  // 0.30000000000000004: needs all 17 digits
    a.k = 3;
    Candidate b;
    b.model = "far";
    b.value = 2000;
    table_.models = {a, b};
    ranked_ = Rank(table_, {});
  }

  template <typename Write>
  std::string Written(Write write) {
    std::string text;
    OutputBuffer out([&](std::string_view chunk) { text += chunk; });
    write(SelectionLayout(table_, ranked_, 0.95), out);
    return text;
  }

  CandidateTable table_;
  std::vector<RankedSet> ranked_;
};

TEST_F(Writers, CsvReadsBackExactly) {
  const std::string csv = Written([](const OutputTable& t, OutputBuffer& o) { WriteDelimited(t, ',', o); });
  auto file = testing_support::MemoryInput(csv);
  DelimitedReader reader(file.get(), "out.csv");
  ASSERT_EQ(reader.Header().size(), 11u);
  EXPECT_EQ(reader.Header()[4], "aic");
  ASSERT_TRUE(reader.Next());
  EXPECT_EQ(reader.Fields()[1], table_.models[0].model);
  EXPECT_EQ(ParseNumber(reader.Fields()[4], false), 0.1 + 0.2);
  EXPECT_EQ(reader.Fields()[3], "");  // no loglik given
  EXPECT_EQ(reader.Fields()[10], "true");
  ASSERT_TRUE(reader.Next());
  EXPECT_EQ(reader.Fields()[5], "1999.7");            // 2000 - 0.30000000000000004, shortest
  EXPECT_EQ(reader.Fields()[9], "Inf");               // e^999.85
  EXPECT_FALSE(reader.Next());
}

TEST_F(Writers, JsonEscapesAndNulls) {
  const std::string json = Written(WriteJson);
  EXPECT_NE(json.find(R"("model": "a_b&c%$#{}~^\\ \"q\", x|y\u0009\u0001")"), std::string::npos) << json;
  EXPECT_NE(json.find(R"("evidence_ratio": null)"), std::string::npos);
  EXPECT_NE(json.find(R"("loglik": null)"), std::string::npos);
  EXPECT_EQ(json.rfind(R"({"criterion": "aic", "level": 0.95, "models": [)", 0), 0u);
}

TEST_F(Writers, LatexEscapesEverySpecialCharacter) {
  const std::string latex = Written([](const OutputTable& t, OutputBuffer& o) { WriteLatex(t, 2, o); });
  EXPECT_NE(latex.find(R"(1 & a\_b\&c\%\$\#\{\}\textasciitilde{}\textasciicircum{}\textbackslash{} "q", x\textbar{}y)"),
            std::string::npos)
      << latex;
  EXPECT_NE(latex.find(R"(& $\infty$ &)"), std::string::npos);
  EXPECT_EQ(latex.rfind("\\begin{tabular}{rlrrrrrrrrr}\n\\toprule\n", 0), 0u);
}

TEST_F(Writers, MarkdownAndTextRoundAndAlign) {
  const std::string md = Written([](const OutputTable& t, OutputBuffer& o) { WriteMarkdown(t, 3, o); });
  EXPECT_NE(md.find(R"( x\|y)"), std::string::npos);
  EXPECT_NE(md.find("| 0.300 |"), std::string::npos) << md;
  const std::string text = Written([](const OutputTable& t, OutputBuffer& o) { WriteText(t, std::nullopt, o); });
  // Every line of the table is as wide as the header, the last column
  // right-aligned ("95% set" over "*").
  const std::size_t headerEnd = text.find('\n');
  EXPECT_EQ(text.substr(headerEnd - 7, 7), "95% set");
  EXPECT_EQ(text.substr(text.find('\n', headerEnd + 1) - 1, 1), "*");
  EXPECT_NE(text.find("1999.70"), std::string::npos);  // delta to 2 places by default
}

TEST(NumberText, ShortestTextReadsBack) {
  for (double x : {0.1, 1.0 / 3, 1e-300, 123456789012345.0, 1e15, -2.5e-8, 5e-324}) {
    std::string text;
    AppendShortest(text, x);
    EXPECT_EQ(ParseNumber(text, false), x) << text;
  }
  std::string whole;
  AppendShortest(whole, 1000000);
  EXPECT_EQ(whole, "1000000");
}

}  // namespace
}  // namespace drav::selection
