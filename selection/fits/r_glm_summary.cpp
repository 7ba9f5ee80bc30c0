// summary() or print() of a glm as R prints it. R prints no log-likelihood
// there, only the AIC (to five significant digits in a summary, four in a
// print) and the degrees of freedom, so the rest is derived, and the
// derivation kept for --verbose:
//   rank = coefficient rows that are not NA (aliased ones are)
//   n    = residual df + rank
//   K    = rank, + 1 for the dispersion of gaussian, Gamma and
//          inverse.gaussian (their AIC counts it), + 1 for glm.nb's theta
//   logLik = K - AIC / 2, or half of glm.nb's "2 x log-likelihood"
#include <algorithm>
#include <cmath>

#include "selection/fits/r_blocks.hpp"

namespace drav::selection::fits {
namespace {

bool HasDispersionParameter(std::string_view family) {
  return family == "gaussian" || family == "Gamma" || family == "inverse.gaussian";
}

// "glm(formula = y ~ x, family = poisson, data = d)" spread over the lines
// from `begin` until its brackets close, joined by single blanks.
std::string JoinedCall(const Transcript& lines, std::size_t begin, std::size_t end) {
  std::string call;
  int depth = 0;
  for (std::size_t i = begin; i < end && i < begin + 40; ++i) {
    const std::string_view part = Trimmed(lines[i].text);
    if (!call.empty()) call += ' ';
    call.append(part);
    for (char c : part) depth += c == '(' ? 1 : c == ')' ? -1 : 0;
    if (depth <= 0 && !call.empty()) break;
  }
  return call;
}

// The formula of a call: its first argument, without "formula = ".
std::string FormulaOf(const std::string& call) {
  const std::size_t open = call.find('(');
  if (open == std::string::npos) return {};
  int depth = 0;
  std::size_t end = open + 1;
  for (; end < call.size(); ++end) {
    const char c = call[end];
    if (c == '(' || c == '[') ++depth;
    if ((c == ')' || c == ']') && depth-- == 0) break;
    if (c == ',' && depth == 0) break;
  }
  std::string_view first = Trimmed(std::string_view(call).substr(open + 1, end - open - 1));
  if (first.starts_with("formula =")) first = Trimmed(first.substr(9));
  return first.find('~') == std::string_view::npos ? std::string() : std::string(first);
}

// The call printed beside "Call:" (print()) or under it (summary()), the
// piece's first line.
std::string Call(const Transcript& lines, std::size_t begin, std::size_t end) {
  const std::string_view beside = Trimmed(Trimmed(lines[begin].text).substr(5));
  if (!beside.empty()) {
    const std::string joined = JoinedCall(lines, begin, end);  // "Call:  glm(..."
    return std::string(Trimmed(std::string_view(joined).substr(5)));
  }
  std::size_t callAt = begin + 1;
  while (callAt < end && (lines[callAt].command || Trimmed(lines[callAt].text).empty())) ++callAt;
  return JoinedCall(lines, callAt, end);
}

// The family a call names ("family = poisson", "family = Gamma(link =
// "log")"): print() shows no other; glm's default is gaussian.
std::string FamilyOf(const std::string& call) {
  const std::size_t at = call.find("family =");
  if (at == std::string::npos) return call.starts_with("glm(") ? "gaussian" : "";
  std::string family(Trimmed(std::string_view(call).substr(at + 8)));
  family = family.substr(0, family.find_first_of(",)( "));
  if (family.starts_with("stats::")) family = family.substr(7);
  return family;
}

// What a glm's summary prints that K, n and the log-likelihood are made of.
struct GlmSummary {
  std::optional<Printed> aic, residualDf, twiceLogLik;
  std::string family;
  bool aicNA = false;
  bool theta = false;
  std::size_t rows = 0;
  std::size_t aliased = 0;
  std::string deleted;
  CoefficientRows coefficients;
};

// The coefficients after "Coefficients:" at `at`: summary() prints a table
// under a header with "Estimate", print() the names across. Returns the
// line after.
std::size_t ReadCoefficients(const Transcript& lines, std::size_t at, std::size_t end, GlmSummary& summary) {
  const bool table = at + 1 < end && lines[at + 1].text.find("Estimate") != std::string_view::npos;
  summary.coefficients = table ? ReadCoefficientTable(lines, at + 1, end) : ReadCoefficientsAcross(lines, at + 1, end);
  summary.rows = summary.coefficients.terms.size();
  summary.aliased = static_cast<std::size_t>(std::count_if(summary.coefficients.terms.begin(), summary.coefficients.terms.end(),
                                                           [](const PrintedTerm& t) { return std::isnan(t.estimate); }));
  return summary.coefficients.next;
}

GlmSummary ReadSummaryLines(const Transcript& lines, std::size_t begin, std::size_t end) {
  GlmSummary summary;
  for (std::size_t i = begin; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    if (line.starts_with("Coefficients:")) {
      i = ReadCoefficients(lines, i, end, summary);
    } else if (line.starts_with("(Dispersion parameter for ")) {
      const std::string_view rest = line.substr(26);
      summary.family = std::string(rest.substr(0, rest.find(" family")));
    } else if (line.starts_with("Residual deviance:")) {
      const auto words = Words(line);
      const auto on = std::find(words.begin(), words.end(), "on");
      if (on != words.end() && on + 1 != words.end()) summary.residualDf = ReadPrinted(*(on + 1));
    } else if (line.starts_with("Degrees of Freedom:")) {
      // print(): "Degrees of Freedom: 71 Total (i.e. Null);  66 Residual"
      const auto words = Words(line);
      const auto residual = std::find(words.begin(), words.end(), "Residual");
      if (residual != words.begin() && residual != words.end()) summary.residualDf = ReadPrinted(*(residual - 1));
    } else if (line.starts_with("Residual Deviance:") && line.find("AIC:") != std::string_view::npos) {
      const std::string_view aic = Trimmed(line.substr(line.find("AIC:") + 4));
      summary.aicNA = aic == "NA";
      summary.aic = ReadPrinted(aic);
    } else if (line.ends_with("deleted due to missingness)")) {
      summary.deleted = std::string(line.substr(1, line.size() - 2));
    } else if (line.starts_with("AIC:")) {
      summary.aicNA = Trimmed(line.substr(4)) == "NA";
      summary.aic = NumberAfter(line, "AIC:");
    } else if (line.starts_with("Theta:")) {
      summary.theta = true;
    } else if (const auto twice = NumberAfter(line, "2 x log-likelihood:")) {
      summary.twiceLogLik = twice;
    }
  }
  return summary;
}

// n and K from the coefficients that are not aliased, the residual degrees
// of freedom and the family's further parameters.
void CountParameters(const GlmSummary& summary, FitRecord& r) {
  const double rank = static_cast<double>(summary.rows - summary.aliased);
  const bool dispersion = HasDispersionParameter(summary.family);
  r.n = summary.residualDf->value + rank;
  r.k = rank + (dispersion ? 1 : 0) + (summary.theta ? 1 : 0);
  r.derivation = "n = residual df " + Shown(summary.residualDf->value) + " + " + Shown(rank) + " coefficients";
  if (!summary.deleted.empty()) r.derivation += " (" + summary.deleted + ")";
  r.derivation += "; K = " + Shown(rank) + " coefficients";
  if (summary.aliased > 0) r.derivation += " (" + Shown(double(summary.aliased)) + " aliased, not counted)";
  if (dispersion) r.derivation += " + 1 for the " + summary.family + " dispersion";
  if (summary.theta) r.derivation += " + 1 for theta";
}

// The log-likelihood from glm.nb's "2 x log-likelihood", else from the AIC
// and K.
void LogLikelihood(const GlmSummary& summary, FitRecord& r) {
  r.aic = summary.aic->value;
  if (summary.twiceLogLik) {
    r.logLik = summary.twiceLogLik->value / 2;
    r.logLikHalfUnit = summary.twiceLogLik->halfUnit / 2;
    r.derivation += "; logLik = (2 x log-likelihood) / 2";
  } else {
    r.logLik = r.k - summary.aic->value / 2;
    r.logLikHalfUnit = summary.aic->halfUnit / 2;
    r.derivation += "; logLik = K - AIC/2 = " + Shown(r.k) + " - " + Shown(summary.aic->value) + "/2";
  }
}

}  // namespace

std::optional<FitRecord> ReadGlmSummary(const Transcript& lines, std::size_t begin, std::size_t end,
                                        ProgramOutput& output) {
  FitRecord r = output.Model(lines[begin].number);
  const std::string call = Call(lines, begin, end);
  r.model = FormulaOf(call);
  GlmSummary summary = ReadSummaryLines(lines, begin, end);
  // print() names the family only in the call, and prints no theta.
  if (summary.family.empty()) summary.family = FamilyOf(call);
  summary.theta = summary.theta || call.starts_with("glm.nb(");
  if (!summary.aic && !summary.aicNA) return std::nullopt;
  const bool printed = !Trimmed(Trimmed(lines[begin].text).substr(5)).empty();
  const std::string where = (printed ? "print() of glm " : "summary() of glm ") +
                            (r.model.empty() ? std::string() : "'" + r.model + "'") + ": ";
  if (!summary.residualDf || summary.rows == 0) {
    output.Warn(where + "it lacks its coefficients or residual degrees of freedom, so K and n are unknown", r.line);
    return std::nullopt;
  }
  if (summary.coefficients.cutOff) {
    // K and n are counted from the coefficients: a table cut short would
    // give too few of them, and a logLik too low.
    if (summary.aic) r.aic = summary.aic->value;
    output.Flag(r, "R printed its coefficient table only in part (max.print), so K, n and logLik are unknown; "
                   "options(max.print = 99999) prints it whole", r.line, where);
    return r;
  }
  CountParameters(summary, r);
  TakeTerms(std::move(summary.coefficients), r);
  if (summary.aicNA) {
    r.kind = LikelihoodKind::None;
    output.Flag(r, "the " + (summary.family.empty() ? std::string("quasi") : summary.family) +
                       " family has no likelihood (R prints AIC: NA), so it cannot be ranked by AIC",
                r.line, where);
    return r;
  }
  LogLikelihood(summary, r);
  return r;
}

std::string PrintedCall(const Transcript& lines, std::size_t begin, std::size_t end) {
  return Call(lines, begin, end);
}

std::string CallFormula(const Transcript& lines, std::size_t begin, std::size_t end) {
  return FormulaOf(Call(lines, begin, end));
}

}  // namespace drav::selection::fits
