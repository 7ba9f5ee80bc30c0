// The writers through the selection table's layout: what a spreadsheet, a
// JSON parser or LaTeX would make of their output.
#include <gtest/gtest.h>

#include <functional>

#include "selection/delimited_writer.hpp"
#include "selection/json_writer.hpp"
#include "selection/latex_writer.hpp"
#include "selection/markdown_writer.hpp"
#include "selection/number_text.hpp"
#include "selection/table_layout.hpp"
#include "selection/text_writer.hpp"

namespace drav::selection {
namespace {

using Writer = std::function<void(const OutputTable&, OutputBuffer&)>;

// Two models: one with every character that needs care in some format, and
// one so far behind that its evidence ratio is infinite.
std::string Written(const Writer& write) {
  CandidateTable table;
  table.sets = {""};
  // 0.1 + 0.2 is 0.30000000000000004: it needs all 17 digits.
  table.models = {Candidate{.model = "a_b&c%$#{}~^\\ \"q\", x|y*<r>[l](u) \u03B2\u00E9\t\x01", .value = 0.1 + 0.2, .k = 3},
                  Candidate{.model = "far", .value = 2000}};
  std::string text;
  OutputBuffer out([&](std::string_view chunk) { text += chunk; });
  write(SelectionLayout(table, Rank(table, {}), 0.95), out);
  return text;
}

struct Format {
  const char* name;
  Writer write;
  std::string start;
  std::vector<std::string> holds;  // none: the start is the whole output
};

class Writes : public ::testing::TestWithParam<Format> {};

TEST_P(Writes, EscapesRoundsAndMarksTheSet) {
  const std::string text = Written(GetParam().write);
  const std::string& start = GetParam().start;
  EXPECT_EQ(GetParam().holds.empty() ? text : text.substr(0, start.size()), start);
  for (const std::string& piece : GetParam().holds)
    EXPECT_NE(text.find(piece), std::string::npos) << piece << " in\n" << text;
}

INSTANTIATE_TEST_SUITE_P(
    Formats, Writes,
    ::testing::Values(
        // Quotes doubled, numbers in their shortest exact text: 1999.7 is 2000 - 0.30000000000000004.
        Format{"Csv", [](const OutputTable& t, OutputBuffer& o) { WriteDelimited(t, ',', o); },
               "rank,model,k,loglik,aic,delta,likelihood,weight,cumulative_weight,evidence_ratio,confidence_set\n"
               "1,\"a_b&c%$#{}~^\\ \"\"q\"\", x|y*<r>[l](u) \u03B2\u00E9\t\x01\",3,,0.30000000000000004,0,1,1,1,1,true\n"
               "2,far,,,2000,1999.7,0,0,1,Inf,false\n", {}},
        Format{"Json", WriteJson, R"({"criterion": "aic", "level": 0.95, "models": [)",
               {R"("model": "a_b&c%$#{}~^\\ \"q\", x|y*<r>[l](u) )" "\u03B2\u00E9" R"(\u0009\u0001")",
                R"("evidence_ratio": null)", R"("loglik": null)"}},
        Format{"Latex", [](const OutputTable& t, OutputBuffer& o) { WriteLatex(t, 2, o); },
               "\\begin{tabular}{rlrrrrrrrrr}\n\\toprule\n",
               // Greek as math, Latin-1 letters as they are, control characters as blanks.
               {R"(1 & a\_b\&c\%\$\#\{\}\textasciitilde{}\textasciicircum{}\textbackslash{} "q", )"
                R"(x\textbar{}y*\textless{}r\textgreater{}[l](u) \ensuremath{\beta})" "\u00E9   & 3 &",
                R"(& $\infty$ &)"}},
        // Nothing in a name is read as emphasis, a link, HTML or an entity.
        Format{"Markdown", [](const OutputTable& t, OutputBuffer& o) { WriteMarkdown(t, 3, o); }, "| Rank | Model | K |",
               {R"(| a\_b\&c%\$#{}\~^\\ "q", x\|y\*\<r\>\[l\](u) )" "\u03B2\u00E9\t\x01 |", "| 0.300 |"}},
        // The last column right-aligned: "95% set" over "*"; delta to 2 places by default.
        Format{"Text", [](const OutputTable& t, OutputBuffer& o) { WriteText(t, std::nullopt, o); }, "Rank  Model",
               {"95% set\n", "*\n", "1999.70"}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(NumberText, ShortestTextReadsBack) {
  const auto shortest = [](double x) {
    std::string text;
    AppendShortest(text, x);
    return text;
  };
  for (double x : {0.1, 1.0 / 3, 1e-300, 123456789012345.0, 1e15, -2.5e-8, 5e-324}) {
    EXPECT_EQ(ParseNumber(shortest(x), false), x) << shortest(x);
  }
  EXPECT_EQ(shortest(1000000), "1000000");
}

}  // namespace
}  // namespace drav::selection
