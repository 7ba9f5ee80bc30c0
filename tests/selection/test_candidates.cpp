// Loading candidates: which criterion, where it comes from, and the data
// that is refused or warned about.
#include "selection/input/load_candidates.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "base/errors.hpp"
#include "tests/selection/memory_input.hpp"

namespace drav::selection {
namespace {

using Options = std::function<void(LoadOptions&)>;

// A table with the warnings said of it.
struct Loaded {
  CandidateTable table;
  std::vector<std::string> warnings;
};

Loaded LoadSaying(const std::string& text, const Options& set = nullptr) {
  LoadOptions options;
  if (set) set(options);
  auto file = testing_support::MemoryInput(text);
  Diagnostics diagnostics;
  DelimitedReader reader(file.get(), "d.csv", diagnostics);
  Loaded loaded{LoadCandidates(reader, options, diagnostics), {}};
  for (const Diagnostic& d : diagnostics.All()) {
    if (d.severity != Severity::Note) loaded.warnings.push_back(d.text);
  }
  return loaded;
}

CandidateTable Load(const std::string& text, const Options& set = nullptr) { return LoadSaying(text, set).table; }

struct Choice {
  const char* name;
  std::string text;
  Criterion chosen;
  double firstValue;
  Options options = nullptr;
};

class CriterionChoice : public ::testing::TestWithParam<Choice> {};

TEST_P(CriterionChoice, TakesColumnOrComputes) {
  const CandidateTable table = Load(GetParam().text, GetParam().options);
  EXPECT_EQ(table.criterion, GetParam().chosen);
  EXPECT_DOUBLE_EQ(table.models[0].value, GetParam().firstValue);
  EXPECT_EQ(table.models[0].model, "a");
}

INSTANTIATE_TEST_SUITE_P(
    Files, CriterionChoice,
    ::testing::Values(
        // The first criterion column wins over computing, even with n given.
        Choice{"FirstColumn", "model,BIC,AIC,loglik,k,n\na,7,9,-10,2,10\n", Criterion::BIC, 7},
        // No criterion column, n given: AICc = -2(-10) + 2*2 + 2*2*3/(10-2-1) = 24 + 12/7.
        Choice{"AiccWhenN", "Modnames,LL,K,nobs\na,-10,2,10\n", Criterion::AICc, 24 + 12.0 / 7},
        // No n: AIC = -2(-10) + 2*2 = 24.
        Choice{"AicOtherwise", "name,logLik,df\na,-10,2\n", Criterion::AIC, 24},
        // npar is K before df, wherever df stands: 20 + 2*3, not 20 + 2*1.
        Choice{"NparBeforeDf", "name,logLik,df,npar\na,-10,1,3\n", Criterion::AIC, 26},
        // Asked for BIC with an AIC column only: computed, 20 + 2 ln 100 = 20 + 4 ln 10.
        Choice{"AskedAndComputed", "model,aic,ll,npar,n\na,1,-10,2,100\n", Criterion::BIC, 29.210340371976184,
               [](LoadOptions& o) { o.criterion = Criterion::BIC; }},
        Choice{"QaiccColumn", "model,AIC,QAICc\na,1,12\n", Criterion::QAICc, 12,
               [](LoadOptions& o) { o.criterion = Criterion::QAICc; }},
        // k is shown but not needed when AIC has its column.
        Choice{"UnneededCellMayBeNA", "model,AIC,k\na,10,NA\n", Criterion::AIC, 10},
        // European spreadsheets: semicolons and decimal commas; the first
        // cell with a mark decides, whole numbers before it read either way.
        Choice{"DecimalComma", "model;AICc\na;101\nb;101,5\n", Criterion::AICc, 101},
        Choice{"DecimalAsked", "model\tAIC\na\t1,5\n", Criterion::AIC, 1.5,
               [](LoadOptions& o) { o.decimal = ','; }}),
    [](const auto& info) { return info.param.name; });

struct Refusal {
  const char* name;
  std::string text;
  std::string message;
  Options options = nullptr;
};

class BadData : public ::testing::TestWithParam<Refusal> {};

TEST_P(BadData, IsRefusedWithItsPlace) {
  try {
    Load(GetParam().text, GetParam().options);
    FAIL() << "accepted";
  } catch (const DataError& error) {
    EXPECT_EQ(error.what(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Files, BadData,
    ::testing::Values(
        Refusal{"NegativeSe", "model,AIC,b,b_se\na,10,1,-0.5\n",
                "d.csv:2: column 'b_se' holds '-0.5'; a standard error cannot be negative",
                [](LoadOptions& o) { o.estimateColumn = "b"; o.seColumn = "b_se"; }},
        // Row names make every row one field longer than the header.
        Refusal{"RowNamesOnSomeRowsOnly", "AIC,BIC\nm1,104,100\n100,104\n",
                "d.csv:3: 2 fields where the header has 2 and the rows before it, as R writes row names, one more"},
        Refusal{"QaiccTooFewObservations", "model,loglik,k,n\na,-1,3,4\n",
                "d.csv:2: QAICc needs n > K + 1, and here n = 4 with K = 3",
                [](LoadOptions& o) { o.criterion = Criterion::QAICc; o.chat = 1.5; }},
        // A K column of text is never quietly left out.
        Refusal{"TextInK", "model,AIC,K\na,1,3\nb,2,three\n", "d.csv:3: column 'K' holds 'three', not a number"},
        Refusal{"TooManyFields", "model,AIC\na,1,2,3\n", "d.csv:2: 4 fields where the header has 2"},
        // An endless input stops at the limit, not with the memory gone.
        Refusal{"MoreModelsThanTheLimit", "model,AIC\na,1\nb,2\nc,3\n",
                "d.csv:4: more than 2 models; a table holds no more", [](LoadOptions& o) { o.maxModels = 2; }}),
    [](const auto& info) { return info.param.name; });

// The refusal's message is the goldens'; here what it carries for a caller.
TEST(Diagnostics, ARefusalCarriesWhereItLies) {
  try {
    Load("model,loglik,k\nm1,-3,2\nm2,abc,2\n");
    ADD_FAILURE() << "a cell that is no number was read";
  } catch (const DataError& refusal) {
    const Diagnostic& said = refusal.Said();
    EXPECT_EQ(said.severity, Severity::Error);
    EXPECT_EQ(said.file, "d.csv");
    EXPECT_EQ(said.line, 3);
    EXPECT_EQ(said.column, "loglik");
    EXPECT_EQ(said.record, "m2,abc,2");
  }
}

TEST(Candidates, RoleNamedColumnsFollowWhatTheyHoldOrTheUser) {
  // N holds +, so it is a term's and n goes to nobs; K behaves as K.
  const std::string text = "model,N,K,nobs,logLik\na,+,3,20,-10\nb,NA,2,20,-11\n";
  CandidateTable table = Load(text);
  EXPECT_EQ(table.criterion, Criterion::AICc);
  EXPECT_EQ(table.models[0].n, 20);
  EXPECT_EQ(table.models[0].k, 3);
  // --k and --term decide against the cells: K a term, nobs read as K.
  table = Load(text, [](LoadOptions& o) { o.roles.k = "nobs"; o.roles.terms = {"K"}; o.criterion = Criterion::AIC; });
  EXPECT_EQ(table.models[0].k, 20);
  EXPECT_TRUE(std::isnan(table.models[0].n));
  // n smaller than K is no n.
  EXPECT_TRUE(std::isnan(Load("model,logLik,K,N\na,-10,5,3\n").models[0].n));
}

TEST(Candidates, OverdispersionFactorForAGivenQaicIsUsage) {
  // The file gives QAIC itself: --chat would change nothing.
  EXPECT_THROW(Load("model,QAIC,loglik,k\na,5,-1,2\n", [](LoadOptions& o) { o.chat = 2; }), UsageError);
}

TEST(Candidates, RowNamesAndSets) {
  // write.table without a header name for the row names; a --by column.
  const CandidateTable table =
      Load("site,AIC\nm1,north,3\nm2,south,1\nm3,north,2\n", [](LoadOptions& o) { o.byColumn = "SITE"; });
  ASSERT_EQ(table.sets, (std::vector<std::string>{"north", "south"}));
  EXPECT_EQ(table.byName, "site");
  ASSERT_EQ(table.models.size(), 3u);
  EXPECT_EQ(table.models[1].model, "m2");
  EXPECT_EQ(table.models[1].set, 1u);
  EXPECT_EQ(table.models[2].set, 0u);
}

TEST(Candidates, WarnsOfDifferentNAndRepeatedNames) {
  const Loaded table = LoadSaying("model,loglik,k,n\na,-1,1,30\nb,-1,1,30\na,-1,1,31\nb,-2,1,30\nc,-1,1,32\n");
  EXPECT_EQ(table.warnings,
            (std::vector<std::string>{
                "the models were fitted to different numbers of observations (n = 30 on line 2, n = 31 on line 4); "
                "their criteria are not comparable",
                "the model name 'a' is given twice (lines 2 and 4), and 1 more names are repeated"}));
  // Once a set, each naming its set and its first two sizes.
  const Loaded sets = LoadSaying("s,model,loglik,k,n\nx,a,-1,1,30\ny,b,-1,1,20\nx,c,-1,1,31\ny,d,-1,1,21\n"
                                   "x,e,-1,1,32\ny,f,-1,1,22\n",
                                   [](LoadOptions& o) { o.byColumn = "s"; });
  ASSERT_EQ(sets.warnings.size(), 2u);
  EXPECT_NE(sets.warnings[0].find("the models of set 'x' were fitted to different numbers of observations (n = 30 "
                                  "on line 2, n = 31 on line 4)"),
            std::string::npos);
  EXPECT_NE(sets.warnings[1].find("of set 'y' were fitted to different numbers of observations (n = 20 on line 3, "
                                  "n = 21 on line 5)"),
            std::string::npos);
  // The same name in two sets is no repeat.
  EXPECT_TRUE(LoadSaying("model,s,AIC\na,1,1\na,2,1\n", [](LoadOptions& o) { o.byColumn = "s"; }).warnings.empty());
}

TEST(Candidates, WarnsOfCriteriaThatDisagreeWithLogLikAndK) {
  // broom's glance() of lm(mpg ~ wt + hp, mtcars): df 2 counts the slopes,
  // but logLik -74.326 with AIC 156.652 implies K = 4 (two slopes, the
  // intercept and sigma); BIC 163.98 with ln 32 likewise.
  const Loaded table =
      LoadSaying("df,logLik,AIC,BIC,nobs\n2,-74.326,156.652,162.515,32\n1,-80.015,166.029,170.427,32\n");
  ASSERT_EQ(table.warnings.size(), 2u);
  EXPECT_EQ(table.warnings[0],
            "column 'AIC' on line 2 gives 156.652, which implies K = 4, but column 'df' gives 2; AIC = -2 logLik + "
            "2K; 1 more lines disagree. Is 'df' the number of estimated parameters? A column 'K' is read before it.");
  EXPECT_NE(table.warnings[1].find("column 'BIC' on line 2 gives 162.515, which implies K = 4,"), std::string::npos);
  // A K off by one puts AIC exactly 2 from -2 logLik + 2K.
  const Loaded offByOne = LoadSaying("model,logLik,K,AIC\na,-10,3,24\n");
  EXPECT_EQ(offByOne.warnings,
            (std::vector<std::string>{"column 'AIC' on line 2 gives 24, which implies K = 2, but column 'K' gives 3; "
                                      "AIC = -2 logLik + 2K. Is 'K' the number of estimated parameters?"}));
  // Rounded to two decimals, agreeing criteria say nothing.
  EXPECT_TRUE(LoadSaying("model,logLik,K,AIC,AICc,n\na,-74.326,4,156.65,158.13,32\n").warnings.empty());
}

TEST(Candidates, EmptySetValueIsNamed) {
  // Of two lines without a set, the first is named.
  const Loaded table = LoadSaying("model,s,AIC\na,x,1\nb,,2\nc,,3\n", [](LoadOptions& o) { o.byColumn = "s"; });
  EXPECT_EQ(table.table.sets, (std::vector<std::string>{"x", ""}));
  EXPECT_EQ(table.warnings,
            (std::vector<std::string>{"line 3 has no value in column 's'; such models are a set of their own"}));
}

}  // namespace
}  // namespace drav::selection
