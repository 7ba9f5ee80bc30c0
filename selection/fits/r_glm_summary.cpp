// summary() of a glm as R prints it. R prints no log-likelihood there, only
// the AIC (to five significant digits) and the degrees of freedom, so the
// rest is derived, and the derivation kept for --verbose:
//   rank = coefficient rows that are not NA (aliased ones are)
//   n    = residual df + rank
//   K    = rank, + 1 for the dispersion of gaussian, Gamma and
//          inverse.gaussian (their AIC counts it), + 1 for glm.nb's theta
//   logLik = K - AIC / 2, or half of glm.nb's "2 x log-likelihood"
#include <algorithm>

#include "selection/fits/r_blocks.hpp"

namespace drav::selection::fits {
namespace {

bool HasDispersionParameter(std::string_view family) {
  return family == "gaussian" || family == "Gamma" || family == "inverse.gaussian";
}

}  // namespace

constexpr std::string_view kProgram = "R";

FitRecord RRecord(const std::string& source, std::int64_t line) {
  FitRecord r;
  r.source = source;
  r.line = line;
  // Swapped in: GCC 12 at -O3 warns falsely of overlapping copies when a
  // short literal is assigned to a string member of a fresh record.
  std::string program(kProgram);
  r.program.swap(program);
  return r;
}

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

std::optional<FitRecord> ReadGlmSummary(const Transcript& lines, std::size_t begin, std::size_t end,
                                        const std::string& source, Diagnostics& diagnostics) {
  FitRecord r = RRecord(source, lines[begin].number);
  std::size_t callAt = begin + 1;
  while (callAt < end && (lines[callAt].command || Trimmed(lines[callAt].text).empty())) ++callAt;
  r.model = FormulaOf(JoinedCall(lines, callAt, end));

  std::optional<Printed> aic, residualDf, twiceLogLik;
  std::string family;
  bool aicNA = false;
  bool theta = false;
  std::size_t rows = 0;
  std::size_t aliased = 0;
  std::string deleted;
  for (std::size_t i = begin; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    if (line.starts_with("Coefficients:")) {
      // The header of the table, then one row per coefficient until a
      // blank line or the significance codes.
      std::size_t j = i + 2;
      for (; j < end && !lines[j].command; ++j) {
        const auto words = Words(lines[j].text);
        if (words.empty() || words[0] == "---") break;
        ++rows;
        if (words.size() > 1 && words[1] == "NA") ++aliased;
      }
      i = j;
    } else if (line.starts_with("(Dispersion parameter for ")) {
      const std::string_view rest = line.substr(26);
      family = std::string(rest.substr(0, rest.find(" family")));
    } else if (line.starts_with("Residual deviance:")) {
      const auto words = Words(line);
      const auto on = std::find(words.begin(), words.end(), "on");
      if (on != words.end() && on + 1 != words.end()) residualDf = ReadPrinted(*(on + 1));
    } else if (line.ends_with("deleted due to missingness)")) {
      deleted = std::string(line.substr(1, line.size() - 2));
    } else if (line.starts_with("AIC:")) {
      aicNA = Trimmed(line.substr(4)) == "NA";
      aic = NumberAfter(line, "AIC:");
    } else if (line.starts_with("Theta:")) {
      theta = true;
    } else if (const auto twice = NumberAfter(line, "2 x log-likelihood:")) {
      twiceLogLik = twice;
    }
  }
  if (!aic && !aicNA) return std::nullopt;
  const std::string where = "summary() of glm " + (r.model.empty() ? std::string() : "'" + r.model + "'") + ": ";
  if (!residualDf || rows == 0) {
    diagnostics.Warn(where + "it lacks its coefficients or residual degrees of freedom, so K and n are unknown", source,
                     r.line);
    return std::nullopt;
  }
  const double rank = static_cast<double>(rows - aliased);
  const bool dispersion = HasDispersionParameter(family);
  r.n = residualDf->value + rank;
  r.k = rank + (dispersion ? 1 : 0) + (theta ? 1 : 0);
  r.derivation = "n = residual df " + Shown(residualDf->value) + " + " + Shown(rank) + " coefficients";
  if (!deleted.empty()) r.derivation += " (" + deleted + ")";
  r.derivation += "; K = " + Shown(rank) + " coefficients";
  if (aliased > 0) r.derivation += " (" + Shown(double(aliased)) + " aliased, not counted)";
  if (dispersion) r.derivation += " + 1 for the " + family + " dispersion";
  if (theta) r.derivation += " + 1 for theta";
  if (aicNA) {
    r.kind = LikelihoodKind::None;
    r.warnings.push_back("the " + (family.empty() ? std::string("quasi") : family) +
                         " family has no likelihood (R prints AIC: NA), so it cannot be ranked by AIC");
    diagnostics.Warn(where + r.warnings.back(), source, r.line);
    return r;
  }
  r.aic = aic->value;
  if (twiceLogLik) {
    r.logLik = twiceLogLik->value / 2;
    r.logLikHalfUnit = twiceLogLik->halfUnit / 2;
    r.derivation += "; logLik = (2 x log-likelihood) / 2";
  } else {
    r.logLik = r.k - aic->value / 2;
    r.logLikHalfUnit = aic->halfUnit / 2;
    r.derivation += "; logLik = K - AIC/2 = " + Shown(r.k) + " - " + Shown(aic->value) + "/2";
  }
  return r;
}

}  // namespace drav::selection::fits
