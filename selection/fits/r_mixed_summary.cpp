// summary() and print() of an lme4 fit. An ML fit prints its AIC table
// (older lme4 heads the -2 log-likelihood "deviance", newer "-2*log(L)"),
// whose df.resid gives K = n - df.resid exactly. A REML fit prints only its
// REML criterion: no AIC, and a likelihood that compares only fits with the
// same fixed effects; its K is counted from the tables:
//   K = fixed effects + sum over grouping factors of t(t+1)/2 for t terms
//       (their variances and correlations) + 1 for the residual variance.
#include <algorithm>

#include "selection/fits/r_blocks.hpp"

namespace drav::selection::fits {
namespace {

// Random effects: one group's row names its factor in the "Groups" column;
// further terms of the group leave it blank.
double RandomEffectParameters(const Transcript& lines, std::size_t at, std::size_t end, bool& residual) {
  // An output cut off after the heading has no table to count.
  if (at + 1 >= end) return 0;
  const std::string_view header = lines[at + 1].text;
  const std::size_t nameColumn = header.find("Name");
  if (nameColumn == std::string_view::npos) return 0;
  double parameters = 0;
  double terms = 0;
  const auto close = [&] { parameters += terms * (terms + 1) / 2; terms = 0; };
  for (std::size_t i = at + 2; i < end && !lines[i].command; ++i) {
    const std::string_view row = lines[i].text;
    if (Trimmed(row).empty() || StartsWithWord(row, "Number of obs")) break;
    const std::string_view group = Trimmed(row.substr(0, std::min(nameColumn, row.size())));
    if (group == "Residual") {
      residual = true;
      continue;
    }
    if (!group.empty()) close();
    ++terms;
  }
  close();
  return parameters;
}

// Fixed effects: summary() prints a table, one row a coefficient; print()
// prints the names across, alternating lines of names and of values.
double FixedEffects(const Transcript& lines, std::size_t at, std::size_t end) {
  const bool across = Trimmed(lines[at].text).starts_with("Fixed Effects:");
  double count = 0;
  for (std::size_t i = at + (across ? 1 : 2); i < end && !lines[i].command; i += across ? 2 : 1) {
    const auto words = Words(lines[i].text);
    if (words.empty()) break;
    count += across ? static_cast<double>(words.size()) : 1;
  }
  return count;
}

}  // namespace

std::optional<FitRecord> ReadMixedSummary(const Transcript& lines, std::size_t begin, std::size_t end,
                                          const std::string& source, Diagnostics& diagnostics) {
  FitRecord r = RRecord(source, lines[begin].number);
  const bool reml = lines[begin].text.find("fit by REML") != std::string_view::npos;
  std::optional<Printed> criterion, deviance, logLik, aic, bic, dfResid, obs;
  double fixed = 0;
  double random = 0;
  bool residual = false;
  for (std::size_t i = begin; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    if (line.starts_with("Formula:") && r.model.empty()) {
      std::string formula(Trimmed(line.substr(8)));
      // A long formula goes on, indented, until the Data: line.
      for (std::size_t j = i + 1; j < end && lines[j].text.starts_with("  ") && !lines[j].command; ++j) {
        const std::string_view more = Trimmed(lines[j].text);
        if (more.find(':') != std::string_view::npos && !more.starts_with("(")) break;
        formula += ' ';
        formula.append(more);
      }
      r.model = formula;
    } else if (const auto words = Words(line); words.size() >= 4 && words[0] == "AIC" && words[2] == "logLik") {
      const auto values = i + 1 < end ? Words(lines[i + 1].text) : std::vector<std::string_view>();
      for (std::size_t w = 0; w < words.size() && w < values.size(); ++w) {
        const auto value = ReadPrinted(values[w]);
        if (words[w] == "AIC") aic = value;
        if (words[w] == "BIC") bic = value;
        if (words[w] == "logLik") logLik = value;
        if (words[w] == "deviance" || words[w] == "-2*log(L)") deviance = value;
        if (words[w] == "df.resid") dfResid = value;
      }
    } else if (line.starts_with("REML criterion at convergence:")) {
      criterion = NumberAfter(line, "REML criterion at convergence:");
    } else if (line.starts_with("Number of obs:")) {
      std::string_view count = line.substr(14);
      count = Trimmed(count.substr(0, count.find(',')));
      obs = ReadPrinted(count);
    } else if (line.starts_with("Random effects:")) {
      random = RandomEffectParameters(lines, i, end, residual);
    } else if (line.starts_with("Fixed effects:") || line.starts_with("Fixed Effects:")) {
      fixed = FixedEffects(lines, i, end);
    }
  }
  if (obs) r.n = obs->value;
  const double counted = fixed + random + (residual ? 1 : 0);
  const std::string counting = "K = " + Shown(fixed) + " fixed effects + " + Shown(random) +
                               " variance and correlation parameters" + (residual ? " + 1 residual variance" : "");
  if (reml) {
    if (!criterion) return std::nullopt;
    r.kind = LikelihoodKind::REML;
    r.logLik = -criterion->value / 2;
    r.logLikHalfUnit = criterion->halfUnit / 2;
    r.k = counted;
    r.derivation = "logLik = -(REML criterion)/2; " + counting;
    return r;
  }
  if (!logLik && !deviance) return std::nullopt;
  // The -2 log-likelihood is printed to as many digits as the AIC, the
  // log-likelihood itself to one fewer: take the finer.
  if (deviance) {
    r.logLik = -deviance->value / 2;
    r.logLikHalfUnit = deviance->halfUnit / 2;
    r.derivation = "logLik = -deviance/2";
  } else {
    r.logLik = logLik->value;
    r.logLikHalfUnit = logLik->halfUnit;
  }
  if (aic) r.aic = aic->value;
  if (bic) r.bic = bic->value;
  if (dfResid && obs) {
    r.k = obs->value - dfResid->value;
    AddStep(r.derivation, "K = n - df.resid = " + Shown(obs->value) + " - " + Shown(dfResid->value));
  } else if (counted > 0) {
    r.k = counted;
    AddStep(r.derivation, counting);
  } else {
    diagnostics.Warn("lme4 fit '" + r.model + "' prints neither df.resid nor its effects, so K is unknown", source,
                     r.line);
  }
  return r;
}

std::vector<FitRecord> ReadAnovaTable(const Transcript& lines, std::size_t begin, std::size_t end,
                                      const std::string& source, Diagnostics&) {
  std::vector<std::pair<std::string, std::string>> formulas;  // row name, formula
  std::vector<FitRecord> records;
  for (std::size_t i = begin; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    if (const std::size_t colon = line.find(": "); colon != std::string_view::npos && line.find('~') != std::string_view::npos) {
      formulas.emplace_back(std::string(line.substr(0, colon)), std::string(Trimmed(line.substr(colon + 2))));
      continue;
    }
    const auto header = Words(line);
    const auto column = [&](std::string_view name) {
      return static_cast<std::size_t>(std::find(header.begin(), header.end(), name) - header.begin());
    };
    const std::size_t npar = std::min(column("npar"), column("Df"));
    if (npar >= header.size() || column("AIC") >= header.size() || column("logLik") >= header.size()) continue;
    // Rows: the model's name, then the header's columns in order; the
    // first row leaves the test's columns blank, which come last.
    for (std::size_t j = i + 1; j < end && !lines[j].command; ++j) {
      const auto words = Words(lines[j].text);
      if (words.size() < 2 || words[0] == "---") break;
      const auto value = [&](std::size_t at) { return at + 1 < words.size() ? ReadPrinted(words[at + 1]) : std::nullopt; };
      const auto k = value(npar);
      const auto ll = value(column("logLik"));
      if (!k || !ll) break;
      FitRecord r = RRecord(source, lines[j].number);
      r.model = std::string(words[0]);
      for (const auto& [name, formula] : formulas) {
        if (name == words[0]) r.model = formula;
      }
      r.k = k->value;
      r.logLik = ll->value;
      r.logLikHalfUnit = ll->halfUnit;
      if (const auto a = value(column("AIC"))) r.aic = a->value;
      if (const auto b = value(column("BIC")); b && column("BIC") < header.size()) r.bic = b->value;
      r.derivation = "K = npar of anova(); logLik as anova() prints it (refitted by ML)";
      records.push_back(std::move(r));
    }
    break;
  }
  return records;
}

}  // namespace drav::selection::fits
