#include "tools/fits_command.hpp"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "selection/delimited_writer.hpp"
#include "selection/errors.hpp"
#include "selection/fits/fit_candidates.hpp"
#include "selection/fits/fits_layout.hpp"
#include "selection/json_writer.hpp"
#include "selection/latex_writer.hpp"
#include "selection/markdown_writer.hpp"
#include "selection/number_text.hpp"
#include "selection/output_buffer.hpp"
#include "selection/text_writer.hpp"
#include "tools/exit_status.hpp"
#include "tools/fit_inputs.hpp"

namespace drav::cli {
namespace {

namespace sel = drav::selection;
namespace fits = drav::selection::fits;

struct FitsOptions {
  std::vector<std::string> files;
  std::string modelNames;
  std::string n;  // --n N for outputs that print none
  bool verbose = false;
  bool strict = false;
  bool help = false;
  OutputFormat format = OutputFormat::Text;
  std::optional<int> digits;
};

FitsOptions Parse(int argc, char** argv) {
  FitsOptions options;
  bool optionsEnded = false;
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    if (optionsEnded || arg == "-" || !arg.starts_with("--")) {
      options.files.emplace_back(arg);
      continue;
    }
    if (arg == "--") {
      optionsEnded = true;
    } else if (arg == "--help") {
      options.help = true;
      return options;
    } else if (arg == "--verbose") {
      options.verbose = true;
    } else if (arg == "--strict") {
      options.strict = true;
    } else {
      std::string_view name = arg;
      std::string_view value;
      if (const auto equals = arg.find('='); equals != std::string_view::npos) {
        name = arg.substr(0, equals);
        value = arg.substr(equals + 1);
      } else if (i + 1 < argc) {
        value = argv[++i];
      }
      if (value.empty()) throw sel::UsageError(std::string(name) + " needs a value");
      if (name == "--model-names") {
        options.modelNames = value;
      } else if (name == "--n") {
        options.n = value;
      } else if (name == "--format" || name == "--digits") {
        // The table's own parser knows these values and their messages.
        std::string nameText(name), valueText(value), command("table"), file("-");
        char* args[] = {command.data(), nameText.data(), valueText.data(), file.data()};
        const SelectionOptions parsed = ParseSelectionOptions(4, args);
        if (parsed.format == OutputFormat::Svg) throw sel::UsageError("--format svg draws a ranking; fits lists");
        if (name == "--format") options.format = parsed.format;
        else options.digits = parsed.digits;
      } else {
        throw sel::UsageError("unknown option " + std::string(name) + " for fits");
      }
    }
  }
  if (options.files.empty()) throw sel::UsageError("no FILE given (- reads standard input)");
  return options;
}

void WriteOut(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) throw IOException("standard output", errno);
}

void Write(const sel::OutputTable& layout, const FitsOptions& options) {
  sel::OutputBuffer out(WriteOut);
  switch (options.format) {
    case OutputFormat::Text: sel::WriteText(layout, options.digits, out); break;
    case OutputFormat::Csv: sel::WriteDelimited(layout, ',', out); break;
    case OutputFormat::Tsv: sel::WriteDelimited(layout, '\t', out); break;
    case OutputFormat::Markdown: sel::WriteMarkdown(layout, options.digits, out); break;
    case OutputFormat::Latex: sel::WriteLatex(layout, options.digits, out); break;
    case OutputFormat::Json: sel::WriteJson(layout, out); break;
    case OutputFormat::Svg: break;
  }
}

int Fail(ExitStatus status, const std::string& message) {
  std::fprintf(stderr, "drav-report: %s\n", message.c_str());
  return Code(status);
}

}  // namespace

sel::CandidateTable LoadFitCandidates(const SelectionOptions& options) {
  sel::Diagnostics diagnostics(options.strict);
  // Said as they stand when a refusal cuts the run short, too.
  struct Say {
    sel::Diagnostics& d;
    ~Say() { PrintDiagnostics(d); }
  } say{diagnostics};
  std::vector<fits::FitRecord> records = ReadFitFiles(options.fitFiles, options.modelNames, diagnostics);
  sel::CandidateTable table = fits::CandidatesFromFits(records, options.load, diagnostics);
  if (options.verbose) {
    for (const fits::FitRecord& r : records) {
      if (!r.derivation.empty()) diagnostics.Note("'" + r.model + "': " + r.derivation, r.source, r.line);
    }
  }
  return table;
}

int RunFitsCommand(int argc, char** argv) {
  try {
    const FitsOptions options = Parse(argc, argv);
    if (options.help) {
      WriteOut(FitsHelp());
      return std::fflush(stdout) == 0 ? Code(ExitStatus::Done) : Fail(ExitStatus::Unwritable, "cannot write the output");
    }
    sel::Diagnostics diagnostics(options.strict);
    std::vector<fits::FitRecord> records;
    try {
      records = ReadFitFiles(options.files, options.modelNames, diagnostics);
    } catch (...) {
      PrintDiagnostics(diagnostics);
      throw;
    }
    PrintDiagnostics(diagnostics);
    if (!options.n.empty()) {
      const auto n = sel::ParseNumber(options.n, false);
      if (!n || *n <= 0) throw sel::UsageError("--n is the number of observations, not '" + options.n + "'");
      for (fits::FitRecord& r : records) {
        if (std::isnan(r.n)) r.n = *n;
      }
    }
    Write(fits::FitsLayout(records, options.verbose), options);
    if (std::fflush(stdout) != 0) throw IOException("standard output", errno);
    return Code(ExitStatus::Done);
  } catch (const sel::UsageError& error) {
    Fail(ExitStatus::BadUsage, error.what());
    std::fprintf(stderr, "Usage: drav-report fits [OPTIONS] FILE... (drav-report fits --help for more)\n");
    return Code(ExitStatus::BadUsage);
  } catch (const IOException& error) {
    const bool output = error.Path() == "standard output";
    return Fail(output ? ExitStatus::Unwritable : ExitStatus::Unreadable,
                (output ? "cannot write the output: " : error.Path() + ": ") + error.Reason());
  } catch (const sel::DataError& error) {
    return Fail(ExitStatus::BadData, error.what());
  } catch (const std::bad_alloc&) {
    return Fail(ExitStatus::OutOfMemory, "out of memory: the input is too large for this machine's memory");
  }
}

}  // namespace drav::cli
