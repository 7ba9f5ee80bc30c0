// summary() and print() of an lme4 fit, and of a glmmTMB fit. An ML fit
// prints its AIC table (older lme4 heads the -2 log-likelihood "deviance",
// newer "-2*log(L)"), whose df.resid gives K = n - df.resid exactly. A REML
// fit prints only its REML criterion: no AIC, and a likelihood that
// compares only fits with the same fixed effects; its K is counted from the
// tables:
//   K = fixed effects + sum over grouping factors of t(t+1)/2 for t terms
//       (their variances and correlations) + 1 for the residual variance.
#include <algorithm>

#include "selection/fits/r_blocks.hpp"

namespace drav::selection::fits {
namespace {

// Random effects: one group's row names its factor in the "Groups" column;
// further terms of the group leave it blank.
// Their names, group and term ("Subject (Intercept)"), go to `names`: no
// term to average.
// A console narrower than the table wraps it: its variances stand in a
// block of their own below the names, which then count nothing (nullopt),
// and a correlation column that did not fit follows the rows, headed
// "Corr", with no variance in it.
std::optional<double> RandomEffectParameters(const Transcript& lines, std::size_t at, std::size_t end,
                                             bool& residual, std::vector<std::string>& names) {
  // An output cut off after the heading has no table to count.
  if (at + 1 >= end) return 0;
  const std::string_view header = lines[at + 1].text;
  const std::size_t nameColumn = header.find("Name");
  if (nameColumn == std::string_view::npos) return 0;
  if (header.find("Variance") == std::string_view::npos && header.find("Std.Dev.") == std::string_view::npos) {
    return std::nullopt;
  }
  double parameters = 0;
  double terms = 0;
  std::string_view last;
  const auto close = [&] { parameters += terms * (terms + 1) / 2; terms = 0; };
  for (std::size_t i = at + 2; i < end && !lines[i].command; ++i) {
    const std::string_view row = lines[i].text;
    if (Trimmed(row).empty() || StartsWithWord(row, "Number of obs")) break;
    const auto cells = Words(row);
    if (std::none_of(cells.begin(), cells.end(), [](std::string_view w) { return ReadPrinted(w).has_value(); })) break;
    const std::string_view group = Trimmed(row.substr(0, std::min(nameColumn, row.size())));
    if (group == "Residual") {
      residual = true;
      names.emplace_back("Residual");
      continue;
    }
    if (!group.empty()) {
      close();
      last = group;
    }
    const auto words = Words(row.substr(std::min(nameColumn, row.size())));
    if (!words.empty()) names.push_back(std::string(last) + " " + std::string(words.front()));
    ++terms;
  }
  close();
  return parameters;
}

// Fixed effects: summary() prints a table, one row a coefficient, which
// lmerTest follows with a rule and the significance codes; print() prints
// the names across, alternating lines of names and of values.
CoefficientRows FixedEffects(const Transcript& lines, std::size_t at, std::size_t end) {
  if (Trimmed(lines[at].text).starts_with("Fixed Effects:")) return ReadCoefficientsAcross(lines, at + 1, end);
  return at + 1 < end ? ReadCoefficientTable(lines, at + 1, end) : CoefficientRows{};
}

// A formula after "Formula:", going on, indented, until the Data: line;
// on the line below where a narrow console left no room beside it.
std::string Formula(const Transcript& lines, std::size_t at, std::size_t end) {
  std::string formula(Trimmed(Trimmed(lines[at].text).substr(8)));
  if (formula.empty() && at + 1 < end && !lines[at + 1].command) formula = Trimmed(lines[++at].text);
  for (std::size_t j = at + 1; j < end && lines[j].text.starts_with("  ") && !lines[j].command; ++j) {
    const std::string_view more = Trimmed(lines[j].text);
    if (more.find(':') != std::string_view::npos && !more.starts_with("(")) break;
    formula += ' ';
    formula.append(more);
  }
  return formula;
}

// What an lme4 fit's summary or print() shows that its record is made of.
struct MixedSummary {
  std::string formula;
  std::optional<Printed> criterion, deviance, logLik, aic, bic, dfResid, obs;
  double fixed = 0;
  std::optional<double> random = 0;  // none where a narrow console wrapped the table
  bool residual = false;
  CoefficientRows coefficients;
  std::vector<std::string> randomNames;
};

bool IsCriterionHeading(std::string_view word) {
  return word == "AIC" || word == "BIC" || word == "logLik" || word == "deviance" || word == "-2*log(L)" ||
         word == "df.resid";
}

// The table of criteria from `at`: a line of headings, the values under
// them on the next; a console narrower than the table puts the headings
// that did not fit, with their values, on the lines below.
void ReadCriteria(const Transcript& lines, std::size_t at, std::size_t end, MixedSummary& summary) {
  for (; at + 1 < end && !lines[at + 1].command; at += 2) {
    const auto headings = Words(lines[at].text);
    const auto values = Words(lines[at + 1].text);
    if (headings.empty() || headings.size() != values.size() ||
        !std::all_of(headings.begin(), headings.end(), IsCriterionHeading)) {
      break;
    }
    for (std::size_t w = 0; w < headings.size(); ++w) {
      const auto value = ReadPrinted(values[w]);
      if (headings[w] == "AIC") summary.aic = value;
      if (headings[w] == "BIC") summary.bic = value;
      if (headings[w] == "logLik") summary.logLik = value;
      if (headings[w] == "deviance" || headings[w] == "-2*log(L)") summary.deviance = value;
      if (headings[w] == "df.resid") summary.dfResid = value;
    }
  }
}

MixedSummary ReadSummaryLines(const Transcript& lines, std::size_t begin, std::size_t end) {
  MixedSummary summary;
  for (std::size_t i = begin; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    if (line.starts_with("Formula:") && summary.formula.empty()) {
      summary.formula = Formula(lines, i, end);
    } else if (const auto words = Words(line); words.size() >= 3 && words[0] == "AIC" && words[2] == "logLik") {
      ReadCriteria(lines, i, end, summary);
    } else if (line.starts_with("REML criterion at convergence:")) {
      summary.criterion = NumberAfter(line, "REML criterion at convergence:");
      // A narrow console puts the value on the line below.
      if (!summary.criterion && line == "REML criterion at convergence:" && i + 1 < end && !lines[i + 1].command) {
        summary.criterion = ReadPrinted(Trimmed(lines[i + 1].text));
      }
    } else if (line.starts_with("Number of obs:")) {
      // lme4: "Number of obs: 180, groups:  Subject, 18"; glmmTMB's print():
      // "Number of obs: 644 / Conditional model: site, 23".
      std::string_view count = line.substr(14);
      const auto words = Words(count.substr(0, count.find(',')));
      if (!words.empty()) summary.obs = ReadPrinted(words.front());
    } else if (line.starts_with("Random effects:")) {
      summary.random = RandomEffectParameters(lines, i, end, summary.residual, summary.randomNames);
    } else if (line.starts_with("Fixed effects:") || line.starts_with("Fixed Effects:")) {
      summary.coefficients = FixedEffects(lines, i, end);
      summary.fixed = static_cast<double>(summary.coefficients.terms.size());
    } else if (line.starts_with("Conditional model:") && summary.coefficients.terms.empty() && i + 1 < end) {
      // glmmTMB's fixed effects, summary()'s table or print()'s names
      // across (its variances' table, also headed so, holds no row of
      // numbers); its zero-inflation and dispersion models have terms of
      // their own, not averaged with these.
      summary.coefficients = lines[i + 1].text.find("Estimate") != std::string_view::npos
                                 ? ReadCoefficientTable(lines, i + 1, end)
                                 : ReadCoefficientsAcross(lines, i + 1, end);
    }
  }
  return summary;
}

// The log-likelihood of an ML fit: the -2 log-likelihood is printed to as
// many digits as the AIC, the log-likelihood itself to one fewer, so the
// finer is taken.
void MlLogLikelihood(const MixedSummary& summary, FitRecord& r) {
  if (summary.deviance) {
    r.logLik = -summary.deviance->value / 2;
    r.logLikHalfUnit = summary.deviance->halfUnit / 2;
    r.derivation = "logLik = -deviance/2";
  } else {
    r.logLik = summary.logLik->value;
    r.logLikHalfUnit = summary.logLik->halfUnit;
  }
}

}  // namespace

namespace {

// lme4 closes a summary with what its optimizer and its check of the
// gradient said: a fit that stopped short of the maximum has a likelihood
// that ranks nothing for sure. Warned of, as lme4 warns of it.
void WarnOfConvergence(const Transcript& lines, std::size_t begin, std::size_t end, FitRecord& r,
                       ProgramOutput& output) {
  for (std::size_t i = begin; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    const bool failed = line.starts_with("Model failed to converge") ||
                        (line.starts_with("optimizer (") && line.find("convergence code: 0") == std::string_view::npos &&
                         line.find("convergence code:") != std::string_view::npos);
    if (!failed) continue;
    output.Flag(r, "lme4 says the fit did not converge (\"" + std::string(line) +
                       "\"); its log-likelihood may fall short of the maximum",
                lines[i].number);
    return;
  }
}

// K, n and the log-likelihood of an lme4 summary.
std::optional<FitRecord> ReadMixedNumbers(const Transcript& lines, std::size_t begin, std::size_t end,
                                          ProgramOutput& output) {
  FitRecord r = output.Model(lines[begin].number);
  // "... fit by REML" or, in a narrow console, "... fit by" over "REML".
  std::string heading(Trimmed(lines[begin].text));
  if (heading.ends_with("fit by") && begin + 1 < end) heading.append(" ").append(Trimmed(lines[begin + 1].text));
  const bool reml = heading.find("fit by REML") != std::string::npos;
  MixedSummary summary = ReadSummaryLines(lines, begin, end);
  r.model = summary.formula;
  r.notTerms = std::move(summary.randomNames);
  TakeTerms(std::move(summary.coefficients), r);
  if (summary.obs) r.n = summary.obs->value;
  const double random = summary.random.value_or(0);
  const double counted = summary.fixed + random + (summary.residual ? 1 : 0);
  const std::string counting = "K = " + Shown(summary.fixed) + " fixed effects + " + Shown(random) +
                               " variance and correlation parameters" +
                               (summary.residual ? " + 1 residual variance" : "");
  constexpr std::string_view kWrapped =
      "R wrapped its table of random effects (a console narrower than the table), so K is unknown; "
      "print it wider, after options(width = 120)";
  if (reml) {
    if (!summary.criterion) return std::nullopt;
    r.kind = LikelihoodKind::REML;
    r.logLik = -summary.criterion->value / 2;
    r.logLikHalfUnit = summary.criterion->halfUnit / 2;
    if (r.termsCutOff) {
      output.Flag(r, "R printed its fixed effects only in part (max.print), so K is unknown", r.line);
      return r;
    }
    if (!summary.random) {
      output.Flag(r, std::string(kWrapped), r.line);
      return r;
    }
    r.k = counted;
    r.derivation = "logLik = -(REML criterion)/2; " + counting;
    return r;
  }
  if (!summary.logLik && !summary.deviance) return std::nullopt;
  MlLogLikelihood(summary, r);
  if (summary.aic) r.aic = summary.aic->value;
  if (summary.bic) r.bic = summary.bic->value;
  if (summary.dfResid && summary.obs) {
    r.k = summary.obs->value - summary.dfResid->value;
    AddStep(r.derivation, "K = n - df.resid = " + Shown(summary.obs->value) + " - " + Shown(summary.dfResid->value));
  } else if (!summary.random) {
    output.Flag(r, std::string(kWrapped), r.line);
  } else if (counted > 0 && !r.termsCutOff) {
    r.k = counted;
    AddStep(r.derivation, counting);
  } else {
    output.Warn("lme4 fit '" + r.model + "' prints neither df.resid nor its effects, so K is unknown", r.line);
  }
  return r;
}

}  // namespace

std::optional<FitRecord> ReadMixedSummary(const Transcript& lines, std::size_t begin, std::size_t end,
                                          ProgramOutput& output) {
  auto record = ReadMixedNumbers(lines, begin, end, output);
  if (record) WarnOfConvergence(lines, begin, end, *record, output);
  return record;
}

std::vector<FitRecord> ReadAnovaTable(const Transcript& lines, std::size_t begin, std::size_t end,
                                      ProgramOutput& output) {
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
      FitRecord r = output.Model(lines[j].number);
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
