// broom's glance() of a fit, one row, as R prints it: a tibble ("# A
// tibble: 1 x 8", the names, their types, the row "1 ..."), or a data
// frame (as.data.frame(glance(fit)): the names over the row). Wider than
// the console, the columns go on in further blocks of names and row; a
// tibble may leave some out ("# ... with 4 more variables").
//   logLik as printed, n = nobs, K = AIC/2 + logLik where the printed
//   digits fix one whole number, REML where a REMLcrit column says so.
// A tibble prints three significant digits ("-182.", "377."), which fix no
// K and leave the log-likelihood half a unit open: such a glance() is no
// model, and the reader says how to print it in full.
#include <algorithm>
#include <cmath>
#include <map>

#include "selection/fits/r_blocks.hpp"

namespace drav::selection::fits {
namespace {

bool IsType(std::string_view word) { return word.size() > 2 && word.front() == '<' && word.back() == '>'; }

// A block at `at`: its names, perhaps a line of types, then the row "1
// ..." with a value under each name. Returns the line after it, or `at`
// where none stands there.
std::size_t ReadBlock(const Transcript& lines, std::size_t at, std::size_t end,
                      std::map<std::string, std::string_view, std::less<>>& cells) {
  if (at >= end || lines[at].command) return at;
  const auto names = Words(lines[at].text);
  std::size_t row = at + 1;
  if (row < end && !lines[row].command) {
    const auto types = Words(lines[row].text);
    if (!types.empty() && std::all_of(types.begin(), types.end(), IsType)) ++row;
  }
  if (names.empty() || row >= end || lines[row].command) return at;
  const auto values = Words(lines[row].text);
  if (values.size() != names.size() + 1 || values[0] != "1") return at;
  for (std::size_t c = 0; c < names.size(); ++c) cells.emplace(std::string(names[c]), values[c + 1]);
  return row + 1;
}

// Whether K is the one whole number within what the printed digits leave
// open of AIC/2 + logLik.
std::optional<double> OneWholeK(const Printed& aic, const Printed& logLik) {
  const double k = aic.value / 2 + logLik.value;
  const double blur = aic.halfUnit / 2 + logLik.halfUnit + 1e-9;
  if (std::floor(k + blur) != std::ceil(k - blur) || std::round(k) < 0) return std::nullopt;
  return std::round(k);
}

}  // namespace

bool IsGlanceHeading(const Transcript& lines, std::size_t at) {
  // AIC may stand in a later block of a wide table; logLik heads the
  // block that a glance() is read from.
  const std::string_view line = lines[at].text;
  if (line.find("logLik") == std::string_view::npos) return false;
  const auto names = Words(line);
  if (std::find(names.begin(), names.end(), "logLik") == names.end()) return false;
  std::map<std::string, std::string_view, std::less<>> cells;
  return ReadBlock(lines, at, lines.size(), cells) != at;
}

std::optional<FitRecord> ReadGlance(const Transcript& lines, std::size_t begin, std::size_t end,
                                    ProgramOutput& output, std::string& why) {
  std::map<std::string, std::string_view, std::less<>> cells;
  for (std::size_t at = begin; at < end;) {
    const std::size_t next = ReadBlock(lines, at, end, cells);
    if (next == at) break;
    at = next;
    while (at < end && !lines[at].command && Trimmed(lines[at].text).empty()) ++at;
  }
  const auto printed = [&](std::string_view name) -> std::optional<Printed> {
    const auto cell = cells.find(name);
    return cell == cells.end() ? std::nullopt : ReadPrinted(cell->second);
  };
  const auto logLik = printed("logLik");
  const auto aic = printed("AIC");
  const std::string fullDigits = "print as.data.frame(glance(fit)), or set options(pillar.sigfig = 7) before printing it";
  if (!logLik || !aic) {
    why = "glance() printed without its logLik or AIC column (left out for the console's width); " + fullDigits;
    return std::nullopt;
  }
  const auto k = OneWholeK(*aic, *logLik);
  if (!k) {
    why = "glance() printed logLik " + std::string(cells.find("logLik")->second) + " and AIC " +
          std::string(cells.find("AIC")->second) + ", too few digits to fix K or to rank by; " + fullDigits;
    return std::nullopt;
  }
  FitRecord r = output.Model(lines[begin].number);
  r.logLik = logLik->value;
  r.logLikHalfUnit = logLik->halfUnit;
  r.aic = aic->value;
  r.k = *k;
  r.derivation = "K = AIC/2 + logLik of glance()";
  if (const auto bic = printed("BIC")) r.bic = bic->value;
  if (const auto n = printed("nobs")) {
    r.n = n->value;
    AddStep(r.derivation, "n = nobs");
  } else {
    AddStep(r.derivation, std::string(kNNotPrinted));
  }
  if (cells.contains("REMLcrit")) {
    r.kind = LikelihoodKind::REML;
    AddStep(r.derivation, "REML, as its REMLcrit column says");
  }
  return r;
}

}  // namespace drav::selection::fits
