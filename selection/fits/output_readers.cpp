#include "selection/fits/output_readers.hpp"

#include <stdexcept>

#include "base/errors.hpp"
#include "selection/fits/fit_refusal.hpp"
#include "selection/fits/html_text.hpp"
#include "selection/fits/notebook_text.hpp"
#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {

// Each defined in its reader's own file.
extern const ProgramReader kMplusReader;
extern const ProgramReader kLavaanReader;
extern const ProgramReader kStatsmodelsReader;
extern const ProgramReader kMarkReader;
extern const ProgramReader kStataReader;
extern const ProgramReader kSasReader;
extern const ProgramReader kSpssReader;
extern const ProgramReader kRReader;

std::vector<FitRecord> OutputReader::Read(std::string_view text, const std::string& source,
                                          Diagnostics& diagnostics) const {
  ProgramOutput output(program, source, diagnostics);
  return reading.read(text, output);
}

const std::vector<OutputReader>& OutputReaders() {
  // Most particular first: lavaan's and Mplus's outputs are printed in or
  // beside R sessions and may hold a logLik() line, so R, whose marks are
  // the most general, comes last. MARK, Stata, SAS and SPSS each mark
  // their output with what no other program prints (MARK's "-2logL {",
  // Stata's ll(null) and ll(model) columns, SAS's procedure headings, SPSS's
  // criteria labels); none of them is printed inside an R session, so they
  // follow the three that may be, and precede R.
  static const std::vector<OutputReader> readers = {
      {"Mplus", kMplusReader},
      {"lavaan", kLavaanReader},
      {"statsmodels", kStatsmodelsReader},
      {"MARK", kMarkReader},
      {"Stata", kStataReader},
      {"SAS", kSasReader},
      {"SPSS", kSpssReader},
      {"R", kRReader},
  };
  return readers;
}

const OutputReader& ReaderOf(std::string_view program) {
  for (const OutputReader& reader : OutputReaders()) {
    if (reader.program == program) return reader;
  }
  throw std::out_of_range("no reader of " + std::string(program) + "'s output");
}

std::string KnownPrograms() {
  std::string names;
  for (const OutputReader& reader : OutputReaders()) names.append(names.empty() ? "" : ", ").append(reader.program);
  return names;
}

bool IsProgramsBinaryFile(std::string_view start) {
  for (const OutputReader& reader : OutputReaders()) {
    if (reader.reading.ownsBinary && reader.reading.ownsBinary(start)) return true;
  }
  return false;
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
  } else if (LooksLikeHtml(text)) {
    // Line for line the page's own, so its lines are the file's.
    printed = HtmlText(text);
    text = printed;
  }
  for (const OutputReader& reader : OutputReaders()) {
    if (!reader.LooksLike(text)) continue;
    std::vector<FitRecord> records = reader.Read(text, where, diagnostics);
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
