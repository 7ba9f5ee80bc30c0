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

#include "base/diagnostics.hpp"
#include "base/errors.hpp"
#include "selection/input/delimited_reader.hpp"
#include "selection/selection_run.hpp"
#include "tools/exit_status.hpp"
#include "tools/fits_command.hpp"
#include "tools/selection_options.hpp"
#include "tools/table_output.hpp"
#include "tools/trouble.hpp"

namespace drav::cli {
namespace {

namespace sel = drav::selection;

constexpr int kDone = Code(ExitStatus::Done);

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
  sel::SelectionRequest request{CommandOf(options), options.load,    options.level,
                                options.fileOrder,   options.subset, options.threads};
  if (options.fits) {
    const sel::Selection selection(FitsRequestOf(options), request, diagnostics);
    ReportUnshown(diagnostics);
    WriteTable(selection.Layout(), options.format, options.digits, options.threads);
    return kDone;
  }
  Input input(options.file);
  sel::DelimitedReader reader(input.File(), input.Name(), diagnostics, {}, options.encoding);
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
    request.load.inputBytes = static_cast<std::uint64_t>(status.st_size);
    request.load.readAhead = options.threads >= 2;
  }
  const bool longTerms = (options.importance || options.allTerms) && !options.coefficients.empty();
  std::optional<Input> coefficientsFile;
  std::optional<sel::DelimitedReader> coefficients;
  if (longTerms) {
    coefficientsFile.emplace(options.coefficients);
    coefficients.emplace(coefficientsFile->File(), coefficientsFile->Name(), diagnostics, sel::ReadLimits{},
                         options.encoding);
    struct stat coefficientsStatus {};
    request.coefficientsAhead = options.threads >= 2 && fstat(fileno(coefficientsFile->File()), &coefficientsStatus) == 0 &&
                                S_ISREG(coefficientsStatus.st_mode);
  }
  const sel::Selection selection(reader, coefficients ? &*coefficients : nullptr, request, diagnostics);
  ReportUnshown(diagnostics);
  WriteTable(selection.Layout(), options.format, options.digits, options.threads);
  return kDone;
}

}  // namespace

int RunSelectionCommand(int argc, char** argv) {
  return RunReporting(argv[0], [argc, argv](std::optional<sel::Diagnostics>& diagnostics) {
    SelectionOptions options = ParseSelectionOptions(argc, argv);
    if (options.help) {
      WriteOut(SelectionHelp());
      FinishOutput();
      return kDone;
    }
    diagnostics.emplace(options.strict);
    options.threads = UsableCores();
    return Run(options, *diagnostics);
  });
}

}  // namespace drav::cli
