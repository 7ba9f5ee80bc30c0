// Terms read in both forms: which columns of a wide table are terms, and how
// a long coefficient file joins its rows to the models, or why it cannot.
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

std::string Long(const std::string& tableText, const std::string& by, const std::string& longText) {
  auto tableFile = testing_support::MemoryInput(tableText);
  Diagnostics diagnostics;
  DelimitedReader tableReader(tableFile.get(), "t.csv", diagnostics);
  LoadOptions options;
  options.byColumn = by;
  const CandidateTable table = LoadCandidates(tableReader, options, diagnostics);
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
        // As write.csv writes an all-subsets table: row names under an empty
        // header name, "+" for a factor, delta and weight beside the terms.
        Case{"WideAllSubsetsExport",
             [] { return Wide("\"\",(Intercept),cyl,wt,df,logLik,AICc,delta,weight\n"
                              "1,30,+,-3,5,-70,150,0,0.6\n2,31,NA,,4,-72,152,2,0.4\n", ""); },
             "(Intercept)=[30,31] cyl=[+,-] wt=[-3,-]"},
        Case{"WideSeColumnsOfEachSpelling",
             [] { return Wide("model,AIC,wt,wt_se,se.hp,hp\na,1,2,0.5,0.1,3\nb,2,NA,NA,,\n", ""); },
             "wt=[2~0.5,-] hp=[3~0.1,-]"},
        // Labels are no term; the --by column and the weights of ranked
        // tables are no term either, though they hold numbers.
        Case{"WideTextByAndComputedColumns",
             [] { return Wide("model,AIC,family,site,AICcWt,Delta_AICc,x\na,1,gaussian,3,1,0,4\n", "site"); },
             "x=[4]"},
        // broom's df beside the K that counts every parameter: read as
        // neither K nor a term.
        Case{"WideSecondSpellingOfARole", [] { return Wide("model,AIC,K,df,x\na,1,3,1,4\n", ""); }, "x=[4]"},
        // An all-subsets table of factors named N, P and K (npk): the
        // columns hold + and NA, so they are terms, K goes to df, and a term
        // NA in every model is held by none.
        Case{"WideRoleNamedTermsOfFactors",
             [] { return Wide("\"\",(Intercept),block,N,P,K,df,logLik,AICc\n"
                              "1,52,+,+,NA,+,9,-62,155\n2,54,NA,+,NA,NA,4,-72,155.1\n", ""); },
             "(Intercept)=[52,54] block=[+,-] N=[+,+] K=[+,-]"},
        // Numeric terms named N and K, known by their SE columns; n and df
        // beside them keep their roles.
        Case{"WideRoleNamedTermsWithSe",
             [] { return Wide("model,N,N_se,K,K_se,df,logLik,n\na,2.5,0.5,3,1,4,-10,50\nb,NA,NA,2,1,3,-11,50\n", ""); },
             "N=[2.5~0.5,-] K=[3~1,2~1]"},
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
        Case{"WideNegativeSe", [] { return Wide("model,AIC,x,x_se\na,1,2,-1\n", ""); },
             "t.csv:2: column 'x_se' holds '-1', not a standard error"},
        // Tidy rows, a model without rows, and an NA estimate (an aliased
        // coefficient) that the model then does not hold.
        Case{"LongJoinsByName",
             [] { return Long(kTwoModels, "", "model,term,estimate,std.error\nm1,(Intercept),1,0.5\nm1,x,2,0.25\n"
                                              "m2,(Intercept),3,NA\nm2,x,NA,NA\n"); },
             "(Intercept)=[1~0.5,3] x=[2~0.25,-]"},
        // A model without rows is warned of: every fit has an intercept row.
        Case{"LongSeSpelledSe", [] { return Long(kTwoModels, "", "term,model,estimate,se\nx,m2,4,1\n"); },
             "x=[-,4~1] warning: model 'm1' (line 2) has no row in c.csv, so it holds no term, not even an "
             "intercept. Is the file cut short?"},
        // coef(summary()) bound with a model and a term column, as written
        // and as data.frame() renames its columns.
        Case{"LongCoefSummary",
             [] { return Long(kTwoModels, "", "model,term,Estimate,Std. Error,t value,Pr(>|t|)\n"
                                              "m1,x,1,0.5,2,0.05\nm2,x,3,1,3,0.01\n"); },
             "x=[1~0.5,3~1]"},
        Case{"LongTermTwice", [] { return Long(kTwoModels, "", "model,term,estimate\nm1,x,1\nm1,x,2\n"); },
             "c.csv:3: column 'term' gives term 'x' of model 'm1' a second time"},
        Case{"LongEstimateNotANumber", [] { return Long(kTwoModels, "", "model,term,estimate\nm1,x,abc\n"); },
             "c.csv:2: column 'estimate' holds 'abc', not a number"},
        Case{"LongNegativeSe", [] { return Long(kTwoModels, "", "model,term,estimate,std.error\nm1,x,1,-2\n"); },
             "c.csv:2: column 'std.error' holds '-2', not a standard error"},
        Case{"LongWithoutTermColumn", [] { return Long(kTwoModels, "", "model,estimate\nm1,1\n"); },
             "c.csv: no column named 'term'"},
        // The same name in two sets: joined by the set when the file has
        // the --by column, refused as ambiguous when it has not.
        Case{"LongJoinsBySetAndName",
             [] { return Long("model,AIC,site\nm1,1,A\nm1,2,B\n", "site", "site,model,term,estimate\nB,m1,x,5\nA,m1,x,6\n"); },
             "x=[6,5]"},
        // Rows in the table's order join without the index, rows out of it
        // through the index, in one file; a name the table gives twice is
        // refused even when its rows come in the table's order.
        Case{"LongInAndOutOfTableOrder",
             [] { return Long("model,AIC\nm1,1\nm2,2\nm3,3\n", "",
                              "model,term,estimate\nm1,x,1\nm2,x,2\nm1,y,3\nm3,x,4\nm2,y,5\n"); },
             "x=[1,2,4] y=[3,5,-]"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace drav::selection
