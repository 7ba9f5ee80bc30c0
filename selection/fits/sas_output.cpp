// A SAS listing (the .lst file, the output window saved as text, or either
// pasted into a Markdown or Quarto document) with
// any number of procedures: the fit statistics of PROC LOGISTIC, GENMOD,
// MIXED, GLIMMIX and NLMIXED, one record for each fit. A model is named by
// the page's TITLE lines (not SAS's default "The SAS System") and its BY
// group, else by the file; K and n are worked out where SAS prints neither,
// and the record's derivation says how.
// Fits whose criteria rank nothing are records of a kind that ranking
// refuses, with the reason among their warnings: GLIMMIX's
// pseudo-likelihood, a GEE (GENMOD with REPEATED, whose printed criteria
// belong to the independence model it starts from) and SURVEYLOGISTIC's
// weighted likelihood. Fit statistics without what K is worked out from
// are refused.
#include <cctype>
#include <cmath>
#include <map>
#include <optional>
#include <set>

#include "selection/fits/markdown_code.hpp"
#include "selection/fits/model_names.hpp"
#include "selection/fits/printed_text.hpp"
#include "selection/fits/program_output.hpp"
#include "selection/fits/sas_estimates.hpp"
#include "selection/fits/sas_pages.hpp"

namespace drav::selection::fits {
namespace {

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  return lowered;
}

// A row of a fit-statistics table: its label, lowered and without SAS's
// "(smaller is better)", and the numbers after it.
struct Row {
  std::string label;
  std::vector<Printed> values;
};

Row ReadRow(std::string_view line) {
  const auto words = Words(line);
  std::size_t labelEnd = words.size();
  std::vector<Printed> values;
  while (labelEnd > 0) {
    const auto value = ReadPrinted(words[labelEnd - 1]);
    if (!value) break;
    values.insert(values.begin(), *value);
    --labelEnd;
  }
  std::string label;
  for (std::size_t i = 0; i < labelEnd; ++i) {
    if (i > 0) label += ' ';
    label += Lowered(words[i]);
  }
  for (const char* tail : {" (smaller is better)"}) {
    if (label.ends_with(tail)) label.resize(label.size() - std::string_view(tail).size());
  }
  return {label, values};
}

// One fit: what the procedure printed of it, up to its fit statistics.
struct Fit {
  std::string procedure;
  std::string name;
  std::int64_t line = 0;
  std::int64_t statisticsLine = 0;
  std::map<std::string, Printed> statistics;
  double observations = kUnknown, frequencies = kUnknown, subjects = kUnknown, covariance = kUnknown;
  bool eventsTrials = false, scaled = false, weighted = false;
  std::int64_t geeLine = 0;
  int tables = 0;
  std::vector<PrintedTerm> terms;  // from its table of estimates
};

class SasReader {
 public:
  explicit SasReader(ProgramOutput& output) : output_(output) {}

  std::vector<FitRecord> Read(std::string_view text) {
    // Pasted into Markdown or Quarto: the listing, line for line, not the prose.
    if (HasCodeFences(text)) text = code_ = FencedCode(text);
    lines_ = SplitLines(text);
    pages_ = FindSasPages(lines_);
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      if (pages_.header.contains(i)) continue;
      Take(i);
    }
    if (fit_) Finish();
    Name();
    return std::move(records_);
  }

 private:
  void Take(std::size_t i) {
    const std::string_view line = ListingText(lines_[i].text);
    const std::int64_t number = lines_[i].number;
    if (line == "Model Information" || line == "GEE Model Information") {
      if (line == "Model Information") {
        if (fit_) Finish();
        Begin(i);
      } else if (fit_) {
        fit_->geeLine = number;
      }
      return;
    }
    if (!fit_) return;
    if (IsSasEstimatesTitle(line)) {
      SasEstimates table;
      for (std::size_t j = i + 1; j < lines_.size(); ++j) {
        if (!pages_.header.contains(j) && !table.Take(lines_[j].text)) break;
      }
      fit_->terms = std::move(table.terms);
      return;
    }
    if (line == "Model Fit Statistics" || line == "Fit Statistics" ||
        EqualsNoCase(line, "Criteria For Assessing Goodness Of Fit")) {
      ReadStatistics(i);
      return;
    }
    if (line.find("(Events)") != std::string_view::npos || line.find("(Trials)") != std::string_view::npos) {
      fit_->eventsTrials = true;
    }
    if (line.starts_with("Weight Variable")) fit_->weighted = true;
    if (line.find("The scale parameter was estimated by") != std::string_view::npos) fit_->scaled = true;
    // The counts wanted here are labelled rows; most of a listing is
    // tables of numbers, which need no reading.
    if (line.empty() || !std::isalpha(static_cast<unsigned char>(line.front()))) return;
    const Row row = ReadRow(line);
    if (row.values.empty()) return;
    const double first = row.values.front().value;
    if (row.label == "number of observations used") fit_->observations = first;
    else if (row.label == "sum of frequencies used") fit_->frequencies = first;
    else if (row.label == "subjects" || row.label == "subjects (blocks in v)") fit_->subjects = first;
    else if (row.label == "covariance parameters") fit_->covariance = first;
  }

  void Begin(std::size_t i) {
    fit_ = Fit{};
    // The procedure and titles of the page this fit starts on.
    std::size_t page = 0;
    for (const auto& [start, titles] : pages_.titles) {
      if (start <= i) page = start;
    }
    std::vector<std::string> titles;
    if (const auto found = pages_.titles.find(page); found != pages_.titles.end()) titles = found->second;
    fit_->line = lines_[i].number;
    for (std::size_t j = page; j < i; ++j) {
      const std::string procedure = SasProcedureOf(ListingText(lines_[j].text));
      if (procedure.empty()) continue;
      fit_->procedure = procedure;
      fit_->line = lines_[j].number;
      if (const auto by = pages_.byGroups.find(j); by != pages_.byGroups.end()) byGroup_ = by->second;
      else byGroup_.clear();
    }
    for (const auto& title : titles) {
      if (title == "The SAS System") continue;
      if (!fit_->name.empty()) fit_->name += ": ";
      fit_->name += title;
    }
    if (!byGroup_.empty()) fit_->name += (fit_->name.empty() ? std::string() : std::string(", ")) + byGroup_;
  }

  // Rows follow the table's title, after column headings and perhaps a page
  // break; the first line that is none of these ends the table.
  void ReadStatistics(std::size_t title) {
    ++fit_->tables;
    fit_->statisticsLine = lines_[title].number;
    fit_->statistics.clear();
    static const std::set<std::string> kLabels = {
        "aic", "aicc", "sc", "bic", "caic", "hqic", "-2 log l", "log likelihood", "full log likelihood",
        "-2 log likelihood", "-2 res log likelihood", "-2 log pseudo-likelihood", "-2 res log pseudo-likelihood",
        "deviance", "scaled deviance", "pearson chi-square", "scaled pearson x2", "generalized chi-square",
        "gener. chi-square / df", "pearson chi-square / df"};
    int headings = 0;
    for (std::size_t i = title + 1; i < lines_.size(); ++i) {
      if (pages_.header.contains(i) || ListingText(lines_[i].text).empty()) continue;
      const Row row = ReadRow(ListingText(lines_[i].text));
      if (kLabels.contains(row.label) && !row.values.empty()) {
        fit_->statistics[row.label] = row.values.back();  // LOGISTIC: the model's column, not the intercept's
        continue;
      }
      if (!fit_->statistics.empty() || ++headings > 6) break;
    }
  }

  void Finish() {
    Fit fit = std::move(*fit_);
    fit_.reset();
    if (fit.tables == 0) return;
    const std::string label = Label(fit);
    if (fit.tables > 1) {
      output_.Note(label + "fit statistics printed " + std::to_string(fit.tables) +
                       " times (a selection's steps); the last, on line " + std::to_string(fit.statisticsLine) +
                       ", is read",
                   fit.statisticsLine);
    }
    FitRecord record = output_.Model(fit.line);
    record.model = fit.name;
    record.terms = std::move(fit.terms);
    const auto& s = fit.statistics;
    // Fits whose printed criteria rank nothing are listed with the reason,
    // which refuses them when they are ranked.
    if (fit.geeLine != 0) {
      record.kind = LikelihoodKind::None;
      record.n = fit.observations;
      output_.Flag(record,
                   "a GEE (REPEATED) has no likelihood; the criteria GENMOD printed on line " +
                       std::to_string(fit.statisticsLine) + " belong to the independence model it starts from. Rank "
                       "GEEs by QIC, or fit a likelihood model (GLIMMIX) to rank by AIC",
                   fit.geeLine, label);
    } else if (s.contains("-2 log pseudo-likelihood") || s.contains("-2 res log pseudo-likelihood")) {
      record.kind = LikelihoodKind::Pseudo;
      record.n = fit.observations;
      output_.Flag(record,
                   "GLIMMIX fitted by pseudo-likelihood (its default where the model is not normal): no likelihood to "
                   "rank by. Refit with METHOD=LAPLACE or METHOD=QUAD",
                   fit.statisticsLine, label);
    } else if (fit.procedure == "logistic" || fit.procedure == "surveylogistic") {
      FillLogistic(fit, record);
      if (fit.procedure == "surveylogistic") {
        record.kind = LikelihoodKind::Pseudo;
        output_.Flag(record,
                     "a survey design's -2 Log L is a weighted pseudo-likelihood; AIC and SC made from it rank nothing",
                     fit.statisticsLine, label);
      }
    } else if (fit.procedure == "genmod") {
      FillGenmod(fit, record);
    } else if (s.contains("-2 res log likelihood") || s.contains("-2 log likelihood")) {
      FillMixed(fit, record);
    } else {
      output_.Note(label + "its fit statistics are not of a kind Drav reads", fit.statisticsLine);
      return;
    }
    if (fit.weighted) {
      output_.Flag(record,
                   "with a WEIGHT variable the log likelihood is weighted; unless the weights count observations, AIC "
                   "does not rank it",
                   fit.line, label);
    }
    records_.push_back(std::move(record));
    procedures_.push_back(Upper(fit.procedure));
  }

  static std::string Label(const Fit& fit) {
    return "PROC " + Upper(fit.procedure) + " at line " + std::to_string(fit.line) + ": ";
  }

  static std::string Upper(std::string text) {
    for (char& c : text) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    return text;
  }

  // K from a criterion c = m2ll + 2K: whole within what printing both allows.
  std::optional<double> CountFrom(const Printed& criterion, const Printed& m2ll, const Fit& fit, FitRecord& record) {
    const auto k = WholeNumber((criterion.value - m2ll.value) / 2, (criterion.halfUnit + m2ll.halfUnit) / 2 + 1e-9);
    if (!k) {
      output_.Flag(record, "the printed AIC is not -2 log likelihood + 2K for a whole K; K is unknown",
                   fit.statisticsLine, Label(fit));
    }
    return k;
  }

  // What n the printed BIC (or SC) took the log of: n itself, the
  // subjects, or neither.
  std::string BicNote(const Fit& fit, const Printed& bic, const Printed& m2ll, double k, double n) {
    if (k <= 0) return {};
    const double slack = bic.halfUnit + m2ll.halfUnit + 1e-9;
    const auto agrees = [&](double count) { return std::fabs(m2ll.value + k * std::log(count) - bic.value) <= slack; };
    if (!std::isnan(n) && agrees(n)) return {};
    if (!std::isnan(fit.subjects) && agrees(fit.subjects)) {
      return "; the printed BIC takes the log of the " + Whole(fit.subjects) + " subjects, not of n";
    }
    return "; the printed BIC implies n = " + Whole(std::exp((bic.value - m2ll.value) / k));
  }

  static std::string Whole(double value) { return std::to_string(static_cast<long long>(std::llround(value))); }

  void FillLogistic(const Fit& fit, FitRecord& record) {
    const auto& s = fit.statistics;
    if (!s.contains("-2 log l") || !s.contains("aic")) return Incomplete(fit, "-2 Log L and AIC");
    const Printed m2ll = s.at("-2 log l");
    record.logLik = -m2ll.value / 2;
    record.logLikHalfUnit = m2ll.halfUnit / 2;
    record.aic = s.at("aic").value;
    const auto k = CountFrom(s.at("aic"), m2ll, fit, record);
    record.k = k ? *k : kUnknown;
    const bool frequencies = !std::isnan(fit.frequencies);
    record.n = frequencies ? fit.frequencies : fit.observations;
    record.derivation = "K = (AIC - (-2 Log L)) / 2; n = " + std::string(frequencies ? "Sum of Frequencies Used"
                                                                                      : "Number of Observations Used");
    if (s.contains("sc")) {
      record.bic = s.at("sc").value;
      if (k) record.derivation += BicNote(fit, s.at("sc"), m2ll, *k, record.n);
    }
    if (fit.eventsTrials) {
      // LOGISTIC leaves the binomial coefficients out of an events/trials
      // likelihood; GENMOD's full log likelihood keeps them.
      record.kind = LikelihoodKind::ConstantsDropped;
      record.derivation += "; events/trials: -2 Log L without the binomial coefficients";
    }
  }

  void FillGenmod(const Fit& fit, FitRecord& record) {
    const auto& s = fit.statistics;
    // "Log Likelihood" is the kernel GENMOD maximises; its AIC is made from
    // the full log likelihood, which older releases do not print.
    const bool full = s.contains("full log likelihood");
    if (!full && !s.contains("log likelihood")) return Incomplete(fit, "a log likelihood");
    const Printed ll = full ? s.at("full log likelihood") : s.at("log likelihood");
    record.logLik = ll.value;
    record.logLikHalfUnit = ll.halfUnit;
    record.n = fit.observations;
    record.kind = fit.scaled ? LikelihoodKind::Scaled : full ? LikelihoodKind::ML : LikelihoodKind::ConstantsDropped;
    if (!full || !s.contains("aic")) {
      output_.Flag(record, "only the kernel of the log likelihood is printed, and no AIC; K is unknown",
                   fit.statisticsLine, Label(fit));
      return;
    }
    const Printed m2ll{-2 * ll.value, 2 * ll.halfUnit};
    record.aic = s.at("aic").value;
    const auto k = CountFrom(s.at("aic"), m2ll, fit, record);
    record.k = k ? *k : kUnknown;
    record.derivation = "K = (AIC + 2 Full Log Likelihood) / 2; n = Number of Observations Used";
    if (s.contains("bic")) {
      record.bic = s.at("bic").value;
      if (k) record.derivation += BicNote(fit, s.at("bic"), m2ll, *k, record.n);
    }
    if (fit.scaled) record.derivation += "; the scale was estimated from Pearson's or the deviance's chi-square";
  }

  void FillMixed(const Fit& fit, FitRecord& record) {
    const auto& s = fit.statistics;
    const bool restricted = s.contains("-2 res log likelihood");
    const Printed m2ll = restricted ? s.at("-2 res log likelihood") : s.at("-2 log likelihood");
    record.logLik = -m2ll.value / 2;
    record.logLikHalfUnit = m2ll.halfUnit / 2;
    record.n = fit.observations;
    record.kind = restricted ? LikelihoodKind::REML : LikelihoodKind::ML;
    if (!s.contains("aic")) return Incomplete(fit, "an AIC");
    record.aic = s.at("aic").value;
    const auto k = CountFrom(s.at("aic"), m2ll, fit, record);
    record.k = k ? *k : kUnknown;
    const std::string statistic = restricted ? "-2 Res Log Likelihood" : "-2 Log Likelihood";
    record.derivation = "K = (AIC - (" + statistic + ")) / 2; n = Number of Observations Used";
    if (restricted) {
      // REML's AIC leaves out the fixed effects, which the restricted
      // likelihood has already integrated away.
      record.counting = "REML: PROC " + Upper(fit.procedure) + "'s AIC counts the covariance parameters only";
      if (k && !std::isnan(fit.covariance) && *k != fit.covariance) {
        output_.Flag(record,
                     "its AIC counts " + Whole(*k) + " parameters, its Dimensions " + Whole(fit.covariance) +
                         " covariance parameters",
                     fit.statisticsLine, Label(fit));
      }
    }
    if (s.contains("bic")) {
      record.bic = s.at("bic").value;
      if (k) record.derivation += BicNote(fit, s.at("bic"), m2ll, *k, record.n);
    }
  }

  void Incomplete(const Fit& fit, const std::string& what) {
    output_.Refuse(fit.statisticsLine, Label(fit) + "its fit statistics lack " + what);
  }

  // Titles repeat where one TITLE stays over several procedures: the
  // procedure's name tells such fits apart, then their order.
  void Name() {
    output_.NameUnnamed(records_, Numbering::None);
    std::map<std::string, int> uses;
    for (const auto& record : records_) ++uses[record.model];
    for (std::size_t i = 0; i < records_.size(); ++i) {
      if (uses[records_[i].model] > 1) records_[i].model += " (" + procedures_[i] + ")";
    }
    NumberRepeatedNames(records_);
  }

  ProgramOutput& output_;
  std::string code_;
  std::vector<TextLine> lines_;
  SasPages pages_;
  std::string byGroup_;
  std::optional<Fit> fit_;
  std::vector<FitRecord> records_;
  std::vector<std::string> procedures_;
};

bool LooksLikeSasOutput(std::string_view text) {
  const std::string_view head = Opening(text);
  const bool procedure = head.find("The LOGISTIC Procedure") != std::string_view::npos ||
                         head.find("The GENMOD Procedure") != std::string_view::npos ||
                         head.find("The Mixed Procedure") != std::string_view::npos ||
                         head.find("The GLIMMIX Procedure") != std::string_view::npos ||
                         head.find("The NLMIXED Procedure") != std::string_view::npos ||
                         head.find("The SURVEYLOGISTIC Procedure") != std::string_view::npos;
  return procedure && (head.find("Fit Statistics") != std::string_view::npos ||
                       head.find("Criteria For Assessing Goodness Of Fit") != std::string_view::npos);
}

std::vector<FitRecord> ReadSasOutput(std::string_view text, ProgramOutput& output) {
  return SasReader(output).Read(text);
}

}  // namespace

extern const ProgramReader kSasReader{.looksLike = LooksLikeSasOutput, .read = ReadSasOutput};

}  // namespace drav::selection::fits
