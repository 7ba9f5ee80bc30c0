#include "selection/fits/output_readers.hpp"

#include "base/errors.hpp"
#include "selection/fits/fit_refusal.hpp"
#include "selection/fits/lavaan_output.hpp"
#include "selection/fits/mark_output.hpp"
#include "selection/fits/mplus_output.hpp"
#include "selection/fits/notebook_text.hpp"
#include "selection/fits/printed_text.hpp"
#include "selection/fits/r_output.hpp"
#include "selection/fits/sas_output.hpp"
#include "selection/fits/spss_output.hpp"
#include "selection/fits/stata_output.hpp"
#include "selection/fits/statsmodels_output.hpp"

namespace drav::selection::fits {

const std::vector<OutputReader>& OutputReaders() {
  // Most particular first: lavaan's and Mplus's outputs are printed in or
  // beside R sessions and may hold a logLik() line, so R, whose marks are
  // the most general, comes last. MARK, Stata, SAS and SPSS each mark
  // their output with what no other program prints (MARK's "-2logL {",
  // Stata's ll(null) and ll(model) columns, SAS's procedure headings, SPSS's
  // criteria labels); none of them is printed inside an R session, so they
  // follow the three that may be, and precede R.
  static const std::vector<OutputReader> readers = {
      {"Mplus", LooksLikeMplusOutput, ReadMplusOutput},
      {"lavaan", LooksLikeLavaanOutput, ReadLavaanOutput},
      {"statsmodels", LooksLikeStatsmodelsOutput, ReadStatsmodelsOutput},
      {"MARK", LooksLikeMarkOutput, ReadMarkOutput},
      {"Stata", LooksLikeStataOutput, ReadStataOutput},
      {"SAS", LooksLikeSasOutput, ReadSasOutput},
      {"SPSS", LooksLikeSpssOutput, ReadSpssOutput},
      {"R", LooksLikeROutput, ReadROutput},
  };
  return readers;
}

std::string KnownPrograms() {
  std::string names;
  for (const OutputReader& reader : OutputReaders()) names.append(names.empty() ? "" : ", ").append(reader.program);
  return names;
}

std::vector<FitRecord> ReadProgramOutput(std::string_view text, const std::string& source, Diagnostics& diagnostics) {
  // A notebook's lines are those of the text its cells printed, which
  // messages say by naming it so.
  std::string printed;
  std::string where = source;
  if (LooksLikeNotebook(text)) {
    printed = NotebookOutputText(text, source);
    text = printed;
    where += " (cell outputs)";
  }
  for (const OutputReader& reader : OutputReaders()) {
    if (!reader.looksLike(text)) continue;
    std::vector<FitRecord> records = reader.read(text, where, diagnostics);
    for (FitRecord& r : records) {
      if (r.model == FileStem(where)) r.model = FileStem(source);
      r.source = source;
    }
    return records;
  }
  Refuse(source, 0,
         "not the printed output of a program Drav reads (" + KnownPrograms() +
             "); drav-report fits --help shows what each must print");
}

}  // namespace drav::selection::fits
