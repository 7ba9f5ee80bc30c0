#include "selection/candidates.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <string_view>
#include <unordered_map>

#include "analysis/utf8.hpp"
#include "selection/column_roles.hpp"
#include "selection/decimal_mark.hpp"
#include "selection/errors.hpp"
#include "selection/number_text.hpp"

namespace drav::selection {
namespace {

std::string Quoted(std::string_view text) {
  std::string quoted;
  quoted.reserve(text.size() + 2);
  quoted.append(1, '\'').append(text).append(1, '\'');
  return quoted;
}

bool IsBlank(std::string_view cell) {
  return cell.find_first_not_of(" \t") == std::string_view::npos;
}

std::string Shown(double number) {
  std::string text;
  AppendShortest(text, number);
  return text;
}

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
double ImpliedK(Criterion criterion, double given, double logLik, double n) {
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

// How each record becomes a candidate, settled once from the header.
class RowReader {
 public:
  RowReader(const DelimitedReader& reader, std::vector<std::string> header, bool rowNames,
            const LoadOptions& options)
      : reader_(reader),
        header_(std::move(header)),
        rowNames_(rowNames),
        roles_(SettleRoles(header_, reader.Fields(), reader.Line(), options.roles, reader.Name(), notes_)),
        decimal_(reader.Separator(), options.decimal) {
    if (!options.modelColumn.empty()) roles_.model = Required(options.modelColumn);
    ChooseCriterion(options);
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
  std::vector<std::string>& Notes() { return notes_; }
  DecimalMark& Decimal() { return decimal_; }

  bool Estimates() const { return estimate_.has_value(); }

  Candidate Read(std::span<const std::string_view> fields, std::size_t ordinal) {
    fields_ = fields;
    if (fields.size() > header_.size() || (rowNames_ && fields.size() != header_.size())) {
      throw DataError(Where() + std::to_string(fields.size()) + " fields where the header has " +
                      std::to_string(header_.size() - rowNames_) +
                      (rowNames_ ? " and the rows before it, as R writes row names, one more" : ""));
    }
    Candidate c;
    c.line = reader_.Line();
    const auto nameColumn = roles_.model ? roles_.model : roles_.rowName;
    c.model = nameColumn ? std::string(Cell(*nameColumn)) : std::to_string(ordinal);
    if (!utf8::IsValid(c.model)) c.model = utf8::Sanitize(std::move(c.model));
    if (roles_.logLik) c.logLik = computed_ ? Number(*roles_.logLik) : Optional(*roles_.logLik);
    if (roles_.k) c.k = Count(*roles_.k, computed_, roles_.kMayBeTerm, "K", "--k");
    if (roles_.n) c.n = Count(*roles_.n, computed_ && NeedsN(criterion_), roles_.nMayBeTerm, "n", "--n");
    RefuseImpossible(roles_.k, c.k < 0, "K, the number of estimated parameters, cannot be negative");
    RefuseImpossible(roles_.n, c.n <= 0, "the number of observations must be positive");
    // A criterion given in its column is held to n > K + 1 as one computed
    // is: an AICc of 10 parameters from 10 rows has no meaning either way.
    if (computed_ || (!std::isnan(c.n) && !std::isnan(c.k))) CheckSample(c);
    if (computed_) {
      c.value = Compute(criterion_, {c.logLik, c.k, c.n, chat_});
      // Cells near the largest double can give an infinite criterion, and
      // an infinite best would make every difference NaN.
      if (!std::isfinite(c.value)) {
        throw DataError(Where() + std::string(Title(criterion_)) + " computed from this line is not a finite number");
      }
    } else {
      c.value = Number(*roles_.criterion[static_cast<std::size_t>(criterion_)]);
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
  void WarnOfDisagreement(std::vector<std::string>& warnings) const {
    for (Criterion c : {Criterion::AIC, Criterion::AICc, Criterion::BIC}) {
      const Disagreement& d = disagreements_[static_cast<std::size_t>(c)];
      if (d.lines == 0) continue;
      const std::string column = Quoted(header_[*roles_.criterion[static_cast<std::size_t>(c)]]);
      std::string warning = "column " + column + " on line " + std::to_string(d.line) + " gives " + Shown(d.given) +
                            ", which implies K = " + Shown(std::round(d.impliedK * 100) / 100) + ", but column " +
                            Quoted(header_[*roles_.k]) + " gives " + Shown(d.k) + "; " + std::string(Title(c)) +
                            " = " + Formula(c);
      if (d.lines > 1) warning += "; " + std::to_string(d.lines - 1) + " more lines disagree";
      warning += ". Is " + Quoted(header_[*roles_.k]) + " the number of estimated parameters?";
      if (!NameIs(header_[*roles_.k], "k")) warning += " A column 'K' is read before it.";
      warnings.push_back(std::move(warning));
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

  void ChooseCriterion(const LoadOptions& options) {
    const auto column = [&](Criterion c) { return roles_.criterion[static_cast<std::size_t>(c)]; };
    if (options.criterion) {
      criterion_ = *options.criterion;
    } else if (roles_.firstCriterion) {
      criterion_ = *roles_.firstCriterion;
    } else {
      criterion_ = roles_.n && roles_.logLik && roles_.k ? Criterion::AICc : Criterion::AIC;
    }
    computed_ = !column(criterion_);
    const std::string title(Title(criterion_));
    if (options.chat && !NeedsChat(criterion_)) {
      throw UsageError("--chat is the overdispersion factor of QAIC and QAICc, but the table is ranked by " + title +
                       "; add --criterion qaic or qaicc");
    }
    if (options.chat && !computed_) {
      throw UsageError("--chat would change nothing: " + title + " is read from column " +
                       Quoted(header_[*column(criterion_)]) + " as the file gives it; leave out --chat");
    }
    if (!computed_) return;
    const std::string needs = NeedsN(criterion_) ? "loglik, k and n" : "loglik and k";
    if (!roles_.logLik || !roles_.k || (NeedsN(criterion_) && !roles_.n)) {
      throw DataError(reader_.Name() + ": no column " + std::string(Name(criterion_)) + ", nor " + needs +
                      " to compute " + title + " from");
    }
    if (NeedsChat(criterion_)) {
      if (!options.chat) throw UsageError(title + " computed from the log-likelihood needs --chat");
      chat_ = *options.chat;
      if (chat_ < 1) {
        // Below 1 the data vary less than the model expects; the peers in R
        // take 1 then rather than reward the model for it.
        notes_.push_back("--chat " + Shown(chat_) + " is below 1 and is taken as 1 (no overdispersion)");
        chat_ = 1;
      }
    }
  }

  std::size_t Required(const std::string& name) const {
    const auto column = FindColumn(header_, name);
    if (!column) throw DataError(reader_.Name() + ": no column named " + Quoted(name));
    return *column;
  }

  std::string Where() const { return reader_.Name() + ":" + std::to_string(reader_.Line()) + ": "; }

  double Number(std::size_t column) {
    const std::string_view cell = Cell(column);
    if (const auto value = decimal_.Read(cell, reader_.Line())) return *value;
    const std::string shown = cell.empty() ? "an empty cell" : Quoted(cell.substr(0, 40));
    const std::string why = decimal_.WhyRefused(cell);
    throw DataError(Where() + "column " + Quoted(header_[column]) + " holds " + shown + ", not a number" +
                    (why.empty() ? "" : "; " + why));
  }

  double Optional(std::size_t column) { return decimal_.Read(Cell(column), reader_.Line()).value_or(kNotGiven); }

  // K or n: a number where the criterion needs it, else a number or
  // nothing. Text is never quietly dropped, and in a column whose name a
  // term may have, neither is a cell that only a term's column holds.
  double Count(std::size_t column, bool needed, bool mayBeTerm, std::string_view role, std::string_view option) {
    const std::string_view cell = Cell(column);
    const bool termCell = IsMissing(cell) || cell.find_first_not_of(" \t+") == std::string_view::npos;
    if (!mayBeTerm || !termCell) return needed || !IsMissing(cell) ? Number(column) : kNotGiven;
    throw DataError(Where() + "column " + Quoted(header_[column]) + " holds " +
                    (IsBlank(cell) ? std::string("an empty cell") : Quoted(cell)) + ", as a term's column does, but is read as " +
                    std::string(role) + " from the first line; --term " + header_[column] + " reads it as a term, " +
                    std::string(option) + " " + header_[column] + " as " + std::string(role));
  }

  void RefuseImpossible(std::optional<std::size_t> column, bool impossible, const std::string& why) const {
    if (!impossible) return;
    throw DataError(Where() + "column " + Quoted(header_[*column]) + " holds " + Quoted(Cell(*column)) + "; " + why);
  }

  void CheckSample(const Candidate& c) const {
    if (HasSmallSampleTerm(criterion_) && !(c.n > c.k + 1)) {
      throw DataError(Where() + std::string(Title(criterion_)) + " needs n > K + 1, and here n = " + Shown(c.n) +
                      " with K = " + Shown(c.k));
    }
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
      Disagreement& d = disagreements_[static_cast<std::size_t>(criterion)];
      if (d.lines++ == 0) d = {reader_.Line(), given, ImpliedK(criterion, given, c.logLik, c.n), c.k, 1};
    }
  }

  const DelimitedReader& reader_;
  std::vector<std::string> header_;
  bool rowNames_;
  std::vector<std::string> notes_;  // before roles_, which adds to it as it is settled
  ColumnRoles roles_;
  DecimalMark decimal_;
  Criterion criterion_ = Criterion::AIC;
  bool computed_ = false;
  double chat_ = 1;
  std::optional<std::size_t> by_, estimate_, se_;
  std::span<const std::string_view> fields_;
  std::array<Disagreement, 4> disagreements_{};
};

void WarnOfDifferentN(CandidateTable& table) {
  std::vector<const Candidate*> first(table.sets.size(), nullptr);
  std::vector<bool> warned(table.sets.size(), false);
  for (const Candidate& c : table.models) {
    if (std::isnan(c.n)) continue;
    const Candidate*& seen = first[c.set];
    if (!seen) {
      seen = &c;
    } else if (seen->n != c.n && !warned[c.set]) {
      warned[c.set] = true;
      const std::string set = table.sets.size() > 1 ? " of set " + Quoted(table.sets[c.set]) : "";
      table.warnings.push_back("the models" + set + " were fitted to different numbers of observations (n = " +
                               Shown(seen->n) + " on line " + std::to_string(seen->line) + ", n = " + Shown(c.n) +
                               " on line " + std::to_string(c.line) + "); their criteria are not comparable");
    }
  }
}

void WarnOfRepeatedNames(CandidateTable& table) {
  // Hashes sorted side by side find the repeats of a million names in a
  // fraction of the time a hash map of the names takes.
  std::vector<std::pair<std::size_t, std::size_t>> hashes;  // (hash of set and name, model)
  hashes.reserve(table.models.size());
  for (std::size_t i = 0; i < table.models.size(); ++i) {
    const Candidate& c = table.models[i];
    hashes.emplace_back(std::hash<std::string_view>()(c.model) ^ (std::size_t{c.set} * 0x9E3779B97F4A7C15ULL), i);
  }
  std::sort(hashes.begin(), hashes.end());
  std::size_t repeats = 0;
  std::pair<std::size_t, std::size_t> first;  // the earliest repeat in file order
  for (std::size_t i = 1; i < hashes.size(); ++i) {
    if (hashes[i].first != hashes[i - 1].first) continue;
    // Equal hashes; compare with every earlier model of the run.
    for (std::size_t j = i; j-- > 0 && hashes[j].first == hashes[i].first;) {
      const Candidate& a = table.models[hashes[j].second];
      const Candidate& b = table.models[hashes[i].second];
      if (a.set != b.set || a.model != b.model) continue;
      if (repeats++ == 0 || hashes[i].second < first.second) first = {hashes[j].second, hashes[i].second};
      break;
    }
  }
  if (repeats == 0) return;
  table.repeatedNames = true;
  const Candidate& a = table.models[first.first];
  std::string warning = "the model name " + Quoted(a.model) + " is given twice (lines " + std::to_string(a.line) +
                        " and " + std::to_string(table.models[first.second].line) + ")";
  if (repeats > 1) warning += ", and " + std::to_string(repeats - 1) + " more names are repeated";
  table.warnings.push_back(warning);
}

}  // namespace

CandidateTable LoadCandidates(DelimitedReader& reader, const LoadOptions& options) {
  CandidateTable table;
  if (!reader.Next()) throw DataError(reader.Name() + ": a header line but no models");
  std::vector<std::string> header = reader.Header();
  const bool rowNames = AlignHeader(header, reader.Fields());
  RowReader rows(reader, header, rowNames, options);
  if (options.observer) options.observer->Start(header, rows.Roles());
  table.criterion = rows.Chosen();
  table.chat = rows.Chat();
  table.byName = rows.ByName();

  try {
    table.models.reserve(options.expectedModels);
    if (rows.Estimates()) table.estimates.reserve(options.expectedModels);
  } catch (const std::bad_alloc&) {
    // A machine that will not even promise the room grows the table as it goes.
  }
  std::unordered_map<std::string, std::uint32_t> setIndex;
  if (!rows.By()) table.sets.emplace_back();
  std::int64_t emptyByLine = 0;
  do {
    if (table.models.size() == options.maxModels) {
      throw DataError(reader.Name() + ":" + std::to_string(reader.Line()) + ": more than " +
                      std::to_string(options.maxModels) + " models; a table holds no more");
    }
    Candidate c = rows.Read(reader.Fields(), table.models.size() + 1);
    if (rows.By()) {
      std::string value(rows.Cell(*rows.By()));
      if (IsBlank(value) && emptyByLine == 0) emptyByLine = c.line;
      const auto [where, isNew] = setIndex.try_emplace(value, static_cast<std::uint32_t>(table.sets.size()));
      if (isNew) table.sets.push_back(std::move(value));
      c.set = where->second;
    }
    if (options.observer) options.observer->Row(reader.Fields(), reader.Line(), rows.Decimal());
    table.models.push_back(std::move(c));
    if (rows.Estimates()) table.estimates.push_back(rows.ReadEstimate());
  } while (reader.Next());

  if (emptyByLine != 0) {
    table.warnings.push_back("line " + std::to_string(emptyByLine) + " has no value in column " +
                             Quoted(table.byName) + "; such models are a set of their own");
  }
  WarnOfDifferentN(table);
  WarnOfRepeatedNames(table);
  rows.WarnOfDisagreement(table.warnings);
  if (!reader.Note().empty()) table.notes.push_back(reader.Note());
  table.notes.insert(table.notes.end(), rows.Notes().begin(), rows.Notes().end());
  if (rows.Numbered()) {
    table.notes.push_back("no column names the models (model, name, modnames, formula, call; or --model COLUMN), "
                          "so they are numbered 1, 2, ... in file order");
  }
  return table;
}

}  // namespace drav::selection
