// Records read ahead and made into models by two threads in turn give the
// table one thread gives: every cell, every warning in its order, and the
// same first fault, wherever in the file the moments fall that change how
// later records are read (the decimal mark decided, a column found not to
// be a term) and wherever the faults stand among the batches; and models
// ranked by two threads as one thread ranks them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "base/errors.hpp"
#include "selection/selection_run.hpp"
#include "tests/selection/memory_input.hpp"

namespace drav::selection {
namespace {

// Enough records for several batches read ahead, so that runs of both
// threads fall before and after each moment.
constexpr int kRecords = 40000;

// The whole table (every cell of every row) and everything said, or the
// refusal and everything said before it.
std::string Outcome(const std::string& text, const std::function<void(SelectionRequest&)>& set, unsigned threads,
                    const std::string& coefficientsText = {}) {
  auto file = testing_support::MemoryInput(text);
  auto coefficientsFile = testing_support::MemoryInput(coefficientsText);
  Diagnostics diagnostics;
  std::string outcome;
  try {
    DelimitedReader reader(file.get(), "m.csv", diagnostics);
    std::optional<DelimitedReader> coefficients;
    if (!coefficientsText.empty()) coefficients.emplace(coefficientsFile.get(), "c.csv", diagnostics);
    SelectionRequest request;
    set(request);
    request.threads = threads;
    request.load.readAhead = threads > 1;
    request.coefficientsAhead = threads > 1;
    const Selection selection(reader, coefficients ? &*coefficients : nullptr, request, diagnostics);
    const OutputTable& table = selection.Layout();
    for (std::size_t row = 0; row < table.rows; ++row) {
      for (const Column& column : table.columns) {
        const Cell cell = column.cell(row);
        outcome += cell.kind == CellKind::Text ? std::string(cell.text) : std::to_string(cell.number);
        outcome += ',';
      }
      outcome += '\n';
    }
  } catch (const RuntimeException& refusal) {
    outcome += std::string("refused: ") + refusal.what() + '\n';
  }
  for (const Diagnostic& d : diagnostics.All()) outcome += Describe(d) + '\n';
  return outcome;
}

// A file of `records` models, each row made by `row` from its index (from 1).
std::string File(const std::string& header, const std::function<std::string(int)>& row, int records = kRecords) {
  std::string text = header + '\n';
  for (int i = 1; i <= records; ++i) text += row(i) + '\n';
  return text;
}

void ExpectOneThreadsOutcome(const std::string& text, const std::function<void(SelectionRequest&)>& set,
                             const std::string& expected, const std::string& coefficients = {}) {
  const std::string one = Outcome(text, set, 1, coefficients);
  EXPECT_NE(one.find(expected), std::string::npos) << one.substr(0, 2000);
  const std::string two = Outcome(text, set, 2, coefficients);
  const auto differ = std::mismatch(one.begin(), one.end(), two.begin(), two.end());
  EXPECT_TRUE(differ.first == one.end() && differ.second == two.end())
      << "one thread:  ..." << std::string(differ.first, one.end()).substr(0, 300) << "\ntwo threads: ..."
      << std::string(differ.second, two.end()).substr(0, 300);
}

std::string Num(int i) { return std::to_string(i); }
std::string Name(int i) { return std::string(1, 'm').append(Num(i)); }

// The fields joined by `separator`, one record.
std::string Row(std::initializer_list<std::string_view> fields, char separator = ',') {
  std::string row;
  for (std::string_view field : fields) row.append(field).append(1, separator);
  row.pop_back();
  return row;
}

TEST(SharedReading, TablesAndWarningsAsOneThreadReadsThem) {
  // Sets by a column, one row without a set, and an AIC column that
  // disagrees with logLik and K on rows in several batches.
  const std::string sets = File("model,set,loglik,k,AIC", [](int i) {
    const double loglik = -1000.0 - (i * 37 % 1000) / 8.0;
    const int k = 2 + i % 5;
    const double aic = -2 * loglik + 2 * k + (i % 9000 == 0 ? 3 : 0);
    const char* set = i == 25000 ? "" : i % 3 ? "a" : "b";
    return Row({Name(i), set, std::to_string(loglik), Num(k), std::to_string(aic)});
  });
  ExpectOneThreadsOutcome(sets, [](SelectionRequest& r) { r.load.byColumn = std::string("set"); },
                          "column 'AIC' on line 9001 gives");
  // A parameter averaged, NA in some models.
  const std::string estimates = File("model,loglik,k,x,x_se", [](int i) {
    return Row({Name(i), Num(-1000 - i % 700), "3", i % 11 == 0 ? "NA" : Num(i % 13), "0.5"});
  });
  ExpectOneThreadsOutcome(estimates,
                          [](SelectionRequest& r) {
                            r.command = Command::Average;
                            r.load.estimateColumn = std::string("x");
                            r.load.seColumn = std::string("x_se");
                          },
                          "36364");
}

// Two threads sort the models and their names' hashes in halves and merge
// them: the ranks, ties in file order and the repeated names are those one
// thread finds, on a set large enough to split.
TEST(SharedReading, TwoThreadsRankAsOne) {
  // Values repeat every 997 models and names every 50000: ties and repeats
  // fall in both halves.
  const std::string models =
      File("model,AIC", [](int i) { return Row({Name(i % 50000), Num(i * 7919 % 997)}); }, 100000);
  ExpectOneThreadsOutcome(models, [](SelectionRequest&) {}, "the model name 'm1' is given twice (lines 2 and 50002)");
}

TEST(SharedReading, DecimalMarkDecidedLate) {
  // Whole numbers decide nothing; the first decimal comma, deep in the
  // file, decides for the rows after it, and a full stop later is refused.
  const auto file = [](int refusedAt) {
    return File("model;loglik;k", [refusedAt](int i) {
      const std::string loglik = i < 20000 ? Num(-1000 - i % 97) : i == refusedAt ? "-1000.5" : "-1000,25";
      return Row({Name(i), loglik, "3"}, ';');
    });
  };
  ExpectOneThreadsOutcome(file(0), [](SelectionRequest&) {}, "m20000");
  ExpectOneThreadsOutcome(file(30000), [](SelectionRequest&) {},
                          "refused: m.csv:30001: column 'loglik' holds '-1000.5', not a number; the file's decimal "
                          "mark is ',' (line 20001");
}

TEST(SharedReading, TermColumnsFoundNotToBeTermsLate) {
  // x1 turns to text deep in the file (warned of), lab is text from the
  // first row, x2 has gaps: importance and averages as one thread has them.
  // Once x1 is no term, its SE column is not read: a negative SE after the
  // text, in a later run of the same batch, is no fault.
  const std::string wide = File("model,loglik,k,x1,x1_se,lab,x2,x2_se", [](int i) {
    const std::string x1 = i == 30000 ? "oops" : i % 4 == 0 ? "NA" : std::to_string(0.001 * (i % 500));
    const std::string x2 = i % 3 == 0 ? "NA" : std::to_string(0.002 * (i % 300));
    const char* se = i == 31501 ? "-1" : "0.1";
    return Row({Name(i), Num(-1000 - i % 800), "4", x1, se, std::string("site").append(Num(i % 7)), x2, "0.2"});
  });
  for (const Command command : {Command::Importance, Command::AverageAll}) {
    ExpectOneThreadsOutcome(wide, [command](SelectionRequest& r) { r.command = command; },
                            "column 'x1' holds text on line 30001 after numbers");
  }
  // A column that is text in an early batch and again later stops once.
  const std::string early = File("model,loglik,k,x1,x2", [](int i) {
    return Row({Name(i), Num(-1000 - i % 800), "4", i == 9000 || i == 33000 ? "t" : Num(i % 5), Num(i % 3)});
  });
  ExpectOneThreadsOutcome(early, [](SelectionRequest& r) { r.command = Command::Importance; },
                          "column 'x1' holds text on line 9001 after numbers");
}

TEST(SharedReading, CoefficientsReadAheadAsOnOneThread) {
  const std::string models = File("model,loglik,k", [](int i) { return Row({Name(i), Num(-1000 - i % 90), "3"}); });
  // Two rows a model; a name in Windows-1252 deep in the file (a note),
  // and then a row whose estimate is not a number.
  const auto coefficients = [](int badAt) {
    std::string text = "model,term,estimate,std.error\n";
    for (int i = 1; i <= kRecords; ++i) {
      text += Row({Name(i), "(Intercept)", Num(i % 7), "0.5"}) + '\n';
      text += Row({Name(i), i == 20000 ? "caf\xe9" : "x", i == badAt ? "oops" : Num(i % 5), "0.25"}) + '\n';
    }
    return text;
  };
  const auto importance = [](SelectionRequest& r) { r.command = Command::Importance; };
  ExpectOneThreadsOutcome(models, importance, "c.csv is not UTF-8; read as Windows-1252", coefficients(0));
  ExpectOneThreadsOutcome(models, [](SelectionRequest& r) { r.command = Command::AverageAll; },
                          "refused: c.csv:60001: column 'estimate'", coefficients(30000));
}

TEST(SharedReading, FirstFaultToldFirst) {
  const auto models = [](int badAt, const std::string& bad) {
    return File("model,loglik,k,x,x_se", [badAt, bad](int i) {
      return i == badAt ? bad : Row({Name(i), Num(-1000 - i % 50), "3", Num(i % 4), "0.5"});
    });
  };
  const auto table = [](SelectionRequest&) {};
  // A cell that is not a number in the second batch of the first pair, in
  // the last batch, and in the first record read ahead.
  ExpectOneThreadsOutcome(models(12000, "m,abc,3,1,1"), table, "refused: m.csv:12001: column 'loglik' holds 'abc'");
  ExpectOneThreadsOutcome(models(39990, "m,-1,-3,1,1"), table, "refused: m.csv:39991: column 'k' holds '-3'");
  ExpectOneThreadsOutcome(models(2, "m,x,3,1,1"), table, "refused: m.csv:3: column 'loglik' holds 'x'");
  // Two faults in one file: the earlier one, read by whichever thread.
  std::string two = models(30000, "m,-1,3,1,-2");
  two.replace(two.find("\nm17000,"), 8, "\nm17000,,");
  ExpectOneThreadsOutcome(two, table, "m.csv:17001:");
  // A negative SE of a term column, when the terms are read.
  ExpectOneThreadsOutcome(models(30000, "m,-1,3,1,-2"), [](SelectionRequest& r) { r.command = Command::AverageAll; },
                          "refused: m.csv:30001: column 'x_se' holds '-2', not a standard error");
  // Faults of the reading itself, after every record before them.
  ExpectOneThreadsOutcome(models(25000, std::string("m,1,3,\0,1", 9)), table,
                          "refused: m.csv:25001: holds a NUL byte; this is not a text file");
  ExpectOneThreadsOutcome(models(20000, "\"m,1,3,1,1"), table, "m.csv:20001: the quote opened on line 20001 is never");
  // Notes of the reading travel with their records: one found before the
  // first fault is told, one the reading thread found past it is not, as
  // one thread stops reading at the fault. The rows are long enough that
  // both lie past the first read of the file, which the header's thread
  // checks itself.
  const auto noted = [](int badAt, int latin1At, int escapedAt) {
    return File("model,loglik,k,remark", [=](int i) {
      std::string remark = std::string(40, 'r');
      if (i == latin1At) remark = "caf\xE9";
      if (i == escapedAt) remark = "\"say \\\"hi\\\" twice\"";
      return Row({Name(i), i == badAt ? "x" : Num(-1000 - i % 50), "3", remark});
    });
  };
  const auto without = [](const std::string& text, const std::string& note) {
    for (const unsigned threads : {1u, 2u}) {
      EXPECT_EQ(Outcome(text, [](SelectionRequest&) {}, threads).find(note), std::string::npos) << threads;
    }
  };
  ExpectOneThreadsOutcome(noted(39000, 30000, 0), table, "m.csv is not UTF-8; read as Windows-1252");
  ExpectOneThreadsOutcome(noted(20000, 39990, 0), table, "refused: m.csv:20001: column 'loglik' holds 'x'");
  without(noted(20000, 39990, 0), "Windows-1252");
  ExpectOneThreadsOutcome(noted(39000, 0, 30000), table, "m.csv:30001: a quote inside a quoted field is escaped");
  ExpectOneThreadsOutcome(noted(20000, 0, 39990), table, "refused: m.csv:20001: column 'loglik' holds 'x'");
  without(noted(20000, 0, 39990), "escaped by a backslash");
  // More models than a table may hold, counted across the threads' runs.
  ExpectOneThreadsOutcome(models(0, ""), [](SelectionRequest& r) { r.load.maxModels = 20000; },
                          "refused: m.csv:20002: more than 20000 models");
}

}  // namespace
}  // namespace drav::selection
