// Terms read in both forms, the cases that tests/golden/terms.batch leaves
// out: spellings and layouts of wide terms, and how a long coefficient file
// joins its rows to the models, or why it cannot.
#include <gtest/gtest.h>

#include <cmath>

#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "selection/input/load_candidates.hpp"
#include "selection/input/long_coefficients.hpp"
#include "selection/input/wide_coefficients.hpp"
#include "tests/selection/memory_input.hpp"

namespace drav::selection {
namespace {

// The terms as one line: name=[cell,...] per term, a cell "-" where the
// model lacks the term, "+" where it holds it without a number, else the
// estimate and "~SE" when there is one.
std::string Shown(const Coefficients& coefficients, const Diagnostics& diagnostics) {
  std::string text;
  for (const Term& term : coefficients.terms) {
    if (!text.empty()) text += ' ';
    text += term.name + "=[";
    for (std::size_t m = 0; m < term.held.size(); ++m) {
      if (m > 0) text += ',';
      if (!term.held[m]) {
        text += '-';
      } else if (std::isnan(term.estimate[m])) {
        text += '+';
      } else {
        AppendShortest(text, term.estimate[m]);
        if (!std::isnan(term.se[m])) {
          text += '~';
          AppendShortest(text, term.se[m]);
        }
      }
    }
    text += ']';
  }
  for (const Diagnostic& d : diagnostics.All()) {
    if (d.severity == Severity::Warning) text += " warning: " + d.text;
  }
  return text;
}

std::string Wide(const std::string& text, const std::string& by) {
  auto file = testing_support::MemoryInput(text);
  Diagnostics diagnostics;
  DelimitedReader reader(file.get(), "t.csv", diagnostics);
  WideCoefficients wide("t.csv", by);
  LoadOptions options;
  options.byColumn = by;
  options.observer = &wide;
  LoadCandidates(reader, options, diagnostics);
  const Coefficients coefficients = wide.Finish(diagnostics);
  return Shown(coefficients, diagnostics);
}

std::string Long(const std::string& tableText, const std::string& longText) {
  auto tableFile = testing_support::MemoryInput(tableText);
  Diagnostics diagnostics;
  DelimitedReader tableReader(tableFile.get(), "t.csv", diagnostics);
  const CandidateTable table = LoadCandidates(tableReader, {}, diagnostics);
  auto file = testing_support::MemoryInput(longText);
  DelimitedReader reader(file.get(), "c.csv", diagnostics);
  const Coefficients coefficients = ReadLongCoefficients(reader, table, 0, diagnostics);
  return Shown(coefficients, diagnostics);
}

struct Case {
  const char* name;
  std::function<std::string()> read;
  std::string expected;  // Shown(), or the DataError's message
};

void PrintTo(const Case& c, std::ostream* os) { *os << c.name; }

class Coefficient : public ::testing::TestWithParam<Case> {};

TEST_P(Coefficient, ReadsTermsOrSaysWhy) {
  std::string got;
  try {
    got = GetParam().read();
  } catch (const DataError& error) {
    got = error.what();
  }
  EXPECT_EQ(got, GetParam().expected);
}

const std::string kTwoModels = "model,AIC\nm1,1\nm2,2\n";

INSTANTIATE_TEST_SUITE_P(
    Forms, Coefficient,
    ::testing::Values(
        Case{"WideSeColumnsOfEachSpelling",
             [] { return Wide("model,AIC,wt,wt_se,se.hp,hp\na,1,2,0.5,0.1,3\nb,2,NA,NA,,\n", ""); },
             "wt=[2~0.5,-] hp=[3~0.1,-]"},
        // Labels are no term; the --by column and the weights of ranked
        // tables are no term either, though they hold numbers.
        Case{"WideTextByAndComputedColumns",
             [] { return Wide("model,AIC,family,site,AICcWt,Delta_AICc,x\na,1,gaussian,3,1,0,4\n", "site"); },
             "x=[4]"},
        // A K that behaves as K on the first line and as a term later.
        Case{"WideRoleColumnLaterHoldsNa", [] { return Wide("model,AIC,K,df,x\na,1,3,3,4\nb,2,NA,2,5\n", ""); },
             "t.csv:3: column 'K' holds 'NA', as a term's column does, but is read as K from the first line; --term K "
             "reads it as a term, --k K as K"},
        Case{"WideDecimalComma", [] { return Wide("model;AIC;x\na;1;2,5\n", ""); }, "x=[2.5]"},
        // Drav's own table read back holds no term.
        Case{"WideDravTableHasNoTerms",
             [] { return Wide("rank,model,k,loglik,aicc,delta,likelihood,weight,cumulative_weight,evidence_ratio,"
                              "confidence_set\n1,a,2,-1,6,0,1,1,1,1,true\n", ""); },
             ""},
        // Tidy rows, a model without rows, and an NA estimate (an aliased
        // coefficient) that the model then does not hold.
        Case{"LongJoinsByName",
             [] { return Long(kTwoModels, "model,term,estimate,std.error\nm1,(Intercept),1,0.5\nm1,x,2,0.25\n"
                                              "m2,(Intercept),3,NA\nm2,x,NA,NA\n"); },
             "(Intercept)=[1~0.5,3] x=[2~0.25,-]"},
        Case{"LongTermTwice", [] { return Long(kTwoModels, "model,term,estimate\nm1,x,1\nm1,x,2\n"); },
             "c.csv:3: column 'term' gives term 'x' of model 'm1' a second time"},
        Case{"LongEstimateNotANumber", [] { return Long(kTwoModels, "model,term,estimate\nm1,x,abc\n"); },
             "c.csv:2: column 'estimate' holds 'abc', not a number"},
        Case{"LongNegativeSe", [] { return Long(kTwoModels, "model,term,estimate,std.error\nm1,x,1,-2\n"); },
             "c.csv:2: column 'std.error' holds '-2', not a standard error"},
        Case{"LongWithoutTermColumn", [] { return Long(kTwoModels, "model,estimate\nm1,1\n"); },
             "c.csv: no column named 'term'"},
        // Rows in the table's order join without the index, rows out of it
        // through the index, in one file; a name the table gives twice is
        // refused even when its rows come in the table's order.
        Case{"LongInAndOutOfTableOrder",
             [] { return Long("model,AIC\nm1,1\nm2,2\nm3,3\n",
                              "model,term,estimate\nm1,x,1\nm2,x,2\nm1,y,3\nm3,x,4\nm2,y,5\n"); },
             "x=[1,2,4] y=[3,5,-]"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace drav::selection
