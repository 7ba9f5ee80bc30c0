#pragma once
// How each record of a table becomes a candidate model: the columns settled
// once from the header and the first record, then every row read the same
// way, each cell that the criterion needs held to being a number, the model
// to what every candidate must be (candidate_faults.hpp), and a criterion
// column to agreeing with logLik and K.
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "base/errors.hpp"
#include "base/message_text.hpp"
#include "base/text.hpp"
#include "base/utf8.hpp"
#include "selection/input/column_roles.hpp"
#include "selection/input/criterion_choice.hpp"
#include "selection/input/decimal_mark.hpp"
#include "selection/input/delimited_reader.hpp"
#include "selection/input/load_candidates.hpp"
#include "selection/table/candidate_faults.hpp"

namespace drav::selection {

namespace internal {

// The first line on which a criterion column disagrees with the criterion
// computed from logLik and K, and how many lines do.
struct Disagreement {
  std::int64_t line = 0;
  double given = 0;
  double impliedK = 0;
  double k = 0;
  std::size_t lines = 0;
};

// The K at which the criterion computed from logLik (and n) equals `given`:
// AIC = -2 logLik + 2K, BIC = -2 logLik + K ln n, and AICc, whose
// D = AICc + 2 logLik = 2Kn / (n - K - 1), solved for K.
inline double ImpliedK(Criterion criterion, double given, double logLik, double n) {
  const double d = given + 2 * logLik;
  switch (criterion) {
    case Criterion::AIC: return d / 2;
    case Criterion::AICc: return d * (n - 1) / (2 * n + d);
    case Criterion::BIC: return d / std::log(n);
    case Criterion::QAIC:
    case Criterion::QAICc: break;
  }
  return kNotGiven;
}


}  // namespace internal

// How each record becomes a candidate, settled once from the header.
class CandidateReader {
 public:
  CandidateReader(const DelimitedReader& reader, std::vector<std::string> header, bool rowNames,
            const LoadOptions& options, Diagnostics& diagnostics)
      : name_(reader.Name()),
        header_(std::move(header)),
        rowNames_(rowNames),
        roles_(SettleRoles(header_, reader.Fields(), reader.Line(), options.roles, reader.Name(), diagnostics)),
        decimal_(reader.Separator(), options.decimal) {
    if (!options.modelColumn.empty()) roles_.model = Required(options.modelColumn);
    const CriterionChoice choice = ChooseCriterion(roles_, header_, options, reader.Name(), diagnostics);
    criterion_ = choice.criterion;
    computed_ = choice.computed;
    chat_ = choice.chat;
    if (!options.byColumn.empty()) by_ = Required(options.byColumn);
    if (!options.estimateColumn.empty()) {
      estimate_ = Required(options.estimateColumn);
      se_ = Required(options.seColumn);
    }
  }

  Criterion Chosen() const { return criterion_; }
  double Chat() const { return chat_; }
  const ColumnRoles& Roles() const { return roles_; }
  std::string ByName() const { return by_ ? header_[*by_] : std::string(); }
  bool Numbered() const { return !roles_.model && !roles_.rowName; }
  DecimalMark& Decimal() { return decimal_; }

  bool Estimates() const { return estimate_.has_value(); }

  // The record `fields` on `line` as a model; `ordinal` numbers a model
  // that the file does not name.
  Candidate Read(std::span<const std::string_view> fields, std::int64_t line, std::size_t ordinal) {
    fields_ = fields;
    line_ = line;
    if (fields.size() > header_.size() || (rowNames_ && fields.size() != header_.size())) {
      RefuseRecord({}, std::to_string(fields.size()) + " fields where the header has " +
                           std::to_string(header_.size() - rowNames_) +
                           (rowNames_ ? " and the rows before it, as R writes row names, one more" : ""));
    }
    Candidate c;
    c.line = line;
    const auto nameColumn = roles_.model ? roles_.model : roles_.rowName;
    c.model = nameColumn ? std::string(Cell(*nameColumn)) : std::to_string(ordinal);
    if (!utf8::IsValid(c.model)) c.model = utf8::Sanitize(std::move(c.model));
    if (roles_.logLik) c.logLik = computed_ ? Number(*roles_.logLik) : Optional(*roles_.logLik);
    if (roles_.k) c.k = Count(*roles_.k, computed_, roles_.kMayBeTerm, "K", "--k");
    if (roles_.n) c.n = Count(*roles_.n, computed_ && NeedsN(criterion_), roles_.nMayBeTerm, "n", "--n");
    c.value = computed_ ? Compute(criterion_, {c.logLik, c.k, c.n, chat_})
                        : Number(*roles_.criterion[static_cast<std::size_t>(criterion_)]);
    if (const CandidateFault fault = FaultOf(c, criterion_); fault != CandidateFault::None) {
      const auto column = InK(fault) ? roles_.k : InN(fault) ? roles_.n : std::nullopt;
      const std::string held =
          column ? "column " + Quoted(header_[*column]) + " holds " + Quoted(Cell(*column)) + "; " : "";
      RefuseRecord(column ? header_[*column] : std::string(), held + Why(fault, c, criterion_));
    }
    CompareCriteria(c);
    return c;
  }

  // The parameter to average as the current record gives it.
  Estimate ReadEstimate() {
    Estimate e;
    if (IsMissing(Cell(*estimate_))) return e;
    e.value = Number(*estimate_);
    // A missing SE leaves the average without an SE, as it does for --all.
    if (IsMissing(Cell(*se_))) return e;
    e.se = Number(*se_);
    RefuseImpossible(se_, e.se < 0, "a standard error cannot be negative");
    e.se *= std::sqrt(chat_);
    return e;
  }

  // Warnings of criterion columns that disagree with logLik and K.
  void WarnOfDisagreement(Diagnostics& diagnostics) const {
    for (Criterion c : {Criterion::AIC, Criterion::AICc, Criterion::BIC}) {
      const internal::Disagreement& d = disagreements_[static_cast<std::size_t>(c)];
      if (d.lines == 0) continue;
      const std::string column = Quoted(header_[*roles_.criterion[static_cast<std::size_t>(c)]]);
      std::string warning = "column " + column + " on line " + std::to_string(d.line) + " gives " + Shown(d.given) +
                            ", which implies K = " + Shown(std::round(d.impliedK * 100) / 100) + ", but column " +
                            Quoted(header_[*roles_.k]) + " gives " + Shown(d.k) + "; " + std::string(Title(c)) +
                            " = " + Formula(c);
      if (d.lines > 1) warning += "; " + std::to_string(d.lines - 1) + " more lines disagree";
      warning += ". Is " + Quoted(header_[*roles_.k]) + " the number of estimated parameters?";
      if (!NameIs(header_[*roles_.k], "k")) warning += " A column 'K' is read before it.";
      diagnostics.Warn(std::move(warning), name_);
    }
  }

  // A reader in this one's state for a later run of records, read on
  // another thread at the same time; Join takes back what it found.
  CandidateReader Fork() const {
    CandidateReader fork = *this;
    fork.disagreements_ = {};
    return fork;
  }
  // What a fork found, as if this reader had read its records after its own.
  void Join(const CandidateReader& fork) {
    for (std::size_t c = 0; c < disagreements_.size(); ++c) {
      const internal::Disagreement& later = fork.disagreements_[c];
      internal::Disagreement& d = disagreements_[c];
      if (d.lines == 0) {
        d = later;
      } else {
        d.lines += later.lines;
      }
    }
  }

  std::string_view Cell(std::size_t column) const {
    return column < fields_.size() ? fields_[column] : std::string_view();
  }
  std::optional<std::size_t> By() const { return by_; }

 private:
  static std::string Formula(Criterion c) {
    switch (c) {
      case Criterion::AIC: return "-2 logLik + 2K";
      case Criterion::AICc: return "-2 logLik + 2K + 2K(K+1)/(n-K-1)";
      case Criterion::BIC: return "-2 logLik + K ln n";
      case Criterion::QAIC:
      case Criterion::QAICc: break;
    }
    return {};
  }

  std::size_t Required(const std::string& name) const {
    const auto column = FindColumn(header_, name);
    if (!column) Refuse({.file = name_, .column = std::string(name), .text = "no column named " + Quoted(name)});
    return *column;
  }

  // Refuses the current record, which `column` (where one is to blame) holds wrong.
  [[noreturn]] void RefuseRecord(std::string column, std::string text) const {
    std::string record;
    for (const std::string_view field : fields_) record.append(record.empty() ? "" : ",").append(field);
    Refuse({.file = name_, .line = line_, .column = std::move(column), .text = std::move(text), .record = record});
  }

  double Number(std::size_t column) {
    const std::string_view cell = Cell(column);
    if (const auto value = decimal_.Read(cell, line_)) return *value;
    const std::string shown = cell.empty() ? "an empty cell" : Quoted(cell.substr(0, 40));
    const std::optional<std::string> why = decimal_.WhyRefused(cell);
    RefuseRecord(header_[column],
                 "column " + Quoted(header_[column]) + " holds " + shown + ", not a number" + (why ? "; " + *why : ""));
  }

  double Optional(std::size_t column) { return decimal_.Read(Cell(column), line_).value_or(kNotGiven); }

  // K or n: a number where the criterion needs it, else a number or
  // nothing. Text is never quietly dropped, and in a column whose name a
  // term may have, neither is a cell that only a term's column holds.
  double Count(std::size_t column, bool needed, bool mayBeTerm, std::string_view role, std::string_view option) {
    const std::string_view cell = Cell(column);
    const bool termCell = IsMissing(cell) || cell.find_first_not_of(" \t+") == std::string_view::npos;
    if (!mayBeTerm || !termCell) return needed || !IsMissing(cell) ? Number(column) : kNotGiven;
    RefuseRecord(header_[column], "column " + Quoted(header_[column]) + " holds " +
                                      (Trimmed(cell).empty() ? std::string("an empty cell") : Quoted(cell)) +
                                      ", as a term's column does, but is read as " + std::string(role) +
                                      " from the first line; --term " + header_[column] + " reads it as a term, " +
                                      std::string(option) + " " + header_[column] + " as " + std::string(role));
  }

  void RefuseImpossible(std::optional<std::size_t> column, bool impossible, const std::string& why) const {
    if (!impossible) return;
    RefuseRecord(header_[*column], "column " + Quoted(header_[*column]) + " holds " + Quoted(Cell(*column)) + "; " + why);
  }

  // A criterion column and logLik with K must agree: a K that is not the
  // number of estimated parameters (broom's glance() writes such a df)
  // would otherwise give a wrong AICc without a word. Half a unit allows
  // for criteria rounded in the file; a K off by one differs by 2 or more.
  void CompareCriteria(const Candidate& c) {
    if (std::isnan(c.logLik) || std::isnan(c.k)) return;
    for (Criterion criterion : {Criterion::AIC, Criterion::AICc, Criterion::BIC}) {
      const auto column = roles_.criterion[static_cast<std::size_t>(criterion)];
      if (!column || (NeedsN(criterion) && std::isnan(c.n))) continue;
      if (criterion == Criterion::AICc && !(c.n > c.k + 1)) continue;
      const double given = criterion == criterion_ && !computed_ ? c.value : Optional(*column);
      const double computed = Compute(criterion, {c.logLik, c.k, c.n, 1});
      if (!(std::fabs(given - computed) > 0.5 + 1e-9 * std::fabs(given))) continue;
      internal::Disagreement& d = disagreements_[static_cast<std::size_t>(criterion)];
      if (d.lines++ == 0) d = {line_, given, internal::ImpliedK(criterion, given, c.logLik, c.n), c.k, 1};
    }
  }

  std::string name_;
  std::vector<std::string> header_;
  bool rowNames_;
  ColumnRoles roles_;
  DecimalMark decimal_;
  Criterion criterion_ = Criterion::AIC;
  bool computed_ = false;
  double chat_ = 1;
  std::optional<std::size_t> by_, estimate_, se_;
  std::span<const std::string_view> fields_;
  std::int64_t line_ = 0;
  std::array<internal::Disagreement, 4> disagreements_{};
};


}  // namespace drav::selection
