#include "selection/input/long_coefficients.hpp"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "selection/input/column_roles.hpp"
#include "selection/input/decimal_mark.hpp"
#include "selection/input/known_columns.hpp"

namespace drav::selection {
namespace {

// In the index of keys, a key that names more than one model.
constexpr std::size_t kAmbiguous = std::numeric_limits<std::size_t>::max();

// The separator of a set's value and a model's name in a joined key: a
// control character no name in a table is meant to hold.
constexpr char kKeySeparator = '\x1f';

class LongReader {
 public:
  LongReader(DelimitedReader& reader, const CandidateTable& table, char decimal, Diagnostics& diagnostics)
      : reader_(reader), table_(table), decimal_(reader.Separator(), decimal), diagnostics_(diagnostics) {}

  Coefficients Read(bool readAhead) {
    if (!reader_.Next()) return {};
    if (readAhead) reader_.ReadAhead();
    header_ = reader_.Header();
    AlignHeader(header_, reader_.Fields());
    FindColumns();
    guessable_ = !table_.repeatedNames && (by_ || table_.sets.size() == 1);
    rowsOf_.assign(table_.models.size(), 0);
    do {
      ReadRow(reader_.Fields());
    } while (reader_.Next());
    WarnOfModelsWithoutRows();
    return std::move(result_);
  }

 private:
  void FindColumns() {
    const auto required = [this](std::optional<std::size_t> column, std::string_view name) {
      if (!column) Refuse({.file = reader_.Name(), .column = std::string(name), .text = "no column named '" + std::string(name) + "'"});
      return *column;
    };
    model_ = required(FindRoles(header_).model, "model");
    term_ = required(FindSpelled(header_, kTermSpellings), "term");
    estimate_ = required(FindSpelled(header_, kEstimateSpellings), "estimate");
    se_ = FindSpelled(header_, kSeSpellings);
    result_.standardErrors = se_.has_value();
    if (!table_.byName.empty()) by_ = FindColumn(header_, table_.byName);
  }

  // Each model's key once; a key that two models share is marked, and only
  // a row that asks for it is refused.
  void IndexModels() {
    const std::size_t count = table_.models.size();
    if (by_) {
      keys_.reserve(count);
      for (const Candidate& c : table_.models) {
        std::string key = table_.sets[c.set];
        key.push_back(kKeySeparator);
        key += c.model;
        keys_.push_back(std::move(key));
      }
    }
    index_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      const std::string_view key = by_ ? std::string_view(keys_[i]) : std::string_view(table_.models[i].model);
      const auto [where, isNew] = index_.try_emplace(key, i);
      if (!isNew) where->second = kAmbiguous;
    }
  }

  std::string_view Cell(std::span<const std::string_view> fields, std::size_t column) const {
    return column < fields.size() ? fields[column] : std::string_view();
  }

  [[noreturn]] void Fail(std::size_t column, const std::string& what) const {
    Refuse({.file = reader_.Name(),
            .line = reader_.Line(),
            .column = header_[column],
            .text = "column '" + header_[column] + "' " + what});
  }

  std::size_t ModelOf(std::span<const std::string_view> fields) {
    const std::string_view name = Cell(fields, model_);
    // Rows come grouped by model in every export seen, so the last model
    // answers most rows without a lookup.
    const std::string_view set = by_ ? Cell(fields, *by_) : std::string_view();
    if (lastModel_ && name == lastName_ && set == lastSet_) return *lastModel_;
    // They come in the table's order too, as a rule: the model after the
    // last one answers without the index, and a file in that order never
    // builds it. Only where a key names one model at most, or the index
    // would have refused what the guess accepts.
    const std::size_t next = lastModel_ ? *lastModel_ + 1 : 0;
    if (guessable_ && next < table_.models.size()) {
      const Candidate& c = table_.models[next];
      if (c.model == name && (!by_ || table_.sets[c.set] == set)) return Remember(name, set, next);
    }
    if (index_.empty()) IndexModels();
    std::string_view key = name;
    if (by_) {
      joined_.clear();
      joined_.reserve(set.size() + name.size() + 1);
      joined_.append(set.data(), set.size());
      joined_.push_back(kKeySeparator);
      joined_.append(name.data(), name.size());
      key = joined_;
    }
    const auto found = index_.find(key);
    if (found == index_.end() || found->second == kAmbiguous) {
      std::string shown(1, '\'');
      shown.append(name.substr(0, 60)).push_back('\'');
      if (found != index_.end()) {
        Fail(model_, "names model " + shown + ", which stands for more than one model of the table" +
                         (table_.sets.size() > 1 && !by_ ? "; give the coefficients a column '" + table_.byName + "'"
                                                          : std::string()));
      }
      Fail(model_, "names model " + shown + (by_ ? " in set '" + std::string(set) + "'" : std::string()) +
                       ", which the table does not hold");
    }
    return Remember(name, set, found->second);
  }

  std::size_t Remember(std::string_view name, std::string_view set, std::size_t model) {
    lastName_.assign(name);
    lastSet_.assign(set);
    lastModel_ = model;
    return model;
  }

  Term& TermOf(std::string_view name) {
    // Each model lists its terms in the same order, so the term after the
    // last one is the likely next.
    std::vector<Term>& terms = result_.terms;
    const std::size_t next = terms.empty() ? 0 : (lastTerm_ + 1) % terms.size();
    if (next < terms.size() && terms[next].name == name) return terms[lastTerm_ = next];
    const auto [where, isNew] = termIndex_.try_emplace(std::string(name), terms.size());
    if (isNew) terms.emplace_back(std::string(name), table_.models.size());
    return terms[lastTerm_ = where->second];
  }

  void WarnOfModelsWithoutRows() {
    const auto first = std::find(rowsOf_.begin(), rowsOf_.end(), 0);
    if (first == rowsOf_.end()) return;
    const Candidate& c = table_.models[static_cast<std::size_t>(first - rowsOf_.begin())];
    const auto more = std::count(first + 1, rowsOf_.end(), 0);
    std::string warning = "model '" + c.model + "' (line " + std::to_string(c.line) + ") has no row in " +
                          reader_.Name() + ", so it holds no term, not even an intercept";
    if (more > 0) warning += "; " + std::to_string(more) + " more models have none";
    diagnostics_.Warn(warning + ". Is the file cut short?", table_.source);
  }

  void ReadRow(std::span<const std::string_view> fields) {
    const std::size_t model = ModelOf(fields);
    rowsOf_[model] = 1;
    const std::string_view estimateText = Cell(fields, estimate_);
    // A coefficient the fit could not estimate (NA, as for an aliased
    // term) is one the model does not hold.
    if (IsMissing(estimateText)) return;
    const auto estimate = decimal_.Read(estimateText, reader_.Line());
    if (!estimate) Fail(estimate_, "holds '" + std::string(estimateText.substr(0, 40)) + "', not a number");
    Term& term = TermOf(Cell(fields, term_));
    if (term.held[model]) {
      Fail(term_, "gives term '" + term.name + "' of model '" + table_.models[model].model + "' a second time");
    }
    term.held[model] = 1;
    term.estimate[model] = *estimate;
    if (se_ && !IsMissing(Cell(fields, *se_))) {
      const std::string_view text = Cell(fields, *se_);
      const auto se = decimal_.Read(text, reader_.Line());
      if (!se || *se < 0) Fail(*se_, "holds '" + std::string(text.substr(0, 40)) + "', not a standard error");
      term.se[model] = *se;
    }
  }

  DelimitedReader& reader_;
  const CandidateTable& table_;
  DecimalMark decimal_;
  std::vector<std::string> header_;
  std::size_t model_ = 0, term_ = 0, estimate_ = 0;
  std::optional<std::size_t> se_, by_;
  std::vector<std::string> keys_;
  std::unordered_map<std::string_view, std::size_t> index_;
  std::unordered_map<std::string, std::size_t> termIndex_;
  std::string joined_, lastName_, lastSet_;
  std::optional<std::size_t> lastModel_;  // the model of the row before
  bool guessable_ = false;
  std::size_t lastTerm_ = 0;
  std::vector<std::uint8_t> rowsOf_;  // by model of the table: 1 once a row names it
  Coefficients result_;
  Diagnostics& diagnostics_;
};

}  // namespace

Coefficients ReadLongCoefficients(DelimitedReader& reader, const CandidateTable& table, char decimal,
                                  Diagnostics& diagnostics, bool readAhead) {
  return LongReader(reader, table, decimal, diagnostics).Read(readAhead);
}

}  // namespace drav::selection
