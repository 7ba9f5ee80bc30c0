#include "tools/selection_command.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include <thread>

#include <sched.h>
#include <sys/stat.h>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "selection/delimited_reader.hpp"
#include "selection/delimited_writer.hpp"
#include "selection/diagnostics.hpp"
#include "selection/errors.hpp"
#include "selection/json_writer.hpp"
#include "selection/latex_writer.hpp"
#include "selection/markdown_writer.hpp"
#include "selection/output_buffer.hpp"
#include "selection/selection_run.hpp"
#include "selection/svg_chart_writer.hpp"
#include "selection/text_writer.hpp"
#include "tools/exit_status.hpp"
#include "tools/selection_options.hpp"

namespace drav::cli {
namespace {

namespace sel = drav::selection;

constexpr int kDone = Code(ExitStatus::Done);
constexpr int kBadUsage = Code(ExitStatus::BadUsage);

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

// Owns the file it opened; standard input stays open. Throws IOException
// when the file cannot be opened.
class Input {
 public:
  explicit Input(const std::string& path)
      : file_(path == "-" ? stdin : std::fopen(path.c_str(), "rb")), name_(path == "-" ? "standard input" : path) {
    if (!file_) throw IOException(name_, errno);
  }
  ~Input() {
    if (file_ != stdin) std::fclose(file_);
  }
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  std::FILE* File() const { return file_; }
  const std::string& Name() const { return name_; }

 private:
  std::FILE* file_;
  std::string name_;
};

// Notes and warnings on standard error, in the order they were found.
void Tell(const sel::Diagnostics& diagnostics) {
  for (const sel::Diagnostic& d : diagnostics.All()) {
    const char* kind = d.severity == sel::Severity::Note ? "note: " : "warning: ";
    std::fprintf(stderr, "drav-report: %s%s\n", kind, sel::Describe(d).c_str());
  }
}

void Write(const sel::OutputTable& layout, const SelectionOptions& options) {
  sel::OutputBuffer out(WriteOut, options.threads);
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

// Two where this process may run on two cores or more (taskset and a
// container's limits narrow the set), else one: a single core never waits
// for a second thread.
unsigned UsableCores() {
#if defined(__linux__)
  cpu_set_t cores;
  CPU_ZERO(&cores);
  if (sched_getaffinity(0, sizeof cores, &cores) == 0) return CPU_COUNT(&cores) >= 2 ? 2 : 1;
#endif
  return std::thread::hardware_concurrency() >= 2 ? 2 : 1;
}

sel::Command CommandOf(const SelectionOptions& options) {
  if (options.allTerms) return sel::Command::AverageAll;
  if (options.importance) return sel::Command::Importance;
  return options.average ? sel::Command::Average : sel::Command::Table;
}

int Run(const SelectionOptions& options, sel::Diagnostics& diagnostics) {
#if defined(__GLIBC__)
  // A table of a million models grows its arrays by doubling; by default
  // glibc hands every large block back to the system when it is freed and
  // the next one is faulted in page by page again, which took a quarter of
  // the run. Keep freed memory for reuse instead: it is all freed at exit.
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_TOP_PAD, 64 << 20);
#endif
  Input input(options.file);
  sel::DelimitedReader reader(input.File(), input.Name(), diagnostics, {}, options.encoding);
  sel::SelectionRequest request{CommandOf(options), options.load,    options.level,
                                options.fileOrder,   options.subset, options.threads};
  // Room for the models at once rather than by doubling, which copied the
  // whole table each time and, for a stream, held the old copy and the new
  // at once: twice the memory the models need. A row takes at least 3
  // bytes ("m,1" and its line end), and room that goes unused is never
  // touched, so costs no memory; of a stream the size is not known, so the
  // room is for as many models as a table may hold.
  request.load.expectedModels = request.load.maxModels;
  struct stat status {};
  if (fstat(fileno(input.File()), &status) == 0 && S_ISREG(status.st_mode)) {
    request.load.expectedModels =
        std::min(request.load.maxModels, static_cast<std::size_t>(status.st_size) / 3 + 1);
  }
  const bool longTerms = (options.importance || options.allTerms) && !options.coefficients.empty();
  std::optional<Input> coefficientsFile;
  std::optional<sel::DelimitedReader> coefficients;
  if (longTerms) {
    coefficientsFile.emplace(options.coefficients);
    coefficients.emplace(coefficientsFile->File(), coefficientsFile->Name(), diagnostics, sel::ReadLimits{},
                         options.encoding);
  }
  const sel::Selection selection(reader, coefficients ? &*coefficients : nullptr, request, diagnostics);
  Tell(diagnostics);
  Write(selection.Layout(), options);
  return kDone;
}

}  // namespace

int RunSelectionCommand(int argc, char** argv) {
  const std::string command = argv[0];
  std::optional<sel::Diagnostics> diagnostics;
  // What was found before a refusal is said before it.
  const auto fail = [&diagnostics](ExitStatus status, const std::string& message) {
    if (diagnostics) Tell(*diagnostics);
    return Fail(Code(status), message);
  };
  try {
    const SelectionOptions options = ParseSelectionOptions(argc, argv);
    if (options.help) {
      WriteOut(SelectionHelp());
      FinishOutput();
      return kDone;
    }
    diagnostics.emplace(options.strict);
    SelectionOptions run = options;
    run.threads = UsableCores();
    return Run(run, *diagnostics);
  } catch (const sel::UsageError& error) {
    fail(ExitStatus::BadUsage, error.what());
    std::fprintf(stderr, "Usage: drav-report %s [OPTIONS] FILE|- (drav-report %s --help for more)\n",
                 command.c_str(), command.c_str());
    return kBadUsage;
  } catch (const WriteFailure& failure) {
    return fail(ExitStatus::Unwritable, "cannot write the output: " + failure.Reason());
  } catch (const IOException& error) {
    return fail(ExitStatus::Unreadable, error.Path() + ": " + error.Reason());
  } catch (const sel::DataError& error) {
    return fail(ExitStatus::BadData, error.what());
  } catch (const std::bad_alloc&) {
    return fail(ExitStatus::OutOfMemory, "out of memory: the input is too large for this machine's memory");
  }
}

}  // namespace drav::cli
