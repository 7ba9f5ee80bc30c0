// drav-report: one analysis run from the command line, for scripts and batch
// work. COUNT stands for the text typed into the count field and FILE for
// the file chosen in the dialog; the report goes to standard output.
#include <clocale>
#include <iostream>
#include <string_view>

#include "analysis/analysis_run.hpp"
#include "analysis/runtime_exception.hpp"
#include "analysis/text.hpp"
#include "tools/console_host.hpp"
#include "tools/selection_command.hpp"
#include "tools/selection_options.hpp"

namespace {

// Exit statuses.
constexpr int kReportWritten = 0;
constexpr int kFileUnreadable = 1;
constexpr int kBadUsage = 2;  // also a bad count
constexpr int kNoLowestAIC = 3;

constexpr std::string_view kHelp = R"(Usage: drav-report COUNT FILE
       drav-report --help | --version

Reads the first COUNT lines of FILE, one model per line, and prints each
model's AIC, its difference from the lowest AIC (Drav), its Akaike weight
and its evidence ratio (ER) against the best model, in the order of the file.

COUNT  the number of models in the set, 2 to 99.
FILE   a text file (UTF-8, or UTF-16 with a byte-order mark). Each line holds
       a model name and its AIC value, separated by a tab or a comma; the
       name is cut to 8 characters and anything behind the value is ignored.
       A line that holds no number counts as a model with AIC 0.0, and so
       does a missing line when the file is shorter than COUNT.

Example file for 5 models (the gap is one tab):
  A1	204
  A2	202
  B1	206
  B2	206
  C1	214

  drav-report 5 models.txt

Exit status: 0 report written; 1 FILE cannot be opened or read;
2 bad COUNT or bad usage; 3 no lowest AIC in the data.
)";

int Usage() {
  std::cerr << "Usage: drav-report COUNT FILE (drav-report --help for more)\n";
  return kBadUsage;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc >= 2 && (std::string_view(argv[1]) == "table" || std::string_view(argv[1]) == "average")) {
    return drav::cli::RunSelectionCommand(argc - 1, argv + 1);
  }
  std::setlocale(LC_ALL, "");
  if (argc == 2 && std::string_view(argv[1]) == "--help") {
    std::cout << kHelp << drav::cli::SelectionSummary();
    return kReportWritten;
  }
  if (argc == 2 && std::string_view(argv[1]) == "--version") {
    std::cout << "drav-report 2.1\n";
    return kReportWritten;
  }
  if (argc != 3) return Usage();

  drav::cli::ConsoleWindow window(argv[1]);
  drav::cli::StreamAlert alert(std::cerr);
  drav::cli::NamedFileDialog dialog(argv[2]);
  const drav::cli::LocaleDateText dates;
  try {
    switch (drav::RunAnalysis({window, alert, dialog, dates})) {
      case drav::RunOutcome::CountMissing:
      case drav::RunOutcome::CountInvalid:
        return kBadUsage;
      case drav::RunOutcome::NoFile:
        std::cerr << "drav-report: " << argv[2] << ": No such file or directory\n";
        return kFileUnreadable;
      case drav::RunOutcome::NoLowestAIC:
        return kNoLowestAIC;
      case drav::RunOutcome::Reported:
        break;
    }
  } catch (const drav::IOException& error) {
    std::cerr << "drav-report: " << error.Path() << ": " << error.Reason() << '\n';
    return kFileUnreadable;
  }
  // The report area ends its lines with the platform's report line end; a
  // terminal wants "\n".
  std::cout << drav::ReplaceAll(drav::ReplaceAll(window.ResultsText(), "\r\n", "\n"), "\r", "\n");
  return std::cout.flush() ? kReportWritten : kFileUnreadable;
}
