// Program MARK's output (the text file a run writes, as the results browser
// shows it): one record for every model it estimated. MARK prints -2logL
// without the multinomial constants, so it may be negative and ranks only
// beside other MARK fits of the same encounter histories; K is the count of
// parameters MARK found estimable, n its effective sample size. An aborted
// run is refused ("FILE:LINE: why"): an error MARK printed inside a model, a
// model it began and never finished, or output that ends before MARK's
// closing "proc stop".
#include <cmath>
#include <cstdio>
#include <optional>

#include "selection/fits/printed_text.hpp"
#include "selection/fits/program_output.hpp"

namespace drav::selection::fits {
namespace {

// "KEY { model name } = value", MARK's shape for every statistic of a model.
struct Keyed {
  std::string_view key;
  std::string_view model;
  std::string_view value;  // after the '=' or ':'
};

std::optional<Keyed> ReadKeyed(std::string_view line) {
  const std::size_t open = line.find('{');
  const std::size_t close = line.rfind('}');
  if (open == std::string_view::npos || close == std::string_view::npos || close < open) return std::nullopt;
  std::string_view rest = Trimmed(line.substr(close + 1));
  if (rest.empty() || (rest[0] != '=' && rest[0] != ':')) return std::nullopt;
  return Keyed{Trimmed(line.substr(0, open)), Trimmed(line.substr(open + 1, close - open - 1)), Trimmed(rest.substr(1))};
}

std::optional<Printed> FirstNumber(std::string_view value) {
  const auto words = Words(value);
  if (words.empty()) return std::nullopt;
  return ReadPrinted(words[0]);
}

struct Model {
  std::string name;
  std::int64_t line = 0;      // its "proc estimate", or its -2logL where none is shown
  std::int64_t m2llLine = 0;
  std::optional<Printed> m2ll, k, aic, aicc, bic;
  std::optional<double> gapCount, thresholdCount;
  double n = kUnknown;
  int betas = 0;
  std::vector<PrintedTerm> terms;  // its betas, named as the design matrix's columns are
};

class MarkReader {
 public:
  explicit MarkReader(ProgramOutput& output) : output_(output) {}

  std::vector<FitRecord> Read(std::string_view text) {
    const auto lines = SplitLines(text);
    // Whatever a run printed before or after an error, it did not finish as
    // MARK meant it to; nothing of it is ranked.
    for (const auto& line : lines) {
      const std::string_view trimmed = Trimmed(line.text);
      if (trimmed.starts_with("* * ERROR") || trimmed.starts_with("ERROR")) {
        output_.Refuse(line.number, "MARK printed an error: '" + std::string(trimmed) +
                                        "'; a run that stopped on an error is not ranked");
      }
    }
    for (const auto& line : lines) Take(line);
    if (current_) Finish();
    if (sawInput_ && !sawStop_) {
      output_.Refuse(lines.empty() ? 0 : lines.back().number,
                     "the output ends before MARK's closing 'proc stop': the run was aborted or the file cut short, "
                     "so its last model may be missing or unfinished");
    }
    for (const auto& [line, name] : declared_) {
      output_.Refuse(line, "MARK began model {" + name + "} and never printed its -2logL: the run was aborted before "
                           "the model was estimated");
    }
    return std::move(records_);
  }

 private:
  void Take(const TextLine& printed) {
    const std::string_view line = Trimmed(printed.text);
    if (line.starts_with("INPUT ---")) return TakeInput(Trimmed(line.substr(9)), printed.number);
    if (StartsWithNoCase(line, "Effective sample size")) {
      const std::size_t equals = line.find('=');
      if (equals != std::string_view::npos) {
        if (const auto n = FirstNumber(line.substr(equals + 1))) ess_ = n->value;
      }
      return;
    }
    if (line.starts_with("* * WARNING")) {
      output_.Note("MARK says: " + std::string(line), printed.number);
      return;
    }
    // What follows is keyed by a model in braces, but for the rows of
    // betas; the tables of numbers between need no closer look.
    const bool braces = line.find('{') != std::string_view::npos;
    if (braces && ContainsNoCase(line, "Link Function Parameters of {")) {
      countingBetas_ = true;
      return;
    }
    if (braces && ContainsNoCase(line, "Real Function Parameters of {")) {
      countingBetas_ = false;
      return;
    }
    if (countingBetas_ && current_ && IsBetaRow(line)) {
      ++current_->betas;
      current_->terms.push_back(Beta(line));
      return;
    }
    if (!braces) return;
    const auto keyed = ReadKeyed(line);
    if (!keyed) return;
    if (keyed->key == "-2logL") return Begin(*keyed, printed.number);
    if (!current_ || keyed->model != current_->name) return;
    const auto value = FirstNumber(keyed->value);
    if (!value) return;
    if (EqualsNoCase(keyed->key, "Number of Estimated Parameters")) current_->k = value;
    else if (keyed->key == "AIC") current_->aic = value;
    else if (keyed->key == "AICc") current_->aicc = value;
    else if (keyed->key == "BIC") current_->bic = value;
    else if (StartsWithNoCase(keyed->key, "Gap Method")) current_->gapCount = value->value;
    else if (StartsWithNoCase(keyed->key, "Numerical Threshold Method")) current_->thresholdCount = value->value;
  }

  void TakeInput(std::string_view input, std::int64_t number) {
    sawInput_ = true;
    if (StartsWithNoCase(input, "proc stop")) {
      sawStop_ = true;
    } else if (StartsWithNoCase(input, "proc estimate")) {
      estimateLine_ = number;
    } else if (StartsWithNoCase(input, "model")) {
      const std::size_t open = input.find('{');
      const std::size_t close = input.rfind('}');
      if (open != std::string_view::npos && close != std::string_view::npos && close > open) {
        declared_.emplace_back(number, std::string(Trimmed(input.substr(open + 1, close - open - 1))));
      }
    }
  }

  // "1:Phi:(Intercept)   0.6816992   0.1707624   0.3470049   1.0163935":
  // the number before the colon is the beta's place, the rest its name.
  // An SE printed as 0 is a beta MARK did not estimate (confounded, or
  // fixed), whose SE is unknown rather than nought.
  static PrintedTerm Beta(std::string_view line) {
    const auto words = Words(line.substr(line.find(':') + 1));
    PrintedTerm term;
    term.name = std::string(words.front());
    if (const auto estimate = words.size() > 1 ? ReadPrinted(words[1]) : std::nullopt) term.estimate = estimate->value;
    if (const auto se = words.size() > 2 ? ReadPrinted(words[2]) : std::nullopt; se && se->value > 0) term.se = se->value;
    return term;
  }

  // A place, a colon and a name after it: "7:" alone names no beta.
  static bool IsBetaRow(std::string_view line) {
    std::size_t digits = 0;
    while (digits < line.size() && line[digits] >= '0' && line[digits] <= '9') ++digits;
    return digits > 0 && digits < line.size() && line[digits] == ':' && !Trimmed(line.substr(digits + 1)).empty();
  }

  void Begin(const Keyed& keyed, std::int64_t number) {
    if (current_) Finish();
    current_ = Model{};
    current_->name = std::string(keyed.model);
    current_->line = estimateLine_ > lastEnd_ ? estimateLine_ : number;
    current_->m2llLine = number;
    current_->m2ll = FirstNumber(keyed.value);
    current_->n = ess_;
    countingBetas_ = false;
    for (auto it = declared_.begin(); it != declared_.end(); ++it) {
      if (it->second == current_->name) {
        declared_.erase(it);
        break;
      }
    }
  }

  void Finish() {
    Model model = std::move(*current_);
    current_.reset();
    lastEnd_ = model.m2llLine;
    const std::string label = "model {" + model.name + "}: ";
    if (!model.m2ll) output_.Refuse(model.m2llLine, label + "-2logL is not a number");
    if (!model.k) {
      output_.Refuse(model.m2llLine,
                     label + "MARK never printed its 'Number of Estimated Parameters': the run was aborted before the "
                             "model was finished");
    }
    const double k = model.k->value;
    FitRecord record = output_.Model(model.line);
    record.model = model.name;
    record.logLik = -model.m2ll->value / 2;
    record.logLikHalfUnit = model.m2ll->halfUnit / 2;
    record.k = k;
    record.n = model.n;
    record.aic = model.aic ? model.aic->value : kUnknown;
    record.bic = model.bic ? model.bic->value : kUnknown;
    record.kind = LikelihoodKind::ConstantsDropped;
    record.derivation = "logLik = -(-2logL) / 2; K = Number of Estimated Parameters; n = Effective Sample Size";
    record.terms = std::move(model.terms);
    CheckCounts(model, label, record);
    if (model.betas > k) {
      record.counting = "MARK counts the parameters it finds estimable: " + Count(k) + " of the " +
                        std::to_string(model.betas) + " in the design";
    }
    if (std::isnan(model.n)) {
      output_.Flag(record, "no 'Effective Sample Size' before it: n is unknown and AICc cannot be had", model.line,
                   label);
    } else if (model.aicc && model.n > k + 1) {
      const double expected = model.m2ll->value + 2 * k + 2 * k * (k + 1) / (model.n - k - 1);
      if (std::fabs(expected - model.aicc->value) > model.aicc->halfUnit + model.m2ll->halfUnit + 1e-9) {
        output_.Flag(record,
                     "the printed AICc " + Number(model.aicc->value) + " is not -2logL + 2K + 2K(K+1)/(n-K-1) = " +
                         Number(expected) + " with K = " + Count(k) + " and n = " + Count(model.n),
                     model.m2llLine, label);
      }
    }
    records_.push_back(std::move(record));
  }

  // MARK decides K from the Hessian's singular values by two methods and by
  // the design's columns; where they disagree its AICc rests on a guess.
  void CheckCounts(const Model& model, const std::string& label, FitRecord& record) {
    const double k = model.k->value;
    if (model.gapCount && model.thresholdCount && *model.gapCount != *model.thresholdCount) {
      output_.Flag(record,
                   "MARK's two counts of estimable parameters disagree (gap method " + Count(*model.gapCount) +
                       ", threshold method " + Count(*model.thresholdCount) + "); it used K = " + Count(k) +
                       ". See which parameters are confounded before ranking it",
                   model.m2llLine, label);
    }
    if (model.betas > k) {
      output_.Flag(record,
                   "MARK counted K = " + Count(k) + " estimable parameters of the " + std::to_string(model.betas) +
                       " in the design; its AIC uses " + Count(k) +
                       ". Where a parameter sits at a boundary rather than being confounded, K should be " +
                       std::to_string(model.betas),
                   model.m2llLine, label);
    }
  }

  // As read, not cast to an integer: a count in a damaged output may lie
  // beyond any integer's range.
  static std::string Count(double value) { return Shown(value); }

  static std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.5f", value);
    return text;
  }

  ProgramOutput& output_;
  std::vector<FitRecord> records_;
  std::optional<Model> current_;
  std::vector<std::pair<std::int64_t, std::string>> declared_;
  double ess_ = kUnknown;
  std::int64_t estimateLine_ = 0;
  std::int64_t lastEnd_ = 0;
  bool countingBetas_ = false;
  bool sawInput_ = false;
  bool sawStop_ = false;
};

bool LooksLikeMarkOutput(std::string_view text) {
  // MARK's own marks, each at the start of a line after blanks; outputs of
  // other programs quoting them in the middle of a line are not MARK's.
  const std::string_view head = Opening(text, 1 << 20);
  for (const std::string_view mark : {std::string_view("-2logL {"), std::string_view("INPUT --- proc estimate")}) {
    for (std::size_t at = head.find(mark); at != std::string_view::npos; at = head.find(mark, at + 1)) {
      std::size_t before = at;
      while (before > 0 && (head[before - 1] == ' ' || head[before - 1] == '\t')) --before;
      if (before == 0 || head[before - 1] == '\n' || head[before - 1] == '\r') return true;
    }
  }
  return false;
}

std::vector<FitRecord> ReadMarkOutput(std::string_view text, ProgramOutput& output) {
  return MarkReader(output).Read(text);
}

}  // namespace

extern const ProgramReader kMarkReader{.looksLike = LooksLikeMarkOutput, .read = ReadMarkOutput};

}  // namespace drav::selection::fits
