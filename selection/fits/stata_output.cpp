// Stata's text log: the tables of `estat ic` and `estimates stats`
// (Obs or N, ll(null), ll(model), df, AIC, BIC) and SPost's fitstat
// (stata_fitstat.cpp), one record for each model they list, named as
// `estimates store` named it. The log around the tables tells what each fit
// was: a log pseudolikelihood (vce(robust), cluster, pweights) is of the
// kind that ranking refuses, a restricted likelihood (mixed, reml) is REML,
// and after regress K counts the residual variance that Stata's df leaves
// out. A table belongs to the fit in memory when it was made: the last
// estimation command, its output shown or hidden by quietly, never a
// postestimation command that prints a header of its own (margins) nor one
// Drav does not know. A row that cannot be read whole is refused, and so is
// a SMCL log, which `translate` turns into text.
#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

#include "selection/fits/model_names.hpp"
#include "selection/fits/printed_text.hpp"
#include "selection/fits/program_output.hpp"
#include "selection/fits/stata_commands.hpp"
#include "selection/fits/stata_fitstat.hpp"
#include "selection/fits/stata_log.hpp"
#include "selection/fits/stata_estimates.hpp"

namespace drav::selection::fits {
namespace {

// One estimation as the log shows it.
struct Fit {
  std::int64_t line = 0;  // its command
  std::int64_t likelihoodLine = 0;  // 0: its output is not in the log (quietly)
  Printed logLik{kUnknown, 0};      // as its header prints it
  bool pseudo = false;
  bool restricted = false;
  bool regress = false;  // its AIC counts the coefficients, not the residual variance
  std::string name;  // as `estimates store` gave it
  StataEstimates estimates;  // its table of coefficients
};

// One row of an information-criteria table.
struct Row {
  std::string name;  // "." for the estimates in memory
  std::int64_t line = 0;
  int fit = -1;      // the fit in memory when the table was made
  double n = 0, llNull = kUnknown, ll = 0, df = 0, aic = 0, bic = 0;
  double llHalfUnit = 0;  // ll(model) is printed to 7 significant digits at most
  std::string_view nColumn = "N";  // or "Obs", as the header names it
  bool regress = false;       // the table itself says so (fitstat after regress)
  std::string derivation;     // fitstat's, where the row is a fitstat column
};

bool IsSmcl(std::string_view text) { return Trimmed(Opening(text, 64)).starts_with("{smcl}"); }

std::string StoredName(std::string_view word) {
  while (!word.empty() && (word.back() == ',' || word.back() == ':')) word.remove_suffix(1);
  return std::string(word);
}

class StataReader {
 public:
  explicit StataReader(ProgramOutput& output) : output_(output) {}

  std::vector<FitRecord> Read(std::string_view text) {
    if (IsSmcl(text)) {
      const std::string stem = FileStem(output_.Source());
      output_.Refuse(1, "this is a SMCL log; Drav reads Stata's text logs: 'translate " + stem + ".smcl " + stem +
                            ".log' makes one, or 'log using FILE, text' writes one");
    }
    const auto lines = ReadStataLog(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const std::string_view line = lines[i].text;
      if (line.starts_with(". ")) {
        TakeCommand(Trimmed(line.substr(2)), lines[i].number);
      } else if (line.find("ll(null)") != std::string_view::npos && line.find("ll(model)") != std::string_view::npos) {
        i = TakeTable(lines, i);
      } else if (IsStataEstimatesHeading(line) && fitCommandLine_ == commandLine_ && !fits_.empty()) {
        // The coefficients of the fit this command made.
        StataEstimates& estimates = fits_.back().estimates;
        estimates = StataEstimates();
        while (i + 1 < lines.size() && estimates.Take(lines[i + 1].text)) ++i;
      } else if (StartsFitstat(lines, i)) {
        for (FitstatModel& model : ReadFitstat(lines, i)) TakeFitstat(model);
      } else {
        TakeFitText(Trimmed(line), lines[i].number);
      }
    }
    return Records();
  }

 private:
  void TakeCommand(std::string_view command, std::int64_t number) {
    command_ = ReadStataCommand(command);
    commandLine_ = number;
    if (command_.quiet && command_.kind == StataCommandKind::Estimation) {
      // Its output hidden, the fit is in memory all the same, with what its
      // options say of its likelihood.
      fits_.push_back({number, 0, {kUnknown, 0}, command_.pseudo, command_.restricted, command_.regress, {}, {}});
      current_ = static_cast<int>(fits_.size()) - 1;
      fitCommandLine_ = number;
      if (!command_.storeAs.empty()) Store(command_.storeAs);
    } else if (command_.quiet && command_.kind == StataCommandKind::Unknown) {
      current_ = -1;  // it may have fitted a model: which estimates are in memory cannot be told
    }
    // The words after the verb, whatever prefix stood before it.
    const auto words = Words(command_.arguments);
    const std::string_view verb = command_.verb;
    const bool estimates = verb.size() >= 3 && std::string_view("estimates").starts_with(verb);
    if (estimates && words.size() >= 2 && words[0].starts_with("sto")) return Store(StoredName(words[1]));
    if (verb == "eststo" && !words.empty()) return Store(StoredName(words[0]));
    if (estimates && words.size() >= 2 && words[0].starts_with("res")) {
      const auto stored = stored_.find(StoredName(words[1]));
      if (stored != stored_.end()) current_ = stored->second;
    }
  }

  void Store(const std::string& name) {
    if (current_ < 0) return;
    fits_[static_cast<std::size_t>(current_)].name = name;
    stored_[name] = current_;
  }

  // The header of an estimation names its likelihood; the first such line
  // after a command makes that command a fit.
  void TakeFitText(std::string_view line, std::int64_t number) {
    const bool pseudo = line.starts_with("Log pseudolikelihood") || line.starts_with("Log pseudo-likelihood");
    const bool restricted = line.starts_with("Log restricted-likelihood");
    const bool likelihood = pseudo || restricted || line.starts_with("Log likelihood");
    const std::size_t obs = line.find("Number of obs");
    const bool header = obs != std::string_view::npos && obs + 13 < line.size() &&
                        (line[obs + 13] == ' ' || line[obs + 13] == '=');
    // Postestimation prints headers too (margins: "Number of obs"), and
    // fits nothing.
    if ((!likelihood && !header) || command_.kind == StataCommandKind::Other) return;
    if (fitCommandLine_ != commandLine_) {
      fitCommandLine_ = commandLine_;
      fits_.push_back({commandLine_, 0, {kUnknown, 0}, false, false, command_.regress, {}, {}});
      current_ = static_cast<int>(fits_.size()) - 1;
      if (!command_.storeAs.empty()) Store(command_.storeAs);
    }
    Fit& fit = fits_.back();
    if (likelihood) {
      fit.pseudo = pseudo;
      fit.restricted = restricted;
      fit.likelihoodLine = number;
      // "Log likelihood = -9.5880424", which a fitstat's Saved column is
      // told by.
      const std::size_t equals = line.find('=');
      const auto words = Words(line.substr(equals == std::string_view::npos ? line.size() : equals + 1));
      if (!words.empty()) fit.logLik = ReadPrinted(words[0]).value_or(Printed{kUnknown, 0});
    }
  }

  // A fitstat column: the Current one (or the only one) is the fit in
  // memory; the Saved one the earlier fit whose log-likelihood it prints.
  void TakeFitstat(const FitstatModel& model) {
    Row row;
    row.name = ".";
    row.line = model.line;
    row.fit = model.saved ? FitPrinting(model.logLik, model.n) : current_;
    row.n = model.n;
    row.ll = model.logLik.value;
    row.llHalfUnit = model.logLik.halfUnit;
    row.df = model.k;
    row.aic = model.aic;
    row.bic = model.bic;
    row.regress = model.regress;
    row.derivation = "fitstat: " + model.derivation;
    rows_.push_back(std::move(row));
  }

  // The latest fit whose header, or an earlier table of which, prints this
  // log-likelihood; -1 where none does.
  int FitPrinting(const Printed& logLik, double n) const {
    const auto same = [&](const Printed& other) {
      return std::fabs(other.value - logLik.value) <= other.halfUnit + logLik.halfUnit + 1e-9;
    };
    for (std::size_t f = fits_.size(); f-- > 0;) {
      if (!std::isnan(fits_[f].logLik.value) && same(fits_[f].logLik)) return static_cast<int>(f);
    }
    for (std::size_t r = rows_.size(); r-- > 0;) {
      const Row& row = rows_[r];
      if (row.fit >= 0 && same({row.ll, row.llHalfUnit}) && (std::isnan(n) || row.n == n)) return row.fit;
    }
    return -1;
  }

  // The columns are named in the header: Obs or N, ll(null), ll(model), df,
  // then AIC and BIC, or the AICc and CAIC that estat ic's options ask for.
  std::size_t TakeTable(const std::vector<StataLogLine>& lines, std::size_t header) {
    columns_.clear();
    const std::string_view head = lines[header].text;
    if (const std::size_t bar = head.find('|'); bar != std::string_view::npos) {
      for (const auto word : Words(head.substr(bar + 1))) columns_.emplace_back(word);
    }
    std::size_t i = header + 1;
    while (i < lines.size() && lines[i].text.find('+') == std::string::npos) ++i;  // the rule under the header
    for (++i; i < lines.size(); ++i) {
      const std::string_view line = lines[i].text;
      const std::size_t bar = line.find('|');
      if (bar == std::string_view::npos) break;  // the closing rule
      TakeRow(line, bar, lines[i].number);
    }
    return i;
  }

  void TakeRow(std::string_view line, std::size_t bar, std::int64_t number) {
    const auto cells = Words(line.substr(bar + 1));
    Row row;
    row.name = std::string(Trimmed(line.substr(0, bar)));
    row.line = number;
    row.fit = current_;
    const auto printed = [&](std::string_view column) -> std::optional<Printed> {
      for (std::size_t i = 0; i < columns_.size() && i < cells.size(); ++i) {
        if (columns_[i] == column) return ReadGrouped(cells[i], ',');
      }
      return std::nullopt;
    };
    const auto read = [&](std::string_view column) -> std::optional<double> {
      const auto value = printed(column);
      return value ? std::optional<double>(value->value) : std::nullopt;
    };
    const auto n = read("N") ? read("N") : read("Obs");
    if (!read("N")) row.nColumn = "Obs";
    const auto ll = printed("ll(model)");
    const auto df = read("df");
    if (cells.size() != columns_.size() || !n || !ll || !df) {
      output_.Refuse(number, "Stata's row for '" + row.name +
                                 "' does not hold N, ll(model) and df as numbers under its header" +
                                 (ll || cells.size() != columns_.size() ? std::string()
                                                                        : ": without ll(model) it cannot be ranked"));
    }
    row.n = *n;
    row.ll = ll->value;
    row.llHalfUnit = ll->halfUnit;
    row.df = *df;
    row.aic = read("AIC").value_or(kUnknown);
    row.bic = read("BIC").value_or(kUnknown);
    if (const auto llNull = read("ll(null)")) row.llNull = *llNull;
    rows_.push_back(std::move(row));
  }

  // Stata shortens a long name to its first letters, "~" and its last
  // (weight_and~r); the stored names in the log tell which it was. Where
  // they do not, `doubt` says so.
  std::string Expand(const Row& row, std::string& doubt) const {
    const std::size_t tilde = row.name.find('~');
    if (tilde == std::string::npos) return row.name;
    const std::string_view prefix = std::string_view(row.name).substr(0, tilde);
    const std::string_view suffix = std::string_view(row.name).substr(tilde + 1);
    std::vector<std::string> matches;
    for (const auto& [name, fit] : stored_) {
      if (name.size() >= row.name.size() && name.starts_with(prefix) && name.ends_with(suffix)) matches.push_back(name);
    }
    if (matches.size() == 1) return matches[0];
    doubt = "Stata shortened the name '" + row.name + "' and the log stores " +
            (matches.empty() ? std::string("no model") : std::to_string(matches.size()) + " models") +
            " it could stand for: which fit it is, and whether its likelihood is a pseudolikelihood, cannot be told";
    return row.name;
  }

  std::vector<FitRecord> Records() {
    std::vector<FitRecord> records;
    std::map<std::string, std::size_t> named;  // a model listed again (estat ic, then estimates stats)
    std::map<int, std::size_t> unnamed;  // by fit: estat ic typed twice after one fit
    std::vector<std::int64_t> unseenFit;  // by record: the row whose fit the log does not show, or 0
    for (const Row& row : rows_) {
      int fitIndex = row.fit;
      std::string name = row.name;
      std::string doubt;
      if (name == ".") {
        if (fitIndex >= 0 && !fits_[static_cast<std::size_t>(fitIndex)].name.empty()) {
          name = fits_[static_cast<std::size_t>(fitIndex)].name;
        }
      } else {
        name = Expand(row, doubt);
        const auto stored = stored_.find(name);
        fitIndex = stored == stored_.end() ? -1 : stored->second;
      }
      const Fit* fit = fitIndex >= 0 ? &fits_[static_cast<std::size_t>(fitIndex)] : nullptr;
      FitRecord record = Record(row, fit, name);
      if (!doubt.empty()) record.warnings.push_back(std::move(doubt));
      if (name == ".") {
        record.model = output_.FileName();
        if (fitIndex >= 0 && unnamed.contains(fitIndex)) continue;
        if (fitIndex >= 0) unnamed[fitIndex] = records.size();
        records.push_back(std::move(record));
        unseenFit.push_back(fit ? 0 : row.line);
        continue;
      }
      const auto seen = named.find(name);
      if (seen == named.end()) {
        named[name] = records.size();
        records.push_back(std::move(record));
        unseenFit.push_back(fit ? 0 : row.line);
        continue;
      }
      FitRecord& earlier = records[seen->second];
      if (earlier.logLik != record.logLik || earlier.k != record.k || earlier.n != record.n) {
        record.warnings.push_back("listed again on line " + std::to_string(row.line) +
                                  " with other numbers than before; the later are read");
        record.line = earlier.line;
        earlier = std::move(record);
        unseenFit[seen->second] = fit ? 0 : row.line;
      }
    }
    NumberRepeatedNames(records);
    // What is amiss waited for the name the model ends with (the file's,
    // numbered, where the log names it "."); it is told once a model,
    // whichever rows listed it.
    for (std::size_t i = 0; i < records.size(); ++i) {
      FitRecord& record = records[i];
      const std::string label = "model '" + record.model + "': ";
      if (unseenFit[i] != 0) {
        output_.Note(label + "the log does not show the fit behind this row, so whether its likelihood is a "
                             "pseudolikelihood cannot be told",
                     unseenFit[i]);
      }
      for (std::string& text : std::exchange(record.warnings, {})) output_.Flag(record, std::move(text), record.line, label);
    }
    return records;
  }

  FitRecord Record(const Row& row, const Fit* fit, const std::string& name) {
    FitRecord record = output_.Model(fit ? fit->line : row.line);
    record.model = name;
    record.logLik = row.ll;
    record.logLikHalfUnit = row.llHalfUnit;
    record.k = row.df;
    record.n = row.n;
    record.aic = row.aic;
    record.bic = row.bic;
    record.kind = fit && fit->restricted ? LikelihoodKind::REML : LikelihoodKind::ML;
    record.derivation = !row.derivation.empty() ? row.derivation
                                                : "logLik = ll(model); K = df; n = " + std::string(row.nColumn);
    if (fit) {
      record.terms = fit->estimates.terms;
      record.notTerms = fit->estimates.notTerms;
    }
    if (fit && fit->likelihoodLine == 0 && fit->pseudo) {
      record.kind = LikelihoodKind::Pseudo;
      record.warnings.push_back("its command (line " + std::to_string(fit->line) +
                                ") asks for robust, cluster or survey weights, so its likelihood is a "
                                "pseudolikelihood; AIC and BIC made from it rank nothing: refit it without "
                                "vce(robust) or pweights to compare by AIC");
    } else if (fit && fit->pseudo) {
      record.kind = LikelihoodKind::Pseudo;
      record.warnings.push_back("Stata fitted it with robust, cluster or survey weights and printed a log "
                                "pseudolikelihood (line " + std::to_string(fit->likelihoodLine) +
                                "); AIC and BIC made from a pseudolikelihood rank nothing: refit it without "
                                "vce(robust) or pweights to compare by AIC");
    }
    if ((fit && fit->regress) || row.regress) {
      // K counts every parameter, as for the other programs' fits; Stata's
      // df, and so its AIC, leave the residual variance out.
      record.k = row.df + 1;
      record.derivation = !row.derivation.empty()
                              ? row.derivation + "; + 1 for the residual variance that Stata's df after regress "
                                                 "leaves out"
                              : "logLik = ll(model); K = df + 1, the residual variance that Stata's df after "
                                "regress leaves out; n = " + std::string(row.nColumn);
      record.counting = "Stata's AIC after regress leaves out the residual variance, 2 below R's AIC()";
    }
    return record;
  }

  ProgramOutput& output_;
  std::vector<Fit> fits_;
  std::map<std::string, int> stored_;
  std::vector<Row> rows_;
  std::vector<std::string> columns_;
  int current_ = -1;
  StataCommand command_;
  std::int64_t commandLine_ = 0;
  std::int64_t fitCommandLine_ = -1;
};

bool LooksLikeStataOutput(std::string_view text) {
  if (IsSmcl(text)) return true;
  const std::string_view head = Opening(text);
  return (head.find("ll(null)") != std::string_view::npos && head.find("ll(model)") != std::string_view::npos) ||
         head.find("Measures of Fit for ") != std::string_view::npos ||
         head.find("Intercept-only |") != std::string_view::npos;
}

std::vector<FitRecord> ReadStataOutput(std::string_view text, ProgramOutput& output) {
  return StataReader(output).Read(text);
}

}  // namespace

extern const ProgramReader kStataReader{.looksLike = LooksLikeStataOutput, .read = ReadStataOutput};

}  // namespace drav::selection::fits
