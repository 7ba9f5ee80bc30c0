#include "tools/fits_command.hpp"
#include "tools/exit_status.hpp"
#include "selection/fits/output_readers.hpp"

namespace drav::cli {

std::string FitsHelp() {
  return R"(Usage: drav-report fits [OPTIONS] FILE...
       drav-report table --fits [OPTIONS] FILE...

fits reads the printed outputs of statistics programs, one file or more,
each with one fitted model or several, and lists every model found: its
name, source file and line, program, log-likelihood, K, n, the AIC and BIC
as printed, the kind of likelihood and what is amiss. table --fits ranks
the same models as drav-report table ranks a table's.

Known programs: )" + selection::fits::KnownPrograms() + R"(.
)" + ExitStatusHelp();
}

}  // namespace drav::cli
