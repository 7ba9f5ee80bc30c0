#pragma once
// The pieces of R output that carry a fitted model's likelihood, each read
// from its own stretch of a transcript: summary() of a glm, summary() or
// print() of an lme4 fit, and anova() of several fits. Used by the R reader
// only; each takes the lines [begin, end) of one piece.
#include <optional>
#include <string>
#include <vector>

#include "selection/fits/fit_record.hpp"
#include "selection/fits/program_output.hpp"
#include "selection/fits/r_transcript.hpp"

namespace drav::selection::fits {

using Transcript = std::vector<TranscriptLine>;

// Whether a line of a coefficient table is a row: a name and at least one
// number (or NA) after it. The rows end at a blank line, at the rule and the
// significance codes under the table, and where R wraps a table of wide
// names: the block that goes on to its other columns starts with a line of
// headings only, then names the same coefficients again.
inline bool IsTableRow(const std::vector<std::string_view>& words) {
  // " [ reached getOption("max.print") -- omitted 3 rows ]" ends a table
  // R cut short.
  if (words.empty() || words[0] == "---" || words[0] == "Signif." || words[0] == "[") return false;
  for (std::size_t w = 1; w < words.size(); ++w) {
    if (words[w] == "NA" || ReadPrinted(words[w])) return true;
  }
  return false;
}

// The rows of a coefficient table, as importance and averages read them.
struct CoefficientRows {
  std::vector<PrintedTerm> terms;
  bool cutOff = false;   // R said it printed only part of them (max.print)
  std::size_t next = 0;  // the line after the last row
};
// summary()'s table under its line of headings at `heading` ("Estimate
// Std. Error ...", nlme's "Value Std.Error ..."), its rows ending as
// IsTableRow says.
CoefficientRows ReadCoefficientTable(const Transcript& lines, std::size_t heading, std::size_t end);
// print()'s names across from `at`: a line of names over a line of values,
// in turn; no SEs.
CoefficientRows ReadCoefficientsAcross(const Transcript& lines, std::size_t at, std::size_t end);
// Where `rows` go in the record.
void TakeTerms(CoefficientRows&& rows, FitRecord& record);

// summary(glm): K and n from the coefficients and the residual degrees of
// freedom, the log-likelihood from the AIC line. Nothing where the piece
// holds no AIC line.
std::optional<FitRecord> ReadGlmSummary(const Transcript& lines, std::size_t begin, std::size_t end,
                                        ProgramOutput& output);

// summary() of lm: logLik from the residual standard error, K and n from
// the coefficients and the residual df. Nothing, with `why`, where the
// piece is print() of lm or a weighted fit's summary.
std::optional<FitRecord> ReadLmSummary(const Transcript& lines, std::size_t begin, std::size_t end,
                                       ProgramOutput& output, std::string& why);

// summary() or print() of lmer/glmer: the AIC table (or the REML criterion),
// n from "Number of obs", K from df.resid or, for REML, counted from the
// random and fixed effects.
std::optional<FitRecord> ReadMixedSummary(const Transcript& lines, std::size_t begin, std::size_t end,
                                          ProgramOutput& output);

// The call a piece starts with ("Call:" and the call beside or under it,
// joined onto one line), and its formula; empty where it has none.
std::string PrintedCall(const Transcript& lines, std::size_t begin, std::size_t end);
std::string CallFormula(const Transcript& lines, std::size_t begin, std::size_t end);

// The pieces of r_other_fits.cpp: AIC() tables, nlme's lme and gls,
// ordinal's clm and clmm, each from its heading; and, from its call, any
// fit whose summary ends "Log-likelihood: X on K Df", and survreg, polr and
// mle2.
bool IsAicTableHeading(std::string_view line);
bool IsNlmeHeading(std::string_view line);
bool IsClmHeading(std::string_view line);
std::vector<FitRecord> ReadAicTable(const Transcript& lines, std::size_t begin, std::size_t end,
                                    ProgramOutput& output);
std::optional<FitRecord> ReadNlmeFit(const Transcript& lines, std::size_t begin, std::size_t end,
                                     ProgramOutput& output);
std::optional<FitRecord> ReadClmFit(const Transcript& lines, std::size_t begin, std::size_t end,
                                    ProgramOutput& output);
std::optional<FitRecord> ReadCallFit(const Transcript& lines, std::size_t begin, std::size_t end,
                                     ProgramOutput& output);

// broom's glance() printed as a tibble or a data frame, from its line of
// names: K = AIC/2 + logLik where the printed digits fix one whole number,
// n = nobs. Nothing, with `why` (how to print it in full), where they do
// not or a column it needs is left out.
bool IsGlanceHeading(const Transcript& lines, std::size_t at);
std::optional<FitRecord> ReadGlance(const Transcript& lines, std::size_t begin, std::size_t end,
                                    ProgramOutput& output, std::string& why);

// anova(m1, m2, ...): one record per row, named by its formula from the
// "Models:" list; n is not printed.
std::vector<FitRecord> ReadAnovaTable(const Transcript& lines, std::size_t begin, std::size_t end,
                                      ProgramOutput& output);

}  // namespace drav::selection::fits
