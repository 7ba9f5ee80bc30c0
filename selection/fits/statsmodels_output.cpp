// Python statsmodels' summary() of a regression's results, as printed or as
// a notebook holds it: one record per summary table. statsmodels prints a
// summary as two columns of "Label:  value" pairs over the coefficient
// table, under a title over a rule of "=": "OLS Regression Results" from
// summary(), "Results: Ordinary least squares" from summary2(), which
// prints the same labels (but "Dependent Variable:" for "Dep. Variable:").
// Its log-likelihood comes to five significant digits ("%#8.5g":
// -12346. for a large one), and K is derived:
//   Df Model leaves out the constant, so K = No. Observations - Df
//   Residuals, the coefficients with the constant;
//   + 1 for the error variance of OLS, WLS and GLS, which R's AIC() counts
//   and statsmodels' printed AIC does not (it is 2 below R's);
//   + 1 for the scale of a Gaussian GLM, as for OLS (the same model);
//   + 1 for the scale of a Gamma or inverse Gaussian GLM, whose
//   log-likelihood statsmodels evaluates at the Pearson estimate of the
//   scale rather than at its maximum, as R does: the two programs' values
//   differ a little, and are said to when ranked together; summary2(),
//   which names no family, shows the scale estimated where it is not 1;
//   + 1 for the dispersion (alpha) of the discrete negative binomial and
//   generalized Poisson models, a parameter of the fit that Df Residuals
//   leaves out and statsmodels' own AIC counts.
// Logit, Probit, Poisson and the other GLMs print no AIC; it is computed
// from the log-likelihood. OrderedModel ("OrderedModel Results") has no
// constant: its Df Residuals leave out the coefficients and thresholds.
// A zero-inflated model's Df Residuals leave out its inflation model: K is
// the rows of its coefficient table, as R's zeroinfl() counts them.
// MixedLM prints no Df Residuals. Its coefficient table has a row for every
// parameter but the scale: the fixed effects, then the random effects'
// variances and covariances ("Group Var", "Group x t Cov"), so K is its
// rows + 1. Its log-likelihood is restricted where "Method: REML" says so.
#include <cmath>

#include "selection/fits/printed_text.hpp"
#include "selection/fits/program_output.hpp"

namespace drav::selection::fits {
namespace {

// The word after "label" anywhere in a header line of two columns.
std::optional<std::string_view> Field(std::string_view line, std::string_view label) {
  const std::size_t at = line.find(label);
  if (at == std::string_view::npos || (at > 0 && line[at - 1] != ' ')) return std::nullopt;
  const auto words = Words(line.substr(at + label.size()));
  if (words.empty()) return std::nullopt;
  return words.front();
}

bool Title(std::string_view line) {
  const std::string_view t = Trimmed(line);
  return t.ends_with("Regression Results") || t.ends_with("Model Results") || t.starts_with("Results: ");
}

bool Rule(std::string_view line, char c) {
  line = Trimmed(line);
  return line.size() >= 3 && line.find_first_not_of(c) == std::string_view::npos;
}

// A title over its rule of "=": "Results: " alone is too common a start of
// a line to be taken for a summary without it.
bool StartsTable(const std::vector<TextLine>& lines, std::size_t i) {
  return i + 1 < lines.size() && Title(lines[i].text) && lines[i + 1].text.starts_with("===");
}

bool TitleOverRule(std::string_view text) {
  for (const std::string_view word : {std::string_view("Results: "), std::string_view("Regression Results")}) {
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
      const std::size_t begin = text.rfind('\n', at);
      const std::size_t end = text.find('\n', at);
      if (end == std::string_view::npos) break;
      const std::size_t from = begin == std::string_view::npos ? 0 : begin + 1;
      std::string_view title = text.substr(from, end - from);
      if (title.ends_with('\r')) title.remove_suffix(1);
      if (Title(title) && text.substr(end + 1).starts_with("===")) return true;
    }
  }
  return false;
}

bool LooksLikeStatsmodelsOutput(std::string_view text) {
  // GEE's summary prints no likelihood, having none: statsmodels', refused so.
  if (text.find("GEE Regression Results") != std::string_view::npos) return true;
  if (text.find("Log-Likelihood:") == std::string_view::npos) return false;
  if (text.find("Dep. Variable:") != std::string_view::npos &&
      (text.find("Regression Results") != std::string_view::npos ||
       text.find("OrderedModel Results") != std::string_view::npos)) {
    return true;
  }
  // summary2() and MixedLM's summary, whose label is spelt out.
  return text.find("Dependent Variable:") != std::string_view::npos && TitleOverRule(text);
}

// MixedLM's coefficient table, from the rule under its header: the column
// heads between two rules of "-", then a row a parameter to the rule of
// "=" that closes it. Nothing where it is not whole, for K is then unknown.
struct ParameterRows {
  double fixed = 0;
  double variances = 0;  // of the random effects, and their covariances
  std::size_t end = 0;   // the closing rule
};

std::optional<ParameterRows> CountParameterRows(const std::vector<TextLine>& lines, std::size_t rule) {
  if (rule + 2 >= lines.size() || !Rule(lines[rule].text, '-') || !StartsWithWord(lines[rule + 1].text, "Coef.") ||
      !Rule(lines[rule + 2].text, '-')) {
    return std::nullopt;
  }
  ParameterRows rows;
  for (std::size_t i = rule + 3; i < lines.size(); ++i) {
    if (Rule(lines[i].text, '=')) {
      rows.end = i;
      return rows;
    }
    std::vector<std::string_view> words = Words(lines[i].text);
    // A name may hold blanks ("np.log(x + 1)", "Group x t Cov"); the
    // numbers stand after it.
    while (!words.empty() && ReadPrinted(words.back())) words.pop_back();
    if (words.empty()) return std::nullopt;
    const bool variance = words.size() > 1 && (words.back() == "Var" || words.back() == "Cov");
    (variance ? rows.variances : rows.fixed) += 1;
  }
  return std::nullopt;
}

// The coefficient table under the header that ends at `rule`: summary()
// heads its columns "coef std err" under the header's rule of "=",
// summary2() and MixedLM "Coef. Std.Err." under one of "-"; a rule of "-"
// under the heads, then a row a term to the next rule. A name may hold
// blanks ("np.log(x + 1)"): the numbers (or nan) stand after it. MixedLM's
// rows of the random effects' variances and covariances are no terms.
void ReadTerms(const std::vector<TextLine>& lines, std::size_t rule, FitRecord& r) {
  const std::size_t heading = rule + 1;
  if (heading + 1 >= lines.size() || !Rule(lines[heading + 1].text, '-')) return;
  const auto heads = Words(lines[heading].text);
  if (heads.size() < 2 || (heads[0] != "coef" && heads[0] != "Coef.")) return;
  const auto number = [](std::string_view w) { return w == "nan" || ReadPrinted(w).has_value(); };
  for (std::size_t i = heading + 2; i < lines.size() && !Rule(lines[i].text, '=') && !Rule(lines[i].text, '-'); ++i) {
    const std::string_view row = lines[i].text;
    std::vector<std::string_view> words = Words(row);
    std::size_t numbers = 0;
    while (numbers < words.size() && number(words[words.size() - 1 - numbers])) ++numbers;
    if (numbers == 0 || numbers == words.size()) return;
    const std::string_view first = words[words.size() - numbers];
    const std::string name(Trimmed(row.substr(0, static_cast<std::size_t>(first.data() - row.data()))));
    if (name.ends_with(" Var") || name.ends_with(" Cov")) {
      r.notTerms.push_back(name);
      continue;
    }
    const auto value = [&](std::size_t at) {
      const auto printed = at < numbers ? ReadPrinted(words[words.size() - numbers + at]) : std::nullopt;
      return printed ? printed->value : kUnknown;
    };
    r.terms.push_back({name, value(0), value(1)});
  }
}

// K and the kind of likelihood of a MixedLM summary whose header ends at
// `rule`; false where they cannot be known, and the model is left out.
bool CountMixedModel(const std::vector<TextLine>& lines, std::size_t& rule, std::string_view method, FitRecord& r,
                     ProgramOutput& output) {
  if (method != "REML" && method != "ML") {
    output.Warn("a MixedLM summary without Method: REML or ML is left out: its kind of likelihood is unknown", r.line);
    return false;
  }
  r.kind = method == "REML" ? LikelihoodKind::REML : LikelihoodKind::ML;
  const auto rows = CountParameterRows(lines, rule);
  if (!rows) {
    output.Warn("a MixedLM summary without its whole coefficient table: K is unknown", r.line);
    return true;
  }
  rule = rows->end;
  r.k = rows->fixed + rows->variances + 1;
  r.derivation = "K = " + Shown(rows->fixed) + " fixed effects + " + Shown(rows->variances) +
                 " variance and covariance parameters of the random effects + 1 for the scale";
  return true;
}

std::vector<FitRecord> ReadStatsmodelsOutput(std::string_view text, ProgramOutput& output) {
  const std::vector<TextLine> lines = SplitLines(text);
  std::vector<FitRecord> records;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!StartsTable(lines, i)) continue;
    FitRecord r = output.Model(lines[i].number);
    std::string model;
    std::string family;
    std::string method;
    std::optional<Printed> nobs, dfResid, scale;
    // The header runs from the first rule to the next.
    std::size_t j = i + 2;
    for (; j < lines.size() && !lines[j].text.starts_with("===") && !lines[j].text.starts_with("---"); ++j) {
      const std::string_view line = lines[j].text;
      if (const auto m = Field(line, "Model:"); m && model.empty()) model = std::string(*m);
      if (const auto f = Field(line, "Model Family:")) family = std::string(*f);
      if (const auto m = Field(line, "Method:")) method = std::string(*m);
      if (const auto n = Field(line, "No. Observations:")) nobs = ReadPrinted(*n);
      if (const auto d = Field(line, "Df Residuals:")) dfResid = ReadPrinted(*d);
      if (const auto c = Field(line, "Scale:")) scale = ReadPrinted(*c);
      if (const auto ll = Field(line, "Log-Likelihood:")) {
        if (const auto value = ReadPrinted(*ll)) {
          r.logLik = value->value;
          r.logLikHalfUnit = value->halfUnit;
        }
      }
      if (const auto aic = Field(line, "AIC:")) {
        if (const auto value = ReadPrinted(*aic)) r.aic = value->value;
      }
      if (const auto bic = Field(line, "BIC:")) {
        if (const auto value = ReadPrinted(*bic)) r.bic = value->value;
      }
    }
    i = j;
    ReadTerms(lines, j, r);
    if (std::isnan(r.logLik)) {
      output.Note(model == "GEE" ? "a GEE fit has no likelihood (estimating equations fit it), so no AIC ranks it; left out"
                                 : "a " + model + " summary without a log-likelihood is left out",
                  r.line);
      continue;
    }
    if (nobs) r.n = nobs->value;
    if (model == "MixedLM") {
      if (CountMixedModel(lines, i, method, r, output)) records.push_back(std::move(r));
      continue;
    }
    if (model.starts_with("ZeroInflated") && !r.terms.empty()) {
      // Df Residuals counts the count model's coefficients alone; the
      // inflation model's ("inflate_const") and a negative binomial's alpha
      // are rows of the table as well.
      r.k = static_cast<double>(r.terms.size());
      r.derivation = "K = the " + Shown(r.k) +
                     " rows of the coefficient table, the inflation model's among them (Df Residuals leaves them out)";
      r.counting = "statsmodels' AIC of a zero-inflated model leaves out the inflation model's parameters";
      records.push_back(std::move(r));
      continue;
    }
    if (nobs && dfResid) {
      const double coefficients = nobs->value - dfResid->value;
      r.k = coefficients;
      r.derivation = "K = No. Observations - Df Residuals = " + Shown(coefficients) +
                     (model == "OrderedModel" ? " parameters, the thresholds among them"
                                              : " coefficients (Df Model leaves out the constant)");
    } else {
      output.Warn("a " + model + " summary without No. Observations and Df Residuals: K is unknown", r.line);
    }
    if (model == "OLS" || model == "WLS" || model == "GLS") {
      r.k += 1;
      AddStep(r.derivation, "+ 1 for the error variance");
      r.counting = "statsmodels' AIC of " + model + " leaves out the error variance, 2 below R's AIC()";
    } else if (family == "Gaussian") {
      r.k += 1;
      AddStep(r.derivation, "+ 1 for the Gaussian scale");
    } else if (model == "NegativeBinomial" || model == "NegativeBinomialP" || model == "GeneralizedPoisson") {
      r.k += 1;
      AddStep(r.derivation, "+ 1 for the dispersion alpha");
    } else if (family == "Gamma" || family == "InverseGaussian") {
      r.k += 1;
      AddStep(r.derivation, "+ 1 for the " + family + " scale");
      r.counting = "statsmodels evaluates a " + family +
                   " GLM's log-likelihood at the Pearson estimate of the scale, R at its maximum";
    } else if (model == "GLM" && family.empty() && scale && scale->value != 1) {
      // summary2() names no family, but prints the scale: estimated (a
      // Gaussian, Gamma or inverse Gaussian GLM) where it is not 1, which
      // Poisson's and the binomial's is.
      r.k += 1;
      AddStep(r.derivation, "+ 1 for the scale, estimated as " + Shown(scale->value) +
                                " (summary2() names no family; Poisson's and the binomial's scale is 1)");
      r.counting = "statsmodels' AIC of a GLM leaves out the scale, 2 below R's AIC()";
    }
    records.push_back(std::move(r));
  }
  if (records.empty()) output.Refuse(0, "statsmodels output, but no summary with a log-likelihood");
  // A summary names no model: each is named by the file and its place in it.
  output.NameUnnamed(records, Numbering::ByPlace);
  return records;
}

}  // namespace

extern const ProgramReader kStatsmodelsReader{.looksLike = LooksLikeStatsmodelsOutput, .read = ReadStatsmodelsOutput};

}  // namespace drav::selection::fits
