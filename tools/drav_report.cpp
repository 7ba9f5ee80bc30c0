// drav-report: one analysis run from the command line, for scripts and batch
// work. COUNT stands for the text typed into the count field and FILE for
// the file chosen in the dialog; the report goes to standard output.
#include <sys/stat.h>

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/analysis_run.hpp"
#include "analysis/locale_date_text.hpp"
#include "analysis/val.hpp"
#include "base/runtime_exception.hpp"
#include "base/text.hpp"
#include "tools/classic_hint.hpp"
#include "tools/console_host.hpp"
#include "tools/exit_status.hpp"
#include "tools/fits_command.hpp"
#include "tools/option_table.hpp"
#include "tools/selection_command.hpp"
#include "tools/selection_options.hpp"
#include "tools/table_output.hpp"
#include "tools/trouble.hpp"

namespace {

using drav::cli::Code;
using drav::cli::ExitStatus;

constexpr std::string_view kHelp = R"(Usage: drav-report COUNT FILE
       drav-report --help | --version

Reads the first COUNT lines of FILE, one model per line, and prints each
model's AIC, its difference from the lowest AIC (Drav), its Akaike weight
and its evidence ratio (ER) against the best model, in the order of the file.

COUNT  the number of models in the set, 2 to 99.
FILE   a text file (UTF-8, or UTF-16 with a byte-order mark), or - for
       standard input; pipes work as for any filter. Each line holds
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

Reading stops with a message after 1 GiB: no file of models is that long.

A table with a header line, such as R's write.csv writes, is read all the
same (the header stands as a model with AIC 0.0), and a hint on standard
error points to drav-report table.

)";

int Usage(std::string_view problem) {
  std::cerr << "drav-report: " << problem << "\nUsage: drav-report COUNT FILE (drav-report --help for more)\n";
  return Code(ExitStatus::BadUsage);
}

// All of `text` on standard output, or a WriteFailure that a full disk or a
// closed pipe is told by.
int Written(std::string_view text) {
  drav::cli::WriteOut(text, "report");
  drav::cli::FinishOutput("report");
  return Code(ExitStatus::Done);
}

// The system's reason why `path` cannot be read, for a path that the run
// found missing: a dangling link, a loop of links or a folder without
// search rights all look missing, but each has its own cause.
std::string WhyMissing(const char* path) {
  struct stat info {};
  return ::stat(path, &info) == 0 ? std::strerror(ENOENT) : std::strerror(errno);
}

// The classic report of COUNT models in FILE; throws as the analysis does.
int RunClassic(std::string_view count, std::string_view operand) {
  // "-" is standard input, which /dev/stdin names on every system this runs on.
  const std::string file = operand == "-" ? "/dev/stdin" : std::string(operand);
  drav::cli::ConsoleWindow window{std::string(count)};
  drav::cli::StreamAlert alert(std::cerr);
  drav::cli::NamedFileDialog dialog(file);
  const drav::LocaleDateText dates;
  try {
    switch (drav::RunAnalysis({window, alert, dialog, dates})) {
      case drav::RunOutcome::CountMissing:
      case drav::RunOutcome::CountInvalid:
        return Code(ExitStatus::BadUsage);
      case drav::RunOutcome::NoFile:
        std::cerr << "drav-report: " << operand << ": " << WhyMissing(file.c_str()) << '\n';
        return Code(ExitStatus::Unreadable);
      case drav::RunOutcome::NoLowestAIC:
        return Code(ExitStatus::NoLowestAic);
      case drav::RunOutcome::Reported:
        break;
    }
  } catch (const drav::IOException& error) {
    if (operand != "-") throw;
    throw drav::IOException("standard input", error.ErrorNumber(), error.Reason());
  }
  // The report area ends its lines with the platform's report line end; a
  // terminal wants "\n".
  Written(drav::ReplaceAll(drav::ReplaceAll(window.ResultsText(), "\r\n", "\n"), "\r", "\n"));
  if (const auto line = drav::cli::FirstLineWithoutNumber(file, static_cast<std::int64_t>(drav::Val(count)))) {
    std::cerr << "drav-report: hint: line " << *line << " holds no AIC value, so it stands as a model with AIC 0.0;"
              << " drav-report table FILE reads a table with a header line\n";
  }
  return Code(ExitStatus::Done);
}

}  // namespace

int main(int argc, char** argv) {
  // As for every filter, a reader that goes away (drav-report ... | head)
  // ends the program quietly, even when the shell that started it ignores
  // the signal.
  std::signal(SIGPIPE, SIG_DFL);
  if (argc >= 2 && (std::string_view(argv[1]) == "table" || std::string_view(argv[1]) == "average" ||
                    std::string_view(argv[1]) == "importance")) {
    return drav::cli::RunSelectionCommand(argc - 1, argv + 1);
  }
  if (argc >= 2 && std::string_view(argv[1]) == "fits") return drav::cli::RunFitsCommand(argc - 1, argv + 1);
  std::setlocale(LC_ALL, "");
  return drav::cli::RunReporting("", [argc, argv](std::optional<drav::selection::Diagnostics>&) {
    // Options may stand anywhere before "--"; "-" alone is standard input and
    // "-5" a (bad) count, so only a double dash starts an option.
    std::vector<std::string_view> operands;
    bool optionsEnd = false;
    for (int i = 1; i < argc; ++i) {
      const std::string_view arg = argv[i];
      if (optionsEnd || arg.substr(0, 2) != "--") {
        operands.push_back(arg);
      } else if (arg == "--") {
        optionsEnd = true;
      } else if (arg == "--help") {
        return Written(std::string(kHelp).append(drav::cli::SelectionSummary()).append("\n").append(
            drav::cli::ExitStatusHelp()));
      } else if (arg == "--bash-completion") {
        // Written into the package at build time, from the table of options.
        return Written(drav::cli::BashCompletion());
      } else if (arg == "--version") {
        return Written("drav-report 2.1\n");
      } else {
        return Usage("unknown option " + std::string(arg));
      }
    }
    if (operands.size() != 2) return Usage(operands.size() < 2 ? "COUNT and FILE are needed" : "too many operands");
    return RunClassic(operands[0], operands[1]);
  });
}
