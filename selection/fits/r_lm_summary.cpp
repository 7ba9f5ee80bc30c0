// summary() of lm as R prints it. It prints no log-likelihood, but the
// residual standard error and its degrees of freedom, from which the
// normal likelihood R's logLik() computes follows:
//   p      = coefficient rows that are not NA (aliased ones are)
//   n      = residual df + p
//   RSS    = sigma^2 x residual df
//   logLik = -n/2 (log(2 pi RSS / n) + 1)
//   K      = p + 1 for the residual variance
// sigma comes to four significant digits, so the log-likelihood is known
// to n x (half a unit of sigma) / sigma, which the record carries and a
// ranking that hinges on less is told. A weighted fit's likelihood holds
// the weights, which no summary prints, and print() prints no sigma: both
// are left out, saying what to print instead.
#include <cmath>
#include <numbers>

#include "selection/fits/r_blocks.hpp"

namespace drav::selection::fits {
namespace {

struct LmSummary {
  std::optional<Printed> sigma;
  double residualDf = 0;
  double rows = 0;
  double aliased = 0;
  bool table = false;     // summary()'s table of coefficients, not print()'s names across
  bool weighted = false;
};

LmSummary ReadLines(const Transcript& lines, std::size_t begin, std::size_t end) {
  LmSummary s;
  for (std::size_t i = begin + 1; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    if (line.starts_with("Weighted Residuals:")) s.weighted = true;
    if (line.starts_with("Coefficients:") && i + 1 < end && lines[i + 1].text.find("Estimate") != std::string_view::npos) {
      s.table = true;
      for (i += 2; i < end && !lines[i].command; ++i) {
        const auto words = Words(lines[i].text);
        if (!IsTableRow(words)) break;
        ++s.rows;
        if (words[1] == "NA") ++s.aliased;
      }
    } else if (line.starts_with("Residual standard error:")) {
      // "Residual standard error: 3.046 on 30 degrees of freedom"
      const auto words = Words(line);
      if (words.size() >= 6 && words[4] == "on") {
        s.sigma = ReadPrinted(words[3]);
        if (const auto df = ReadPrinted(words[5])) s.residualDf = df->value;
      }
    }
  }
  return s;
}

}  // namespace

std::optional<FitRecord> ReadLmSummary(const Transcript& lines, std::size_t begin, std::size_t end,
                                       ProgramOutput& output, std::string& why) {
  const LmSummary s = ReadLines(lines, begin, end);
  if (!s.table && !s.sigma) {
    why = "print() of lm prints no log-likelihood; print summary(fit) or logLik(fit)";
    return std::nullopt;
  }
  if (s.weighted) {
    why = "summary() of a weighted lm: its log-likelihood holds the weights, which it does not print; print "
          "logLik(fit) beside it";
    return std::nullopt;
  }
  const double p = s.rows - s.aliased;
  if (!s.sigma || s.sigma->value <= 0 || s.residualDf <= 0 || p <= 0) {
    why = "summary() of lm without its coefficients, or a residual standard error on its degrees of freedom: no "
          "log-likelihood follows";
    return std::nullopt;
  }
  FitRecord r = output.Model(lines[begin].number);
  r.model = CallFormula(lines, begin, end);
  const double sigma = s.sigma->value;
  r.n = s.residualDf + p;
  r.k = p + 1;
  const double rss = sigma * sigma * s.residualDf;
  r.logLik = -r.n / 2 * (std::log(2 * std::numbers::pi * rss / r.n) + 1);
  r.logLikHalfUnit = r.n * s.sigma->halfUnit / sigma;
  r.derivation = "n = residual df " + Shown(s.residualDf) + " + " + Shown(p) + " coefficients";
  if (s.aliased > 0) r.derivation += " (" + Shown(s.aliased) + " aliased, not counted)";
  r.derivation += "; K = " + Shown(p) + " coefficients + 1 for the residual variance; logLik = -n/2 (log(2 pi RSS/n) "
                  "+ 1), RSS = " + Shown(sigma) + "^2 x " + Shown(s.residualDf) + " from the residual standard error";
  return r;
}

}  // namespace drav::selection::fits
