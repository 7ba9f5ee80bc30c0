// Python statsmodels' summary() of a regression's results, as printed or as
// a notebook holds it: one record per summary table. statsmodels prints a
// summary as two columns of "Label:  value" pairs over the coefficient
// table. Its log-likelihood comes to five significant digits ("%#8.5g":
// -12346. for a large one), and K is derived:
//   Df Model leaves out the constant, so K = No. Observations - Df
//   Residuals, the coefficients with the constant;
//   + 1 for the error variance of OLS, WLS and GLS, which R's AIC() counts
//   and statsmodels' printed AIC does not (it is 2 below R's);
//   + 1 for the scale of a Gaussian GLM, as for OLS (the same model);
//   + 1 for the scale of a Gamma or inverse Gaussian GLM, whose
//   log-likelihood statsmodels evaluates at the Pearson estimate of the
//   scale rather than at its maximum, as R does: the two programs' values
//   differ a little, and are said to when ranked together;
//   + 1 for the dispersion (alpha) of the discrete negative binomial and
//   generalized Poisson models, a parameter of the fit that Df Residuals
//   leaves out and statsmodels' own AIC counts.
// Logit, Probit, Poisson and the other GLMs print no AIC; it is computed
// from the log-likelihood.
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

bool StartsTable(std::string_view line) {
  const std::string_view t = Trimmed(line);
  return t.ends_with("Regression Results") || t.ends_with("Model Results");
}

bool LooksLikeStatsmodelsOutput(std::string_view text) {
  return text.find("Dep. Variable:") != std::string_view::npos &&
         text.find("Regression Results") != std::string_view::npos &&
         text.find("Log-Likelihood:") != std::string_view::npos;
}

std::vector<FitRecord> ReadStatsmodelsOutput(std::string_view text, ProgramOutput& output) {
  const std::vector<TextLine> lines = SplitLines(text);
  std::vector<FitRecord> records;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!StartsTable(lines[i].text)) continue;
    FitRecord r = output.Model(lines[i].number);
    std::string model;
    std::string family;
    std::optional<Printed> nobs, dfResid;
    // The header runs from the first rule to the next.
    std::size_t j = i + 2;
    for (; j < lines.size() && !lines[j].text.starts_with("===") && !lines[j].text.starts_with("---"); ++j) {
      const std::string_view line = lines[j].text;
      if (const auto m = Field(line, "Model:"); m && model.empty()) model = std::string(*m);
      if (const auto f = Field(line, "Model Family:")) family = std::string(*f);
      if (const auto n = Field(line, "No. Observations:")) nobs = ReadPrinted(*n);
      if (const auto d = Field(line, "Df Residuals:")) dfResid = ReadPrinted(*d);
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
    if (std::isnan(r.logLik)) {
      output.Note("a " + model + " summary without a log-likelihood is left out", r.line);
      continue;
    }
    if (nobs) r.n = nobs->value;
    if (nobs && dfResid) {
      const double coefficients = nobs->value - dfResid->value;
      r.k = coefficients;
      r.derivation = "K = No. Observations - Df Residuals = " + Shown(coefficients) +
                     " coefficients (Df Model leaves out the constant)";
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
