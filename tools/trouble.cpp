#include "tools/trouble.hpp"

#include <cerrno>
#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include "base/errors.hpp"
#include "tools/exit_status.hpp"
#include "tools/table_output.hpp"

namespace drav::cli {

namespace sel = drav::selection;

void ReportUnshown(sel::Diagnostics& diagnostics) {
  for (const sel::Diagnostic& d : diagnostics.TakeUnshown()) {
    // An error that did not end the run (a file of several that could not
    // be read) is said as a refusal is.
    const char* kind = d.severity == sel::Severity::Note    ? "note: "
                       : d.severity == sel::Severity::Warning ? "warning: "
                                                              : "";
    std::fprintf(stderr, "drav-report: %s%s\n", kind, sel::Describe(d).c_str());
  }
}

int RunReporting(std::string_view command,
                 const std::function<int(std::optional<sel::Diagnostics>& diagnostics)>& body) {
  std::optional<sel::Diagnostics> diagnostics;
  const auto fail = [&diagnostics](ExitStatus status, const std::string& message) {
    if (diagnostics) ReportUnshown(*diagnostics);
    std::fprintf(stderr, "drav-report: %s\n", message.c_str());
    return Code(status);
  };
  try {
    return body(diagnostics);
  } catch (const sel::UsageError& error) {
    fail(ExitStatus::BadUsage, error.what());
    const std::string form(command);
    std::fprintf(stderr, "Usage: drav-report %s [OPTIONS] FILE%s (drav-report %s --help for more)\n", form.c_str(),
                 command == "fits" ? "..." : "|-", form.c_str());
    return Code(ExitStatus::BadUsage);
  } catch (const WriteFailure& failure) {
    return fail(ExitStatus::Unwritable, "cannot write the " + failure.Written() + ": " + failure.Reason());
  } catch (const IOException& error) {
    // A stream stops an input past its limit with EFBIG: it was read, and
    // is too long to be what it should be, which is the data's fault.
    return fail(error.ErrorNumber() == EFBIG ? ExitStatus::BadData : ExitStatus::Unreadable,
                error.Path() + ": " + error.Reason());
  } catch (const sel::DataError& error) {
    return fail(ExitStatus::BadData, error.what());
  } catch (const std::bad_alloc&) {
    return fail(ExitStatus::OutOfMemory, "out of memory: the input is too large for this machine's memory");
  } catch (const std::exception& fault) {
    // Whatever no refusal above names is a fault of the program: it still
    // ends with what was found said and a status of its own, not an abort.
    return fail(ExitStatus::Internal, std::string("a fault of drav-report itself: ") + fault.what());
  } catch (...) {
    return fail(ExitStatus::Internal, "a fault of drav-report itself");
  }
}

}  // namespace drav::cli
