#include "tools/selection_command.hpp"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

#include <sys/stat.h>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "selection/averaging.hpp"
#include "selection/candidates.hpp"
#include "selection/delimited_reader.hpp"
#include "selection/delimited_writer.hpp"
#include "selection/errors.hpp"
#include "selection/json_writer.hpp"
#include "selection/latex_writer.hpp"
#include "selection/markdown_writer.hpp"
#include "selection/number_text.hpp"
#include "selection/output_buffer.hpp"
#include "selection/ranking.hpp"
#include "selection/table_layout.hpp"
#include "selection/subset.hpp"
#include "selection/svg_chart_writer.hpp"
#include "selection/text_writer.hpp"
#include "selection/wide_coefficients.hpp"
#include "tools/exit_status.hpp"
#include "tools/fits_command.hpp"
#include "tools/selection_options.hpp"
#include "tools/selection_terms.hpp"

namespace drav::cli {
namespace {

namespace sel = drav::selection;

constexpr int kDone = Code(ExitStatus::Done);
constexpr int kFileUnreadable = Code(ExitStatus::Unreadable);
constexpr int kBadUsage = Code(ExitStatus::BadUsage);
constexpr int kBadData = Code(ExitStatus::BadData);

// A write to standard output failed: the output, not the input, is to blame.
class WriteFailure : public IOException {
 public:
  explicit WriteFailure(int errorNumber) : IOException("standard output", errorNumber) {}
};

void WriteOut(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) throw WriteFailure(errno);
}

void FinishOutput() {
  if (std::fflush(stdout) != 0) throw WriteFailure(errno);
}

int Fail(int status, const std::string& message) {
  std::fprintf(stderr, "drav-report: %s\n", message.c_str());
  return status;
}

// Owns the file it opened; standard input stays open.
class Input {
 public:
  explicit Input(const std::string& path)
      : file_(path == "-" ? stdin : std::fopen(path.c_str(), "rb")),
        error_(errno),
        name_(path == "-" ? "standard input" : path) {}
  ~Input() {
    if (file_ && file_ != stdin) std::fclose(file_);
  }
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  std::FILE* File() const { return file_; }
  int Error() const { return error_; }
  const std::string& Name() const { return name_; }

 private:
  std::FILE* file_;
  int error_;
  std::string name_;
};

// Says each warning on standard error; with --strict the first refuses the
// data instead. False when it did.
bool Warn(const std::string& name, const std::vector<std::string>& warnings, bool strict) {
  for (const std::string& warning : warnings) {
    if (strict) {
      Fail(kBadData, name + ": " + warning + " (--strict)");
      return false;
    }
    std::fprintf(stderr, "drav-report: warning: %s: %s\n", name.c_str(), warning.c_str());
  }
  return true;
}

void Write(const sel::OutputTable& layout, const SelectionOptions& options) {
  sel::OutputBuffer out(WriteOut);
  switch (options.format) {
    case OutputFormat::Text: sel::WriteText(layout, options.digits, out); break;
    case OutputFormat::Csv: sel::WriteDelimited(layout, ',', out); break;
    case OutputFormat::Tsv: sel::WriteDelimited(layout, '\t', out); break;
    case OutputFormat::Markdown: sel::WriteMarkdown(layout, options.digits, out); break;
    case OutputFormat::Latex: sel::WriteLatex(layout, options.digits, out); break;
    case OutputFormat::Json: sel::WriteJson(layout, out); break;
    case OutputFormat::Svg: sel::WriteSvg(layout, out); break;
  }
  FinishOutput();
}

sel::CandidateTable LoadTable(const SelectionOptions& options, sel::RowObserver* observer) {
  Input input(options.file);
  if (!input.File()) throw IOException(input.Name(), input.Error());
  sel::DelimitedReader reader(input.File(), input.Name(), {}, options.encoding);
  sel::LoadOptions load = options.load;
  // Room for the models at once rather than by doubling, which copied the
  // whole table each time and, for a stream, held the old copy and the new
  // at once: twice the memory the models need. A row takes at least 3
  // bytes ("m,1" and its line end), and room that goes unused is never
  // touched, so costs no memory; of a stream the size is not known, so the
  // room is for as many models as a table may hold.
  load.expectedModels = load.maxModels;
  struct stat status {};
  if (fstat(fileno(input.File()), &status) == 0 && S_ISREG(status.st_mode)) {
    load.expectedModels = std::min(load.maxModels, static_cast<std::size_t>(status.st_size) / 3 + 1);
  }
  load.observer = observer;
  return sel::LoadCandidates(reader, load);
}

int Run(const SelectionOptions& options) {
#if defined(__GLIBC__)
  // A table of a million models grows its arrays by doubling; by default
  // glibc hands every large block back to the system when it is freed and
  // the next one is faulted in page by page again, which took a quarter of
  // the run. Keep freed memory for reuse instead: it is all freed at exit.
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_TOP_PAD, 64 << 20);
#endif
  // The wide form's terms are read beside the models, from the same rows.
  const bool terms = options.importance || options.allTerms;
  const std::string name = options.fits ? "the outputs" : options.file == "-" ? "standard input" : options.file;
  sel::WideCoefficients wide(name, options.load.byColumn, options.load.modelColumn);
  const sel::CandidateTable table =
      options.fits ? LoadFitCandidates(options) : LoadTable(options, terms && options.coefficients.empty() ? &wide : nullptr);
  for (const std::string& note : table.notes) std::fprintf(stderr, "drav-report: note: %s\n", note.c_str());
  if ((options.average || options.allTerms) && table.chat > 1) {
    std::string factor;
    sel::AppendShortest(factor, std::sqrt(table.chat));
    std::fprintf(stderr,
                 "drav-report: note: the standard errors are multiplied by sqrt(--chat) = %s before averaging, "
                 "as QAIC assumes variances c times an ordinary fit's; give SEs of an ordinary fit, not of a "
                 "quasi-likelihood one\n",
                 factor.c_str());
  }
  const auto warn = [&](const std::vector<std::string>& warnings) {
    return Warn(name, warnings, options.strict) ? kDone : kBadData;
  };
  if (warn(table.warnings) != kDone) return kBadData;
  auto ranked = sel::Rank(table, {options.level, options.fileOrder});
  std::vector<bool> keep;
  std::size_t kept = table.models.size();
  if (options.subset.Any()) {
    std::vector<std::string> notes;
    keep = sel::SubsetMask(table, ranked, options.subset, notes);
    for (const std::string& note : notes) std::fprintf(stderr, "drav-report: note: %s\n", note.c_str());
    ranked = sel::Rank(table, {options.level, options.fileOrder, &keep});
    kept = 0;
    for (const sel::RankedSet& set : ranked) kept += set.models.size();
  }
  const auto write = [&](sel::OutputTable layout) {
    sel::MarkSubset(layout, options.subset, kept, table.models.size());
    Write(layout, options);
    return kDone;
  };
  if (terms) {
    sel::Coefficients coefficients =
        options.coefficients.empty() ? wide.Finish() : ReadCoefficientsFile(options, table);
    std::vector<std::string> warnings = coefficients.warnings;
    if (options.allTerms && !coefficients.terms.empty() && !coefficients.standardErrors) {
      warnings.push_back("no column of standard errors (std.error, se, Std. Error; TERM_se beside a term), so the "
                         "averages have no SE and no interval");
    }
    if (options.allTerms) sel::InflateForOverdispersion(coefficients, table.chat);
    const auto sets = SummariseTerms(options, table, ranked, coefficients, warnings);
    if (warn(warnings) != kDone) return kBadData;
    return options.allTerms ? write(sel::TermAverageLayout(table, coefficients, sets, options.level))
                            : write(sel::ImportanceLayout(table, coefficients, sets));
  }
  if (!options.average) return write(sel::SelectionLayout(table, ranked, options.level));
  std::vector<sel::AveragedEstimate> averages;
  std::vector<std::string> without;
  for (const sel::RankedSet& set : ranked) {
    averages.push_back(sel::Average(table, set, options.level));
    if (averages.back().models == 0) {
      without.push_back("no model of set '" + table.sets[set.set] + "' has an estimate in column '" +
                        options.load.estimateColumn + "'; its row is left empty");
    }
  }
  if (without.size() == averages.size()) {
    return Fail(kBadData, name + ": no model has an estimate in column '" + options.load.estimateColumn + "'");
  }
  if (warn(without) != kDone) return kBadData;
  return write(sel::AverageLayout(table, averages, options.level));
}

}  // namespace

int RunSelectionCommand(int argc, char** argv) {
  const std::string command = argv[0];
  try {
    const SelectionOptions options = ParseSelectionOptions(argc, argv);
    if (options.help) {
      WriteOut(SelectionHelp());
      FinishOutput();
      return kDone;
    }
    return Run(options);
  } catch (const sel::UsageError& error) {
    Fail(kBadUsage, error.what());
    std::fprintf(stderr, "Usage: drav-report %s [OPTIONS] FILE|- (drav-report %s --help for more)\n",
                 command.c_str(), command.c_str());
    return kBadUsage;
  } catch (const WriteFailure& failure) {
    return Fail(Code(ExitStatus::Unwritable), "cannot write the output: " + failure.Reason());
  } catch (const IOException& error) {
    return Fail(kFileUnreadable, error.Path() + ": " + error.Reason());
  } catch (const sel::DataError& error) {
    return Fail(kBadData, error.what());
  } catch (const std::bad_alloc&) {
    return Fail(Code(ExitStatus::OutOfMemory), "out of memory: the input is too large for this machine's memory");
  }
}

}  // namespace drav::cli
