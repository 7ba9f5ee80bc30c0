#include "selection/candidates.hpp"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <unordered_map>

#include "analysis/utf8.hpp"
#include "selection/column_roles.hpp"
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

std::string Shown(double number) {
  std::string text;
  AppendShortest(text, number);
  return text;
}

// How each record becomes a candidate, settled once from the header.
class RowReader {
 public:
  RowReader(const DelimitedReader& reader, std::vector<std::string> header, const LoadOptions& options)
      : reader_(reader), header_(std::move(header)), roles_(FindRoles(header_)) {
    ChooseCriterion(options);
    if (!options.byColumn.empty()) by_ = Required(options.byColumn);
    if (!options.estimateColumn.empty()) {
      estimate_ = Required(options.estimateColumn);
      se_ = Required(options.seColumn);
    }
  }

  Criterion Chosen() const { return criterion_; }
  std::string ByName() const { return by_ ? header_[*by_] : std::string(); }

  Candidate Read(std::span<const std::string_view> fields, std::size_t ordinal) {
    fields_ = fields;
    if (fields.size() > header_.size()) {
      throw DataError(Where() + std::to_string(fields.size()) + " fields where the header has " +
                      std::to_string(header_.size()));
    }
    Candidate c;
    c.line = reader_.Line();
    const auto nameColumn = roles_.model ? roles_.model : roles_.rowName;
    c.model = nameColumn ? std::string(Cell(*nameColumn)) : std::to_string(ordinal);
    if (!utf8::IsValid(c.model)) c.model = utf8::Sanitize(std::move(c.model));
    if (roles_.logLik) c.logLik = computed_ ? Number(*roles_.logLik) : Optional(*roles_.logLik);
    if (roles_.k) c.k = computed_ ? Number(*roles_.k) : Optional(*roles_.k);
    if (roles_.n) c.n = computed_ && NeedsN(criterion_) ? Number(*roles_.n) : Optional(*roles_.n);
    if (computed_) {
      CheckSample(c);
      c.value = Compute(criterion_, {c.logLik, c.k, c.n, chat_});
      // Cells near the largest double can give an infinite criterion, and
      // an infinite best would make every difference NaN.
      if (!std::isfinite(c.value)) {
        throw DataError(Where() + std::string(Title(criterion_)) + " computed from this line is not a finite number");
      }
    } else {
      c.value = Number(*roles_.criterion[static_cast<std::size_t>(criterion_)]);
    }
    if (estimate_ && !IsMissing(Cell(*estimate_))) {
      c.estimate = Number(*estimate_);
      c.se = Number(*se_);
    }
    return c;
  }

  std::string_view Cell(std::size_t column) const {
    return column < fields_.size() ? fields_[column] : std::string_view();
  }
  std::optional<std::size_t> By() const { return by_; }

 private:
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
    if (!computed_) return;
    const std::string title(Title(criterion_));
    const std::string needs = NeedsN(criterion_) ? "loglik, k and n" : "loglik and k";
    if (!roles_.logLik || !roles_.k || (NeedsN(criterion_) && !roles_.n)) {
      throw DataError(reader_.Name() + ": no column " + std::string(Name(criterion_)) + ", nor " + needs +
                      " to compute " + title + " from");
    }
    if (NeedsChat(criterion_)) {
      if (!options.chat) throw UsageError(title + " computed from the log-likelihood needs --chat");
      chat_ = *options.chat;
    }
  }

  std::size_t Required(const std::string& name) const {
    const auto column = FindColumn(header_, name);
    if (!column) throw DataError(reader_.Name() + ": no column named " + Quoted(name));
    return *column;
  }

  std::string Where() const { return reader_.Name() + ":" + std::to_string(reader_.Line()) + ": "; }

  double Number(std::size_t column) const {
    const std::string_view cell = Cell(column);
    if (const auto value = ParseNumber(cell, reader_.DecimalComma())) return *value;
    const std::string shown = cell.empty() ? "an empty cell" : Quoted(cell.substr(0, 40));
    throw DataError(Where() + "column " + Quoted(header_[column]) + " holds " + shown + ", not a number");
  }

  double Optional(std::size_t column) const {
    return ParseNumber(Cell(column), reader_.DecimalComma()).value_or(kNotGiven);
  }

  void CheckSample(const Candidate& c) const {
    if (NeedsN(criterion_) && !(c.n > 0)) {
      throw DataError(Where() + "n = " + Shown(c.n) + "; " + std::string(Title(criterion_)) +
                      " needs a positive number of observations");
    }
    if (HasSmallSampleTerm(criterion_) && !(c.n > c.k + 1)) {
      throw DataError(Where() + std::string(Title(criterion_)) + " needs n > K + 1, and here n = " + Shown(c.n) + " with K = " + Shown(c.k));
    }
  }

  const DelimitedReader& reader_;
  std::vector<std::string> header_;
  ColumnRoles roles_;
  Criterion criterion_ = Criterion::AIC;
  bool computed_ = false;
  double chat_ = 1;
  std::optional<std::size_t> by_, estimate_, se_;
  std::span<const std::string_view> fields_;
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
  // write.table puts row names under no header name at all: its data rows
  // hold one field more than the header.
  std::vector<std::string> header = reader.Header();
  if (reader.Fields().size() == header.size() + 1) header.insert(header.begin(), std::string());
  if (options.observer) options.observer->Start(header, reader.DecimalComma());
  RowReader rows(reader, std::move(header), options);
  table.criterion = rows.Chosen();
  table.byName = rows.ByName();

  table.models.reserve(options.expectedModels);
  std::unordered_map<std::string, std::uint32_t> setIndex;
  if (!rows.By()) table.sets.emplace_back();
  do {
    if (table.models.size() == options.maxModels) {
      throw DataError(reader.Name() + ":" + std::to_string(reader.Line()) + ": more than " +
                      std::to_string(options.maxModels) + " models; a table holds no more");
    }
    Candidate c = rows.Read(reader.Fields(), table.models.size() + 1);
    if (rows.By()) {
      std::string value(rows.Cell(*rows.By()));
      const auto [where, isNew] = setIndex.try_emplace(value, static_cast<std::uint32_t>(table.sets.size()));
      if (isNew) table.sets.push_back(std::move(value));
      c.set = where->second;
    }
    if (options.observer) options.observer->Row(reader.Fields(), reader.Line());
    table.models.push_back(std::move(c));
  } while (reader.Next());

  WarnOfDifferentN(table);
  WarnOfRepeatedNames(table);
  return table;
}

}  // namespace drav::selection
