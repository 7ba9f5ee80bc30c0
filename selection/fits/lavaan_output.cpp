// lavaan's summary(fit, fit.measures = TRUE), as releases 0.5 and 0.6
// print it, one model or several in a file, each a record in file order.
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
// A summary's log-likelihood section alone, as it is pasted into notes and
// supplements ("Loglikelihood and Information Criteria:" and the lines
// under it, without the summary's heading), is a model of its own: K the
// number of free parameters where release 0.5 prints it there, else the
// AIC's (K = AIC/2 + logLik, held to a whole number by the printed digits);
// n the "Number of observations" just above it, if pasted too.
// fitMeasures(fit, c("npar", "logl", ...)) prints a named vector, a model
// where it holds npar and logl: K = npar, which is lavaan's count less the
// equality constraints, as its own AIC has it; n = ntotal. Printed after
// the same fit's summary (the same object, or with no command to tell, the
// same numbers), it is that model again, not another.
#include <cctype>
#include <cmath>
#include <optional>

#include "selection/fits/lavaan_estimates.hpp"
#include "selection/fits/program_output.hpp"
#include "selection/fits/r_named_vector.hpp"
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

// A fitMeasures() vector that gives a model: npar and logl at the least.
// Other vectors R prints (a user's c(npar = 3, ...), a model's
// coefficients) are not models, and are passed over.
bool GivesModel(const NamedVector& measures) {
  return measures.Find("npar") != nullptr && measures.Find("logl") != nullptr;
}

bool HasFitMeasures(std::string_view text) {
  text = Opening(text);
  if (text.find("npar") == std::string_view::npos || text.find("logl") == std::string_view::npos) return false;
  const std::vector<TranscriptLine> lines = ReadTranscript(text);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (const auto measures = NamedVectorAt(lines, i)) {
      if (GivesModel(*measures)) return true;
      i = measures->last;
    }
  }
  return false;
}

bool StartsExcerpt(std::string_view line) { return Trimmed(line) == "Loglikelihood and Information Criteria:"; }

bool LooksLikeLavaanOutput(std::string_view text) {
  for (std::size_t at = text.find("lavaan "); at != std::string_view::npos; at = text.find("lavaan ", at + 1)) {
    const std::size_t end = text.find('\n', at);
    if (StartsSummary(text.substr(at, end == std::string_view::npos ? text.size() - at : end - at))) return true;
  }
  return Opening(text).find("Loglikelihood user model (H0)") != std::string_view::npos || HasFitMeasures(text) ||
         text.find("Chi-Squared Difference Test") != std::string_view::npos;
}

// anova() of lavaan fits (lavTestLRT()): "Chi-Squared Difference Test",
// or "Scaled Chi-Squared ..." under a robust estimator. Its Df is the
// chi-square's, not K, and it prints no log-likelihood.
constexpr std::string_view kDifferenceTest =
    "anova() of lavaan fits prints each model's chi-square df, not its K, and no log-likelihood; print "
    "fitMeasures(fit, c(\"logl\", \"npar\", \"ntotal\")) of each";

bool StartsDifferenceTest(std::string_view line) {
  return Trimmed(line).ends_with("Chi-Squared Difference Test");
}

// What a summary prints around its model's numbers, wanted once it ends.
struct Summary {
  bool excerpt = false;    // a log-likelihood section without the summary around it
  std::string estimator;
  double parameters = kUnknown;
  double constraints = 0;
  bool normal = true;      // the fit ended normally
  bool estimates = false;  // the parameter table is printed
  bool means = false;      // and holds intercepts
};

// Every line this reader wants starts with a capital, or with "lavaan";
// the parameter tables, most of a summary, need no look.
bool Wanted(std::string_view line) {
  const std::string_view trimmed = Trimmed(line);
  return !trimmed.empty() && (trimmed[0] == 'l' || std::isupper(static_cast<unsigned char>(trimmed[0])));
}

// One line of a summary, into its record or into what is known of the
// summary; `i` moves past the groups' lines that follow their heading.
void TakeLine(const std::vector<TranscriptLine>& lines, std::size_t& i, FitRecord& r, Summary& summary) {
  const std::string_view line = lines[i].text;
  if (line.starts_with("Parameter Estimates:") || line.starts_with("Parameter estimates:")) {
    summary.estimates = true;
  } else if (line.starts_with("Intercepts:")) {
    summary.means = true;
  } else if (StartsWithWord(line, "Estimator") && summary.estimator.empty()) {
    const auto words = Words(line);
    if (words.size() > 1) summary.estimator = std::string(words[1]);
  } else if (const auto p = NumberAfter(line, "Number of model parameters")) {
    summary.parameters = p->value;
  } else if (const auto f = NumberAfter(line, "Number of free parameters")) {
    summary.parameters = f->value;
  } else if (const auto c = NumberAfter(line, "Number of equality constraints")) {
    summary.constraints = c->value;
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

// A summary read to its end: whether its model can be ranked, and K as
// lavaan's own AIC counts it.
void Finish(FitRecord& r, const Summary& summary, ProgramOutput& output) {
  if (!summary.normal) {
    r.kind = LikelihoodKind::None;
    output.Flag(r, "lavaan says the fit did not end normally; its estimates and likelihood are not to be trusted",
                r.line);
  } else if (!Likelihood(summary.estimator)) {
    r.kind = LikelihoodKind::None;
    output.Flag(r, "the " + summary.estimator + " estimator fits no likelihood, so the model has no AIC; refit with "
                   "estimator = \"ML\" or \"MLR\" to rank it", r.line);
  } else if (std::isnan(r.logLik)) {
    r.kind = LikelihoodKind::None;
    output.Flag(r, "summary() printed without fit.measures = TRUE shows no log-likelihood", r.line);
  }
  if (summary.estimates && !summary.means && r.kind != LikelihoodKind::None) {
    r.counting = "lavaan without a mean structure leaves the observed variables' means out of K, which Mplus "
                 "counts; the log-likelihood is the same";
  }
  if (!std::isnan(summary.parameters)) {
    r.k = summary.parameters - summary.constraints;
    AddStep(r.derivation, "K = " + Shown(summary.parameters) + " free parameters" +
                              (summary.constraints > 0 ? " - " + Shown(summary.constraints) + " equality constraints"
                                                       : ""));
  } else if (summary.excerpt && !std::isnan(r.aic) && !std::isnan(r.logLik)) {
    // lavaan's AIC counts K as its own summary does; the section prints
    // both to three decimals, which fix a whole K.
    if (const auto k = WholeNumber(r.aic / 2 + r.logLik, r.logLikHalfUnit * 2 + 1e-9)) {
      r.k = *k;
      AddStep(r.derivation, "K = AIC/2 + logLik");
    }
  }
  if (summary.excerpt && std::isnan(r.n)) AddStep(r.derivation, std::string(kNNotPrinted));
}

// K as a summary gives it, before Finish: nothing where it prints no count.
double SummaryK(const Summary& summary) { return summary.parameters - summary.constraints; }

// A fitMeasures() vector's model, as read: a logl of NA is told once the
// vector is known to be no other model's.
FitRecord MeasuresModel(const NamedVector& measures, std::int64_t line, const ProgramOutput& output) {
  FitRecord r = output.Model(line);
  if (const NamedValue* npar = measures.Find("npar"); npar && npar->value) r.k = npar->value->value;
  r.derivation = "K = npar of fitMeasures()";
  if (const NamedValue* n = measures.Find("ntotal"); n && n->value) {
    r.n = n->value->value;
  } else {
    AddStep(r.derivation, std::string(kNNotPrinted));
  }
  if (const NamedValue* logl = measures.Find("logl"); logl && logl->value) {
    r.logLik = logl->value->value;
    r.logLikHalfUnit = logl->value->halfUnit;
  }
  if (const NamedValue* aic = measures.Find("aic"); aic && aic->value) r.aic = aic->value->value;
  if (const NamedValue* bic = measures.Find("bic"); bic && bic->value) r.bic = bic->value->value;
  return r;
}

bool SameCount(double a, double b) { return std::isnan(a) || std::isnan(b) || a == b; }

// Whether a vector's model is that of `earlier`, the same fit printed
// before it, and is then taken into it. `open` is the summary of `earlier`
// where it is still being read: printed without fit.measures, it gets its
// log-likelihood from the vector.
bool SameFit(FitRecord& earlier, const Summary* open, const FitRecord& r, std::int64_t line) {
  const double k = open ? SummaryK(*open) : earlier.k;
  if (k != r.k || !SameCount(earlier.n, r.n)) return false;
  if (std::isnan(r.logLik)) return std::isnan(earlier.logLik);  // neither has a likelihood to give
  if (std::isnan(earlier.logLik)) {
    if (!open) return false;
    earlier.logLik = r.logLik;
    earlier.logLikHalfUnit = r.logLikHalfUnit;
    earlier.aic = r.aic;
    earlier.bic = r.bic;
    AddStep(earlier.derivation, "logLik from fitMeasures() on line " + std::to_string(line));
    return true;
  }
  if (std::fabs(earlier.logLik - r.logLik) > earlier.logLikHalfUnit + r.logLikHalfUnit + 1e-9) return false;
  AddStep(earlier.derivation, "fitMeasures() on line " + std::to_string(line) + " agrees");
  return true;
}

std::vector<FitRecord> ReadLavaanOutput(std::string_view text, ProgramOutput& output) {
  const std::vector<TranscriptLine> lines = ReadTranscript(text);
  std::vector<FitRecord> records;
  Summary summary;
  LavaanEstimates estimates;
  bool open = false;  // the last record is a summary still being read
  struct Observations {
    double n;
    std::int64_t line;
  };
  std::optional<Observations> observations;  // outside a summary, for the section below it
  std::optional<std::int64_t> differenceTest;  // the line of one, not read
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].command) {
      estimates.Stop();
      continue;
    }
    if (const auto measures = NamedVectorAt(lines, i); measures && GivesModel(*measures)) {
      const std::string object = PrintedObject(CommandBefore(lines, i));
      // The same object printed before, or with no command to tell, the
      // model just before it.
      std::size_t earlier = records.size();
      for (std::size_t e = records.size(); e-- > 0 && earlier == records.size();) {
        if (object.empty() || records[e].model == object) earlier = e;
      }
      FitRecord r = MeasuresModel(*measures, lines[i].number, output);
      const bool again = earlier < records.size() &&
                         SameFit(records[earlier], open && earlier + 1 == records.size() ? &summary : nullptr, r,
                                 lines[i].number);
      if (open) Finish(records.back(), summary, output);
      open = false;
      if (!again) {
        r.model = object;
        if (std::isnan(r.logLik)) {
          r.kind = LikelihoodKind::None;
          output.Flag(r, "fitMeasures() gives logl as NA: the fit has no likelihood, so no AIC ranks it", r.line);
        }
        records.push_back(std::move(r));
      }
      i = measures->last;
      continue;
    }
    if (open) estimates.Take(lines[i].text, records.back());
    if (!Wanted(lines[i].text)) continue;
    if (StartsDifferenceTest(lines[i].text)) {
      estimates.Stop();
      if (open) Finish(records.back(), summary, output);
      open = false;
      if (!differenceTest) differenceTest = lines[i].number;
    } else if (StartsSummary(lines[i].text)) {
      estimates.Stop();
      if (open) Finish(records.back(), summary, output);
      records.push_back(output.Model(lines[i].number));
      records.back().model = PrintedObject(CommandBefore(lines, i));
      summary = Summary{};
      summary.normal = lines[i].text.find("NOT") == std::string_view::npos;
      open = true;
      observations.reset();
    } else if (StartsExcerpt(lines[i].text) && (!open || !std::isnan(records.back().logLik))) {
      // The section of a summary already read, or of none: never the
      // numbers of one model into another's record.
      if (open) Finish(records.back(), summary, output);
      records.push_back(output.Model(observations ? observations->line : lines[i].number));
      if (observations) records.back().n = observations->n;
      summary = Summary{};
      summary.excerpt = true;
      open = true;
      observations.reset();
    } else if (const auto n = NumberAfter(lines[i].text, "Number of observations");
               n && (!open || summary.excerpt || !std::isnan(records.back().logLik))) {
      // Every summary prints its n above its log-likelihood: one below it,
      // or outside a summary, counts the section pasted below it.
      if (open) Finish(records.back(), summary, output);
      open = false;
      observations = Observations{n->value, lines[i].number};
    } else if (open) {
      TakeLine(lines, i, records.back(), summary);
    }
  }
  if (records.empty()) {
    output.Refuse(0, "lavaan output, but no summary() or fitMeasures() in it" +
                         (differenceTest ? "; line " + std::to_string(*differenceTest) + ": " + std::string(kDifferenceTest)
                                         : std::string()));
  }
  if (differenceTest) output.Note(std::string(kDifferenceTest), *differenceTest);
  if (open) Finish(records.back(), summary, output);
  // Named by the object printed where the transcript shows it; else by the
  // file, numbered where it holds more than one.
  output.NameUnnamed(records, Numbering::ByPlace);
  return records;
}

}  // namespace

extern const ProgramReader kLavaanReader{.looksLike = LooksLikeLavaanOutput, .read = ReadLavaanOutput};

}  // namespace drav::selection::fits
