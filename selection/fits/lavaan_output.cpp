// lavaan prints the log-likelihood and the information criteria only with
// fit.measures = TRUE. K is the number of free parameters less the
// equality constraints among them, as lavaan's own AIC counts:
//   0.6.x "Number of model parameters  21" and "Number of equality
//         constraints  1" at the top;
//   0.6-0 to 0.6-8 "Number of free parameters" at the top;
//   0.5.x "Number of free parameters" in the log-likelihood section, the
//         equality constraints already taken out.
// n is the observations used: the first of "Used  Total", the groups'
// added up. A robust estimator (MLR) prints a second column, which repeats
// the same ordinary log-likelihood: the first is read.
#include "selection/fits/fit_refusal.hpp"
#include "selection/fits/lavaan_output.hpp"

#include <cctype>
#include <cmath>

#include "base/errors.hpp"
#include "selection/fits/r_transcript.hpp"

namespace drav::selection::fits {
namespace {

bool StartsSummary(std::string_view line) {
  line = Trimmed(line);
  return line.starts_with("lavaan ") &&
         (line.find("ended normally") != std::string_view::npos ||
          line.find("converged normally") != std::string_view::npos ||
          line.find("did NOT end normally") != std::string_view::npos ||
          line.find("did NOT converge") != std::string_view::npos);
}

// The estimators that maximise a likelihood; the others (DWLS, WLSMV, ULS,
// GLS, ...) fit a discrepancy function and print none.
bool Likelihood(std::string_view estimator) {
  return estimator == "ML" || estimator == "MLR" || estimator == "MLM" || estimator == "MLMV" ||
         estimator == "MLMVS" || estimator == "MLF" || estimator.empty();
}

// The observations of every group, each line "name  used  [total]".
double GroupObservations(const std::vector<TranscriptLine>& lines, std::size_t& i) {
  double sum = 0;
  for (; i + 1 < lines.size() && !lines[i + 1].command && lines[i + 1].text.starts_with("    "); ++i) {
    for (std::string_view word : Words(lines[i + 1].text)) {
      if (const auto value = ReadPrinted(word)) {
        sum += value->value;
        break;
      }
    }
  }
  return sum;
}

}  // namespace

bool LooksLikeLavaanOutput(std::string_view text) {
  for (std::size_t at = text.find("lavaan "); at != std::string_view::npos; at = text.find("lavaan ", at + 1)) {
    const std::size_t end = text.find('\n', at);
    if (StartsSummary(text.substr(at, end == std::string_view::npos ? text.size() - at : end - at))) return true;
  }
  return false;
}

std::vector<FitRecord> ReadLavaanOutput(std::string_view text, const std::string& source, Diagnostics& diagnostics) {
  const std::vector<TranscriptLine> lines = ReadTranscript(text);
  std::vector<FitRecord> records;
  std::vector<std::string> objects;
  std::string estimator;
  double parameters = kUnknown;
  double constraints = 0;
  bool normal = true;
  bool estimates = false;  // the parameter table is printed
  bool means = false;      // and holds intercepts
  const auto finish = [&] {
    if (records.empty()) return;
    FitRecord& r = records.back();
    if (!normal) {
      r.kind = LikelihoodKind::None;
      r.warnings.push_back("lavaan says the fit did not end normally; its estimates and likelihood are not to be trusted");
    } else if (!Likelihood(estimator)) {
      r.kind = LikelihoodKind::None;
      r.warnings.push_back("the " + estimator + " estimator fits no likelihood, so the model has no AIC; refit with "
                           "estimator = \"ML\" or \"MLR\" to rank it");
    } else if (std::isnan(r.logLik)) {
      r.kind = LikelihoodKind::None;
      r.warnings.push_back("summary() printed without fit.measures = TRUE shows no log-likelihood");
    }
    if (estimates && !means && r.kind != LikelihoodKind::None) {
      r.counting = "lavaan without a mean structure leaves the observed variables' means out of K, which Mplus "
                   "counts; the log-likelihood is the same";
    }
    if (!std::isnan(parameters)) {
      r.k = parameters - constraints;
      AddStep(r.derivation, "K = " + Shown(parameters) + " free parameters" +
                                (constraints > 0 ? " - " + Shown(constraints) + " equality constraints" : ""));
    }
    for (const std::string& warning : r.warnings) diagnostics.Warn(warning, source, r.line);
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].command) continue;
    const std::string_view line = lines[i].text;
    // Every line this reader wants starts with a capital, or with "lavaan";
    // the parameter tables, most of a summary, need no look.
    const std::string_view trimmed = Trimmed(line);
    if (trimmed.empty() || (trimmed[0] != 'l' && !std::isupper(static_cast<unsigned char>(trimmed[0])))) continue;
    if (StartsSummary(line)) {
      finish();
      FitRecord r;
      r.source = source;
      r.program.assign("lavaan");
      r.line = lines[i].number;
      records.push_back(std::move(r));
      objects.push_back(PrintedObject(CommandBefore(lines, i)));
      estimator.clear();
      parameters = kUnknown;
      constraints = 0;
      estimates = means = false;
      normal = line.find("NOT") == std::string_view::npos;
      continue;
    }
    if (records.empty()) continue;
    FitRecord& r = records.back();
    if (line.starts_with("Parameter Estimates:") || line.starts_with("Parameter estimates:")) {
      estimates = true;
    } else if (line.starts_with("Intercepts:")) {
      means = true;
    } else if (StartsWithWord(line, "Estimator") && estimator.empty()) {
      const auto words = Words(line);
      if (words.size() > 1) estimator = std::string(words[1]);
    } else if (const auto p = NumberAfter(line, "Number of model parameters")) {
      parameters = p->value;
    } else if (const auto f = NumberAfter(line, "Number of free parameters")) {
      parameters = f->value;
    } else if (const auto c = NumberAfter(line, "Number of equality constraints")) {
      constraints = c->value;
    } else if (StartsWithWord(line, "Number of observations per group")) {
      r.n = GroupObservations(lines, i);
      r.derivation = "n = the observations used in every group, added up";
    } else if (const auto n = NumberAfter(line, "Number of observations")) {
      r.n = n->value;
    } else if (const auto ll = NumberAfter(line, "Loglikelihood user model (H0)")) {
      r.logLik = ll->value;
      r.logLikHalfUnit = ll->halfUnit;
    } else if (const auto aic = NumberAfter(line, "Akaike (AIC)")) {
      r.aic = aic->value;
    } else if (const auto bic = NumberAfter(line, "Bayesian (BIC)")) {
      r.bic = bic->value;
    }
  }
  finish();
  if (records.empty()) Refuse(source, 0, "lavaan output, but no summary() in it");
  // Named by the object printed where the transcript shows it; else by the
  // file, numbered where it holds more than one.
  for (std::size_t i = 0; i < records.size(); ++i) {
    records[i].model = !objects[i].empty()     ? objects[i]
                       : records.size() == 1 ? FileStem(source)
                                             : FileStem(source) + " (" + std::to_string(i + 1) + ")";
  }
  return records;
}

}  // namespace drav::selection::fits
