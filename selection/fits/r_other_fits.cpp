// R's printed fits beyond glm and lme4, each from its own piece of a
// transcript:
//   AIC(m1, m2, ...)  a table of df and AIC: K = df, logLik = K - AIC/2,
//                     n not printed;
//   nlme's lme and gls, summary() or print(): "fit by REML" or "by maximum
//                     likelihood"; logLik as printed, K from the AIC where
//                     one is printed (K = AIC/2 + logLik), else, for a gls
//                     without correlation or variance structure, its
//                     coefficients and the residual variance; n the
//                     observations;
//   ordinal's clm and clmm: the line under "link threshold nobs logLik
//                     AIC": n = nobs, K = AIC/2 + logLik;
//   summary() of any fit that ends "Log-likelihood: -722.6 on 5 Df"
//                     (pscl's zeroinfl and hurdle, AER's tobit): K = Df,
//                     n not printed;
//   survreg, summary() or print(): "Loglik(model)=", K the rows of the
//                     summary's table of values (the log scale among them),
//                     or print()'s coefficients and its scales; n from "n=";
//   polr (summary() or print()): logLik = -(Residual Deviance)/2, K =
//                     (AIC - Residual Deviance)/2, n not printed;
//   bbmle's mle2, summary() or print(): "-2 log L:" or "Log-likelihood:",
//                     K its coefficients;
//   survival's coxph, print() or summary(): a partial likelihood, K the df
//                     of its likelihood ratio test (0 for a null model), n
//                     the events, as R's nobs() counts them; the partial
//                     log-likelihood itself only a null model prints, the
//                     others leave it to logLik() printed after them.
// A K worked out from two rounded numbers is taken only where it is a
// whole number to within their rounding; else it is left unknown, and the
// listing's Derivation column says so.
#include <algorithm>
#include <cmath>

#include "selection/fits/r_blocks.hpp"

namespace drav::selection::fits {
namespace {

// K from a printed AIC and log-likelihood, where they fix it to a whole number.
std::optional<double> KFromAic(const Printed& aic, const Printed& logLik) {
  const auto k = WholeNumber(aic.value / 2 + logLik.value, aic.halfUnit / 2 + logLik.halfUnit + 1e-9);
  if (!k || *k < 0) return std::nullopt;
  return k;
}

// Why KFromAic gave no K, for the listing's Derivation column.
std::string NoWholeK(const Printed& aic, const Printed& logLik) {
  return "K unknown: AIC/2 + logLik = " + Shown(aic.value / 2 + logLik.value) + ", no whole number as printed";
}

// The value under `heading` in a line of headings and the line of values
// under it.
std::optional<Printed> Under(const std::vector<std::string_view>& headings, const std::vector<std::string_view>& values,
                             std::string_view heading) {
  const auto at = std::find(headings.begin(), headings.end(), heading);
  if (at == headings.end()) return std::nullopt;
  const auto column = static_cast<std::size_t>(at - headings.begin());
  return column < values.size() ? ReadPrinted(values[column]) : std::nullopt;
}

// The text after `label` on a line, trimmed.
std::string After(std::string_view line, std::string_view label) {
  return std::string(Trimmed(line.substr(line.find(label) + label.size())));
}

}  // namespace

bool IsAicTableHeading(std::string_view line) {
  if (line.find("AIC") == std::string_view::npos) return false;  // asked of every line: split only where it may be
  const auto words = Words(line);
  return words.size() == 2 && words[0] == "df" && words[1] == "AIC";
}

std::vector<FitRecord> ReadAicTable(const Transcript& lines, std::size_t begin, std::size_t end,
                                    ProgramOutput& output) {
  std::vector<FitRecord> records;
  for (std::size_t i = begin + 1; i < end && !lines[i].command; ++i) {
    // A row is named by the object, or by the call where the fit was made
    // inside AIC() ("lm(y ~ x, d)"): the name is all before the last two.
    const auto words = Words(lines[i].text);
    if (words.size() < 3) break;
    const auto df = ReadPrinted(words[words.size() - 2]);
    const auto aic = ReadPrinted(words.back());
    if (!df || !aic) break;
    FitRecord r = output.Model(lines[i].number);
    const std::string_view row = Trimmed(lines[i].text);
    r.model = std::string(Trimmed(row.substr(0, static_cast<std::size_t>(words[words.size() - 2].data() - row.data()))));
    r.k = df->value;
    r.aic = aic->value;
    r.logLik = r.k - aic->value / 2;
    r.logLikHalfUnit = aic->halfUnit / 2;
    r.derivation = "K = df of AIC(); logLik = K - AIC/2 = " + Shown(r.k) + " - " + Shown(aic->value) + "/2; " +
                   std::string(kNNotPrinted);
    records.push_back(std::move(r));
  }
  return records;
}

bool IsNlmeHeading(std::string_view line) {
  return line.find("mixed-effects model fit by") != std::string_view::npos ||
         line.find("least squares fit by") != std::string_view::npos;
}

std::optional<FitRecord> ReadNlmeFit(const Transcript& lines, std::size_t begin, std::size_t end,
                                     ProgramOutput& output) {
  FitRecord r = output.Model(lines[begin].number);
  const std::string_view heading = lines[begin].text;
  if (heading.find("fit by REML") != std::string_view::npos) {
    r.kind = LikelihoodKind::REML;
  } else if (heading.find("fit by maximum likelihood") == std::string_view::npos) {
    return std::nullopt;
  }
  std::optional<Printed> aic, logLik;
  std::optional<double> coefficients;
  bool structured = false;  // a correlation or variance structure adds parameters no line counts
  for (std::size_t i = begin + 1; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    const auto words = Words(line);
    if (r.terms.empty() && (line.starts_with("Fixed") || line.starts_with("Coefficients:")) && i + 1 < end) {
      // summary(): a table headed "Value Std.Error"; print(): the names across.
      const std::string_view next = lines[i + 1].text;
      const bool table = next.find("Value") != std::string_view::npos && next.find("Std.Error") != std::string_view::npos;
      TakeTerms(table ? ReadCoefficientTable(lines, i + 1, end) : ReadCoefficientsAcross(lines, i + 1, end), r);
    }
    if (words.size() == 3 && words[0] == "AIC" && words[1] == "BIC" && words[2] == "logLik" && i + 1 < end) {
      const auto values = Words(lines[i + 1].text);
      aic = Under(words, values, "AIC");
      logLik = Under(words, values, "logLik");
      if (const auto bic = Under(words, values, "BIC")) r.bic = bic->value;
    } else if (line.starts_with("Log-likelihood:") || line.starts_with("Log-restricted-likelihood:")) {
      logLik = ReadPrinted(After(line, ":"));
    } else if (line.starts_with("Model:") && r.model.empty()) {
      r.model = After(line, "Model:");
    } else if ((line.starts_with("Fixed effects:") || line.starts_with("Fixed:")) && r.model.empty()) {
      r.model = After(line, ":");
    } else if (line.starts_with("Number of Observations:")) {
      if (const auto n = ReadPrinted(After(line, ":"))) r.n = n->value;
    } else if (line.starts_with("Degrees of freedom:")) {
      // gls: "Degrees of freedom: 108 total; 105 residual"
      if (words.size() >= 6) {
        const auto total = ReadPrinted(words[3]);
        const auto residual = ReadPrinted(words[5]);
        if (total) r.n = total->value;
        if (total && residual) coefficients = total->value - residual->value;
      }
    } else if (line.starts_with("Correlation Structure:") || line.starts_with("Variance function:")) {
      structured = true;
    }
  }
  if (!logLik) return std::nullopt;
  r.logLik = logLik->value;
  r.logLikHalfUnit = logLik->halfUnit;
  if (aic) {
    r.aic = aic->value;
    if (const auto k = KFromAic(*aic, *logLik)) {
      r.k = *k;
      r.derivation = "K = AIC/2 + logLik";
    } else {
      r.derivation = NoWholeK(*aic, *logLik);
    }
  } else if (coefficients && !structured && heading.find("least squares") != std::string_view::npos) {
    r.k = *coefficients + 1;
    r.derivation = "K = " + Shown(*coefficients) + " coefficients + 1 for the residual variance";
  } else {
    r.derivation = "K unknown: no AIC printed to give it; summary(fit) or logLik(fit) prints it";
  }
  return r;
}

bool IsClmHeading(std::string_view line) {
  if (line.find("threshold") == std::string_view::npos) return false;
  const auto words = Words(line);
  return words.size() >= 5 && words[0] == "link" && words[1] == "threshold" && words[2] == "nobs" &&
         words[3] == "logLik" && words[4] == "AIC";
}

std::optional<FitRecord> ReadClmFit(const Transcript& lines, std::size_t begin, std::size_t end,
                                    ProgramOutput& output) {
  if (begin + 1 >= end) return std::nullopt;
  const auto headings = Words(lines[begin].text);
  const auto values = Words(lines[begin + 1].text);
  const auto logLik = Under(headings, values, "logLik");
  const auto aic = Under(headings, values, "AIC");
  if (!logLik || !aic) return std::nullopt;
  FitRecord r = output.Model(lines[begin].number);
  // The formula stands a few lines above the table.
  for (std::size_t i = begin; i-- > 0 && i + 6 > begin;) {
    const std::string_view line = Trimmed(lines[i].text);
    if (line.starts_with("formula:")) {
      r.model = After(line, "formula:");
      break;
    }
  }
  r.logLik = logLik->value;
  r.logLikHalfUnit = logLik->halfUnit;
  r.aic = aic->value;
  if (const auto n = Under(headings, values, "nobs")) r.n = n->value;
  if (const auto k = KFromAic(*aic, *logLik)) {
    r.k = *k;
    r.derivation = "K = AIC/2 + logLik; n = nobs";
  } else {
    r.derivation = NoWholeK(*aic, *logLik) + "; n = nobs";
  }
  return r;
}

namespace {

// The rows of the table under the line at `at`, as a coefficient table's
// rows end.
double TableRows(const Transcript& lines, std::size_t at, std::size_t end) {
  return static_cast<double>(ReadCoefficientTable(lines, at, end).terms.size());
}

// The coefficients under "Coefficients:" at `at`: summary()'s table, or
// print()'s names across. One printed NA (aliased) counts as well: R's
// logLik() of a survreg counts it, as the rows of its summary do.
double Coefficients(const Transcript& lines, std::size_t at, std::size_t end) {
  if (at + 1 >= end) return 0;
  const std::string_view next = lines[at + 1].text;
  if (next.find("Estimate") != std::string_view::npos || next.find("Value") != std::string_view::npos) {
    return TableRows(lines, at + 1, end);
  }
  return static_cast<double>(ReadCoefficientsAcross(lines, at + 1, end).terms.size());
}

// "Log-likelihood: -722.6 on 5 Df"
bool ReadLogLikelihoodOnDf(std::string_view line, FitRecord& r) {
  const auto words = Words(line);
  if (words.size() != 5 || words[0] != "Log-likelihood:" || words[2] != "on" || words[4] != "Df") return false;
  const auto logLik = ReadPrinted(words[1]);
  const auto df = ReadPrinted(words[3]);
  if (!logLik || !df) return false;
  r.logLik = logLik->value;
  r.logLikHalfUnit = logLik->halfUnit;
  r.k = df->value;
  r.derivation = "logLik and K = Df from \"Log-likelihood: ... on ... Df\"; " + std::string(kNNotPrinted);
  return true;
}

std::optional<FitRecord> ReadSurvreg(const Transcript& lines, std::size_t begin, std::size_t end, FitRecord r) {
  std::optional<double> rows;
  std::optional<double> across;  // print(): the coefficients, to which the scales add
  double scales = 0;
  for (std::size_t i = begin + 1; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    const auto words = Words(line);
    if (!rows && words.size() >= 2 && words[0] == "Value" && words[1] == "Std.") rows = TableRows(lines, i, end);
    // "Coefficients: (1 not defined because of singularities)" where one is aliased.
    if (!rows && !across && line.starts_with("Coefficients:")) across = Coefficients(lines, i, end);
    // "Scale= 0.88" where one is estimated, "Scale fixed at 1" where none
    // is, and "Scale:" over the strata's names and values where several are.
    if (line.starts_with("Scale=")) scales = 1;
    if (line == "Scale:" && i + 2 < end) scales = static_cast<double>(Words(lines[i + 2].text).size());
    if (line.starts_with("Loglik(model)=")) {
      const auto after = Words(line.substr(14));
      const auto logLik = after.empty() ? std::nullopt : ReadPrinted(after[0]);
      if (!logLik) return std::nullopt;
      r.logLik = logLik->value;
      r.logLikHalfUnit = logLik->halfUnit;
    }
    if (line.starts_with("n=") && words.size() == 2) {
      if (const auto n = ReadPrinted(words[1])) r.n = n->value;
    }
  }
  if (std::isnan(r.logLik)) return std::nullopt;
  if (rows) {
    r.k = *rows;
    r.derivation = "K = the rows of the table of values, the log scale among them; logLik = Loglik(model)";
  } else if (across) {
    r.k = *across + scales;
    r.derivation = "K = " + Shown(*across) + " coefficients + " + Shown(scales) + " scale; logLik = Loglik(model)";
  }
  return r;
}

std::optional<FitRecord> ReadPolr(const Transcript& lines, std::size_t begin, std::size_t end, FitRecord r) {
  std::optional<Printed> deviance, aic;
  for (std::size_t i = begin + 1; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    if (line.starts_with("Residual Deviance:")) deviance = ReadPrinted(Trimmed(line.substr(18)));
    if (line.starts_with("AIC:")) aic = ReadPrinted(Trimmed(line.substr(4)));
  }
  if (!deviance) return std::nullopt;
  r.logLik = -deviance->value / 2;
  r.logLikHalfUnit = deviance->halfUnit / 2;
  r.derivation = "logLik = -(Residual Deviance)/2; " + std::string(kNNotPrinted);
  if (aic) {
    r.aic = aic->value;
    const Printed logLik{r.logLik, r.logLikHalfUnit};
    if (const auto k = KFromAic(*aic, logLik)) {
      r.k = *k;
      r.derivation += "; K = (AIC - Residual Deviance)/2";
    } else {
      r.derivation += "; " + NoWholeK(*aic, logLik);
    }
  }
  return r;
}

std::optional<FitRecord> ReadMle2(const Transcript& lines, std::size_t begin, std::size_t end, FitRecord r) {
  std::optional<double> rows;
  for (std::size_t i = begin + 1; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    if (!rows && line.starts_with("Coefficients:")) rows = Coefficients(lines, i, end);
    // summary() prints "-2 log L:", print() "Log-likelihood:".
    if (line.starts_with("-2 log L:")) {
      const auto twice = ReadPrinted(Trimmed(line.substr(9)));
      if (!twice) return std::nullopt;
      r.logLik = -twice->value / 2;
      r.logLikHalfUnit = twice->halfUnit / 2;
      r.derivation = "logLik = -(-2 log L)/2; " + std::string(kNNotPrinted);
    } else if (const auto ll = NumberAfter(line, "Log-likelihood:")) {
      r.logLik = ll->value;
      r.logLikHalfUnit = ll->halfUnit;
      r.derivation = "logLik as printed; " + std::string(kNNotPrinted);
    }
  }
  if (std::isnan(r.logLik)) return std::nullopt;
  if (rows) {
    r.k = *rows;
    r.derivation += "; K = the rows of Coefficients";
  }
  return r;
}

// "Likelihood ratio test=1.45  on 2 df, p=0.4833": the df; print() and
// summary() space it apart differently.
std::optional<Printed> LikelihoodRatioDf(std::string_view line) {
  if (!line.starts_with("Likelihood ratio test")) return std::nullopt;
  const auto words = Words(line);
  for (std::size_t w = 1; w + 1 < words.size(); ++w) {
    if (words[w - 1] == "on" && words[w + 1].starts_with("df")) return ReadPrinted(words[w]);
  }
  return std::nullopt;
}

std::optional<FitRecord> ReadCoxph(const Transcript& lines, std::size_t begin, std::size_t end, FitRecord r) {
  r.kind = LikelihoodKind::Partial;
  for (std::size_t i = begin + 1; i < end; ++i) {
    if (lines[i].command) continue;
    const std::string_view line = Trimmed(lines[i].text);
    const auto words = Words(line);
    if (const auto df = LikelihoodRatioDf(line)) {
      r.k = df->value;
      AddStep(r.derivation, "K = df of the likelihood ratio test");
    } else if (line == "Null model") {
      r.k = 0;
      AddStep(r.derivation, "K = 0, a null model");
    } else if (const auto ll = NumberAfter(line, "log likelihood=")) {
      r.logLik = ll->value;
      r.logLikHalfUnit = ll->halfUnit;
    } else if (words.size() >= 6 && words[0] == "n=" && words[4] == "events=") {
      // R's nobs() of a Cox model, and so its BIC, counts the events.
      if (const auto events = ReadPrinted(words[5])) {
        r.n = events->value;
        AddStep(r.derivation, "n = the number of events, as R's nobs() counts");
      }
    }
  }
  return r;
}

}  // namespace

std::optional<FitRecord> ReadCallFit(const Transcript& lines, std::size_t begin, std::size_t end,
                                     ProgramOutput& output) {
  const std::string printed = PrintedCall(lines, begin, end);
  std::string_view call = printed;  // without a package's "MASS::"
  if (const std::size_t colons = call.find("::"); colons < call.find('(')) call.remove_prefix(colons + 2);
  FitRecord r = output.Model(lines[begin].number);
  r.model = CallFormula(lines, begin, end);
  if (call.starts_with("survreg(")) return ReadSurvreg(lines, begin, end, std::move(r));
  if (call.starts_with("polr(")) return ReadPolr(lines, begin, end, std::move(r));
  if (call.starts_with("mle2(")) return ReadMle2(lines, begin, end, std::move(r));
  if (call.starts_with("coxph(")) return ReadCoxph(lines, begin, end, std::move(r));
  for (std::size_t i = begin + 1; i < end; ++i) {
    if (!lines[i].command && ReadLogLikelihoodOnDf(Trimmed(lines[i].text), r)) return r;
  }
  return std::nullopt;
}

}  // namespace drav::selection::fits
