// The one entry of the library, from request to table: the rules that decide
// whether there is a table at all, and what is said on the way, with --strict
// acting in its one place.
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/errors.hpp"
#include "selection/selection_run.hpp"
#include "tests/selection/memory_input.hpp"

namespace drav::selection {
namespace {

struct Request {
  std::string models;
  Command command = Command::Table;
  std::string coefficients;  // empty: none
  bool strict = false;
  std::string estimate;  // --estimate, with its _se column
  std::string by;
  std::optional<double> chat;
};

// The table's row count, then each diagnostic as "note: ..." or
// "warning: ...", or the refusal's message.
std::vector<std::string> Said(const Request &run) {
  std::vector<std::string> said;
  Diagnostics diagnostics(run.strict);
  try {
    auto models = testing_support::MemoryInput(run.models);
    auto longFile = testing_support::MemoryInput(run.coefficients);
    DelimitedReader reader(models.get(), "m.csv", diagnostics);
    std::optional<DelimitedReader> coefficients;
    if (!run.coefficients.empty()) coefficients.emplace(longFile.get(), "c.csv", diagnostics);
    SelectionRequest request;
    request.command = run.command;
    request.load.byColumn = run.by;
    request.load.estimateColumn = run.estimate;
    request.load.seColumn = run.estimate.empty() ? "" : run.estimate + "_se";
    request.load.chat = run.chat;
    if (run.chat) request.load.criterion = Criterion::QAIC;
    const Selection selection(reader, coefficients ? &*coefficients : nullptr, request, diagnostics);
    said.push_back(std::to_string(selection.Layout().rows) + " rows");
  } catch (const RuntimeException &refusal) {
    said.push_back(std::string("refused: ") + refusal.what());
  }
  for (const Diagnostic &d : diagnostics.All()) {
    said.push_back((d.severity == Severity::Note ? "note: " : "warning: ") + Describe(d));
  }
  return said;
}

struct Case {
  const char *name;
  std::function<void(Request &)> set;
  std::vector<std::string> said;
};

void PrintTo(const Case &c, std::ostream *os) { *os << c.name; }

class SelectionRun : public ::testing::TestWithParam<Case> {};

TEST_P(SelectionRun, GivesATableOrSaysWhyNot) {
  Request run;
  GetParam().set(run);
  EXPECT_EQ(Said(run), GetParam().said);
}

const std::string kTwoSets =
    "site,model,AIC,b,b_se\nx,a,10,1,0.1\nx,b,11,NA,"
    "NA\ny,c,5,NA,NA\ny,d,6,NA,NA\n";

INSTANTIATE_TEST_SUITE_P(Rules, SelectionRun,
                         ::testing::Values(Case{"TermsNeedTermColumns",
                                                [](Request &r) {
                                                  r.models = "model,AIC,delta\na,1,0\nb,2,1\n";
                                                  r.command = Command::Importance;
                                                },
                                                {"refused: m.csv: no term columns beside the models (numbers, NA, "
                                                 "empty or +); give the terms in long "
                                                 "form with --coefficients FILE"}},
                                           Case{"LongTermsNeedRows",
                                                [](Request &r) {
                                                  r.models = "model,AIC\na,1\n";
                                                  r.command = Command::AverageAll;
                                                  r.coefficients = "model,term,estimate\n";
                                                },
                                                {"refused: c.csv: no coefficient rows"}},
                                           Case{"AverageWithoutSeWarns",
                                                [](Request &r) {
                                                  r.models = "model,AIC,x\na,1,2\nb,2,3\n";
                                                  r.command = Command::AverageAll;
                                                },
                                                {"1 rows",
                                                 "warning: m.csv: no column of standard errors "
                                                 "(std.error, se, Std. Error; TERM_se beside a "
                                                 "term), so the averages have no SE and no interval"}},
                                           Case{"StrictRefusesAtTheFirstWarning",
                                                [](Request &r) {
                                                  r.models = "model,AIC,x\na,1,2\nb,2,3\n";
                                                  r.command = Command::AverageAll;
                                                  r.strict = true;
                                                },
                                                {"refused: m.csv: no column of standard errors (std.error, se, "
                                                 "Std. Error; TERM_se beside a term), so "
                                                 "the averages have no SE and no interval (--strict)"}},
                                           Case{"NoModelHasTheEstimate",
                                                [](Request &r) {
                                                  r.models = "model,AIC,b,b_se\na,1,NA,NA\n";
                                                  r.command = Command::Average;
                                                  r.estimate = "b";
                                                },
                                                {"refused: m.csv: no model has an estimate in column 'b'"}},
                                           Case{"ASetWithoutTheEstimateIsLeftEmpty",
                                                [](Request &r) {
                                                  r.models = kTwoSets;
                                                  r.command = Command::Average;
                                                  r.estimate = "b";
                                                  r.by = "site";
                                                },
                                                {"2 rows",
                                                 "warning: m.csv: no model of set 'y' has an estimate "
                                                 "in column 'b'; its row is left empty"}},
                                           Case{"OverdispersionWidensTheSes",
                                                [](Request &r) {
                                                  r.models = "model,loglik,k,b,b_se\na,-5,2,1,0.1\n";
                                                  r.command = Command::Average;
                                                  r.estimate = "b";
                                                  r.chat = 4;
                                                },
                                                {"1 rows",
                                                 "note: the standard errors are multiplied by "
                                                 "sqrt(--chat) = 2 before averaging, as QAIC "
                                                 "assumes variances c times an ordinary fit's; give SEs "
                                                 "of an ordinary fit, not of a "
                                                 "quasi-likelihood one"}},
                                           Case{"NotesComeWithTheTable",
                                                [](Request &r) { r.models = "AIC\n1\n2\n"; },
                                                {"2 rows",
                                                 "note: no column names the models (model, name, "
                                                 "modnames, formula, call; or --model COLUMN), "
                                                 "so they are numbered 1, 2, ... in file order"}}),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(Diagnostics, ARefusalCarriesWhereItLies) {
  auto file = testing_support::MemoryInput("model,loglik,k\nm1,-3,2\nm2,abc,2\n");
  Diagnostics diagnostics;
  DelimitedReader reader(file.get(), "m.csv", diagnostics);
  try {
    LoadCandidates(reader, {}, diagnostics);
    ADD_FAILURE() << "a cell that is no number was read";
  } catch (const DataError& refusal) {
    const Diagnostic& said = refusal.Said();
    EXPECT_EQ(said.severity, Severity::Error);
    EXPECT_EQ(said.file, "m.csv");
    EXPECT_EQ(said.line, 3);
    EXPECT_EQ(said.column, "loglik");
    EXPECT_EQ(said.record, "m2,abc,2");
    EXPECT_STREQ(refusal.what(), "m.csv:3: column 'loglik' holds 'abc', not a number");
  }
  EXPECT_EQ(Describe({.file = "f.csv", .text = "read"}), "f.csv: read");
  EXPECT_EQ(Describe({.text = "alone"}), "alone");
}

// Two threads sort the models and their names' hashes in halves and merge
// them: the ranks, ties in file order and the repeated names are those one
// thread finds, on a set large enough to split.
TEST(Selection, TwoThreadsRankAsOne) {
  std::string models = "model,AIC\n";
  for (int i = 0; i < 100000; ++i) {
    // Values repeat every 997 models and names every 50000: ties and repeats
    // fall in both halves.
    models.append(1, 'm').append(std::to_string(i % 50000)).append(1, ',');
    models.append(std::to_string((i * 7919) % 997)).append(1, '\n');
  }
  const auto run = [&models](unsigned threads) {
    auto file = testing_support::MemoryInput(models);
    Diagnostics diagnostics;
    DelimitedReader reader(file.get(), "m.csv", diagnostics);
    SelectionRequest request;
    request.threads = threads;
    const Selection selection(reader, nullptr, request, diagnostics);
    std::string text;
    for (std::size_t row = 0; row < selection.Layout().rows; row += 997) {
      for (const Column& column : selection.Layout().columns) {
        const Cell cell = column.cell(row);
        text += cell.kind == CellKind::Text ? std::string(cell.text) : std::to_string(cell.number);
        text += ',';
      }
      text += '\n';
    }
    for (const Diagnostic& d : diagnostics.All()) text += d.text + '\n';
    return text;
  };
  const std::string one = run(1);
  EXPECT_NE(one.find("the model name 'm0' is given twice (lines 2 and 50002)"), std::string::npos) << one;
  EXPECT_EQ(run(2), one);
}

}  // namespace
}  // namespace drav::selection
