// Mplus's .out files: one run a file, or several runs one after another,
// each a record named by its TITLE. What one run prints that a ranking
// needs is read only where it belongs to the model fitted:
//   n      "Number of observations" (or "Total sample size" of several
//          groups) in SUMMARY OF ANALYSIS;
//   K      "Number of Free Parameters" in MODEL FIT INFORMATION;
//   logLik its "H0 Value", which is the ordinary log-likelihood also under
//          MLR: the scaling correction factor printed beside it serves
//          difference tests, and Mplus's own AIC uses the unscaled value.
// TECH11 and TECH14 print an "H0 Loglikelihood Value" of the model with
// one class fewer, and the random starts list other local maxima: neither
// section is read. Large numbers come with Fortran's D exponent.
#include <cctype>
#include <cmath>

#include "selection/fits/printed_text.hpp"
#include "selection/fits/program_output.hpp"

namespace drav::selection::fits {
namespace {

// Sections start with a line of capitals at the left margin.
bool IsHeading(std::string_view line) {
  if (line.empty() || line[0] == ' ' || line[0] == '\t') return false;
  bool letter = false;
  for (char c : line) {
    if (std::islower(static_cast<unsigned char>(c))) return false;
    letter = letter || std::isupper(static_cast<unsigned char>(c));
  }
  return letter;
}

std::string Upper(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

// The estimators that maximise a likelihood; WLSMV and its kin fit a
// discrepancy function, and BAYES prints a DIC and a BIC but no maximum.
bool Maximises(std::string_view estimator) {
  return estimator.empty() || estimator == "ML" || estimator == "MLR" || estimator == "MLF" || estimator == "MLM" ||
         estimator == "MLMV";
}

// A message that may run over several lines, to its blank line.
std::string Message(const std::vector<TextLine>& lines, std::size_t i) {
  std::string text;
  for (; i < lines.size() && !Trimmed(lines[i].text).empty(); ++i) {
    if (!text.empty()) text.push_back(' ');
    text.append(Trimmed(lines[i].text));
  }
  return text;
}

// MODEL RESULTS: under a heading at the left margin that names a class or
// a group ("Latent Class 2", "Group FEMALE"), indented headings ("VISUAL
// BY", "Y ON", "Intercepts", "Residual Variances") each over rows of a
// parameter: its name, estimate, SE. A BY, ON or WITH row is named with its
// heading, "VISUAL BY X2"; intercepts and means are terms too, variances
// and thresholds are not. A parameter fixed in the model prints an SE of 0
// (and 999 beside it): its SE is unknown, not nought.
class ModelResults {
 public:
  void Take(std::string_view line, FitRecord& r) {
    const auto words = Words(line);
    if (words.empty() || words[0] == "Estimate" || words[0] == "Two-Tailed") return;
    if (line[0] != ' ') {
      group_ = std::string(Trimmed(line)) + ": ";
      return;
    }
    const auto estimate = words.size() > 2 ? ReadPrinted(words[1], true) : std::nullopt;
    if (!estimate) {
      heading_ = std::string(Trimmed(line));
      const std::size_t last = heading_.rfind(' ');
      const std::string_view verb = last == std::string::npos ? std::string_view() : std::string_view(heading_).substr(last + 1);
      // "VISUAL   BY": one blank between the factor and its verb.
      if (verb == "BY" || verb == "ON" || verb == "WITH") heading_ = std::string(Words(heading_)[0]) + " " + std::string(verb);
      return;
    }
    const std::string name = group_ + heading_ + " " + std::string(words[0]);
    if (heading_.ends_with("Variances") || heading_ == "Thresholds") {
      r.notTerms.push_back(name);
      return;
    }
    const auto se = ReadPrinted(words[2], true);
    r.terms.push_back({name, estimate->value, se && se->value > 0 ? se->value : kUnknown});
  }

 private:
  std::string group_;
  std::string heading_;
};

FitRecord ReadRun(const std::vector<TextLine>& lines, std::size_t begin, std::size_t end, ProgramOutput& output) {
  FitRecord r = output.Model(lines[begin].number);
  std::string section;
  std::string estimator;
  std::string failure;
  std::string title;
  double scaling = kUnknown;
  bool averaged = false;
  ModelResults results;
  for (std::size_t i = begin; i < end; ++i) {
    const std::string_view line = lines[i].text;
    const std::string_view trimmed = Trimmed(line);
    if (IsHeading(line)) {
      section = std::string(Trimmed(line));
    } else if (section == "MODEL RESULTS") {
      results.Take(line, r);
    }
    if (section == "INPUT INSTRUCTIONS" && title.empty() && Upper(trimmed.substr(0, 6)) == "TITLE:") {
      title = std::string(Trimmed(trimmed.substr(6)));
      if (title.empty() && i + 1 < end) title = std::string(Trimmed(lines[i + 1].text));
    }
    if (trimmed.find("DID NOT TERMINATE NORMALLY") != std::string_view::npos ||
        trimmed.starts_with("NO CONVERGENCE") ||
        trimmed.starts_with("THE LOGLIKELIHOOD DECREASED IN THE LAST EM ITERATION")) {
      if (failure.empty()) failure = Message(lines, i);
    } else if (trimmed.find("BEST LOGLIKELIHOOD VALUE WAS NOT REPLICATED") != std::string_view::npos ||
               trimmed.find("BEST LOGLIKELIHOOD VALUE HAS NOT BEEN REPLICATED") != std::string_view::npos) {
      output.Flag(r, "Mplus: the best log-likelihood was not replicated; the solution may be a local maximum "
                     "(more random starts)", r.line);
    }
    if (section == "SUMMARY OF ANALYSIS") {
      if (const auto n = NumberAfter(line, "Number of observations")) r.n = n->value;
      if (const auto n = NumberAfter(line, "Total sample size")) r.n = n->value;
      if (StartsWithWord(line, "Estimator") && estimator.empty()) {
        const auto words = Words(line);
        estimator = std::string(words.back());
      }
    } else if (section == "MODEL FIT INFORMATION") {
      if (const auto k = NumberAfter(line, "Number of Free Parameters")) r.k = k->value;
      if (const auto ll = NumberAfter(line, "H0 Value", true)) {
        r.logLik = ll->value;
        r.logLikHalfUnit = ll->halfUnit;
      } else if (trimmed == "H0 Value") {
        averaged = true;  // TYPE = IMPUTATION: a mean and SD over the data sets follow
      }
      if (const auto s = NumberAfter(line, "H0 Scaling Correction Factor", true)) scaling = s->value;
      if (const auto aic = NumberAfter(line, "Akaike (AIC)", true)) r.aic = aic->value;
      if (const auto bic = NumberAfter(line, "Bayesian (BIC)", true)) r.bic = bic->value;
    }
  }
  r.model = title;
  if (!failure.empty()) {
    r.kind = LikelihoodKind::None;
    output.Flag(r, "Mplus: " + failure, r.line);
  } else if (!Maximises(Upper(estimator))) {
    r.kind = LikelihoodKind::None;
    output.Flag(r, "the " + estimator + " estimator gives no maximised likelihood, so the model has no AIC; "
                   "ESTIMATOR = ML or MLR gives one", r.line);
    r.logLik = kUnknown;
  } else if (averaged) {
    r.kind = LikelihoodKind::None;
    output.Flag(r, "the H0 value is averaged over imputed data sets, no one fit's likelihood", r.line);
  } else if (std::isnan(r.logLik)) {
    r.kind = LikelihoodKind::None;
    output.Flag(r, "MODEL FIT INFORMATION holds no H0 log-likelihood", r.line);
  }
  r.derivation = "K = Number of Free Parameters; n from SUMMARY OF ANALYSIS; logLik = H0 Value";
  if (!std::isnan(scaling)) {
    r.derivation += " (unscaled; its " + estimator + " scaling correction factor " + Shown(scaling) +
                    " serves difference tests, not AIC)";
  }
  return r;
}

bool LooksLikeMplusOutput(std::string_view text) {
  // The banner heads the file; the section headings may lie anywhere.
  const std::string_view start = Opening(text, 4096);
  return start.find("Mplus VERSION") != std::string_view::npos ||
         (text.find("MODEL FIT INFORMATION") != std::string_view::npos &&
          text.find("SUMMARY OF ANALYSIS") != std::string_view::npos);
}

std::vector<FitRecord> ReadMplusOutput(std::string_view text, ProgramOutput& output) {
  const std::vector<TextLine> lines = SplitLines(text);
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].text.starts_with("Mplus VERSION")) starts.push_back(i);
  }
  // An output without the banner is one run; an empty one is none, and
  // has no line for a run to start on.
  if (lines.empty()) output.Refuse(0, "empty; no Mplus run in it");
  if (starts.empty()) starts.push_back(0);
  std::vector<FitRecord> records;
  for (std::size_t s = 0; s < starts.size(); ++s) {
    const std::size_t end = s + 1 < starts.size() ? starts[s + 1] : lines.size();
    records.push_back(ReadRun(lines, starts[s], end, output));
  }
  output.NameUnnamed(records, Numbering::ByPlace);
  return records;
}

}  // namespace

extern const ProgramReader kMplusReader{.looksLike = LooksLikeMplusOutput, .read = ReadMplusOutput};

}  // namespace drav::selection::fits
