#include "selection/input/wide_coefficients.hpp"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <new>

#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "base/text.hpp"
#include "selection/input/column_roles.hpp"
#include "selection/input/known_columns.hpp"
#include "selection/input/record_batches.hpp"

namespace drav::selection {
namespace {

void Reserve(Term& term, std::size_t rows) {
  term.estimate.reserve(rows);
  term.se.reserve(rows);
  term.held.reserve(rows);
}

}  // namespace

void WideCoefficients::Start(const std::vector<std::string>& header, const ColumnRoles& roles,
                             std::size_t expectedRows) {
  header_ = header;
  std::vector<bool> claimed(header.size(), false);
  const auto claim = [&claimed](std::optional<std::size_t> column) {
    if (column && *column < claimed.size()) claimed[*column] = true;
  };
  claim(roles.model);
  claim(roles.logLik);
  claim(roles.k);
  claim(roles.n);
  for (const auto& column : roles.criterion) claim(column);
  if (!byColumn_.empty()) claim(FindColumn(header, byColumn_));
  if (!modelColumn_.empty()) claim(FindColumn(header, modelColumn_));
  // A column without a name names no term: R's row names stand under none,
  // and so does the column a spreadsheet's trailing separator leaves. Nor
  // does a second spelling of a role or a statistic of the model.
  std::vector<std::string> terms(header.size());
  std::vector<std::optional<std::string>> seOf(header.size());
  for (std::size_t i = 0; i < header.size(); ++i) {
    terms[i] = Trimmed(header[i]);
    if (claimed[i] || roles.IsTerm(i)) continue;
    if (terms[i].empty() || IsRoleName(header[i]) || IsStatisticColumn(header[i])) {
      claimed[i] = true;
      continue;
    }
    const auto spread = SpreadColumnOf(header[i]);
    if (!spread) continue;
    switch (spread->kind) {
      case SpreadColumn::Kind::Estimate: terms[i] = spread->term; break;
      case SpreadColumn::Kind::StandardError: seOf[i] = spread->term; break;
      case SpreadColumn::Kind::Other: claimed[i] = true; break;
    }
  }
  // A standard error column belongs to the term of its name, case and all
  // (R's N and n are two variables); one without
  // that term is refused rather than averaged as a term of its own.
  std::vector<std::optional<std::size_t>> seFor(header.size());
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (claimed[i] || !seOf[i]) continue;
    claimed[i] = true;
    std::size_t j = 0;
    while (j < header.size() && (claimed[j] || seOf[j] || seFor[j] || terms[j] != *seOf[i])) ++j;
    if (j == header.size()) {
      Refuse({.file = name_,
              .column = header[i],
              .text = "column '" + header[i] + "' is named as the standard errors of a term '" + *seOf[i] +
                      "', but no column holds that term; --term '" + header[i] + "' reads it as a term of its own"});
    }
    seFor[j] = i;
  }
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (!claimed[i]) columns_.push_back({i, seFor[i], true, 0, Term(terms[i])});
  }
  // Three numbers a term a model: grown by doubling, the columns of a
  // million models would be copied twenty times over and ask the kernel
  // for twice their memory, each page of it cleared before use.
  try {
    for (Candidate& c : columns_) Reserve(c.term, expectedRows);
  } catch (const std::bad_alloc&) {
    // Grown as they come where the machine will not promise the room.
  }
}

void WideCoefficients::Row(std::span<const std::string_view> fields, std::int64_t line, DecimalMark& decimal) {
  const auto cell = [&fields](std::size_t column) {
    return column < fields.size() ? Trimmed(fields[column]) : std::string_view();
  };
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  for (Candidate& c : columns_) {
    if (!c.isTerm) continue;
    const std::string_view text = cell(c.column);
    double estimate = kNaN;
    std::uint8_t held = 1;
    if (IsMissing(text)) {
      held = 0;
    } else if (text != "+") {
      const auto number = decimal.Read(text, line);
      if (!number) {
        // A column of names or labels; nothing of it is a term.
        c.isTerm = false;
        ++stopped_;
        const auto& held = c.term.held;
        c.textLine = std::find(held.begin(), held.end(), std::uint8_t{1}) != held.end() ? line : 0;
        c.term = Term(std::move(c.term.name));
        continue;
      }
      estimate = *number;
    }
    double se = kNaN;
    if (held && c.seColumn && !IsMissing(cell(*c.seColumn))) {
      const auto number = decimal.Read(cell(*c.seColumn), line);
      if (!number || *number < 0) {
        Refuse({.file = name_,
                .line = line,
                .column = header_[*c.seColumn],
                .text = "column '" + header_[*c.seColumn] + "' holds '" + std::string(cell(*c.seColumn).substr(0, 40)) +
                        "', not a standard error"});
      }
      se = *number;
    }
    c.term.estimate.push_back(estimate);
    c.term.se.push_back(se);
    c.term.held.push_back(held);
  }
  ++rows_;
}

std::unique_ptr<ExtraColumnReader> WideCoefficients::Fork() const {
  auto fork = std::make_unique<WideCoefficients>(name_, byColumn_, modelColumn_);
  fork->header_ = header_;
  fork->columns_.reserve(columns_.size());
  for (const Candidate& c : columns_) {
    fork->columns_.push_back({c.column, c.seColumn, c.isTerm, c.textLine, Term(c.term.name)});
    Reserve(fork->columns_.back().term, RecordBatches::kRecords);
  }
  fork->stopped_ = fork->stoppedAtFork_ = stopped_;
  return fork;
}

bool WideCoefficients::Join(ExtraColumnReader& other) {
  auto& fork = dynamic_cast<WideCoefficients&>(other);
  // A column that stopped being a term on either side makes the fork's
  // reading of it wrong: its cells are read by a column that is no longer
  // one here, or its stop is dated without the numbers held before it.
  if (stopped_ != fork.stoppedAtFork_ || fork.stopped_ != fork.stoppedAtFork_) return false;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    Term& term = columns_[i].term;
    const Term& later = fork.columns_[i].term;
    term.estimate.insert(term.estimate.end(), later.estimate.begin(), later.estimate.end());
    term.se.insert(term.se.end(), later.se.begin(), later.se.end());
    term.held.insert(term.held.end(), later.held.begin(), later.held.end());
  }
  rows_ += fork.rows_;
  return true;
}

Coefficients WideCoefficients::Finish(Diagnostics& diagnostics) {
  Coefficients result;
  for (Candidate& c : columns_) {
    const auto& held = c.term.held;
    if (c.isTerm && std::find(held.begin(), held.end(), std::uint8_t{1}) == held.end()) {
      // NA in every model: no model holds it, as the long form has it.
      continue;
    }
    if (c.isTerm) {
      result.standardErrors = result.standardErrors || c.seColumn.has_value();
      result.terms.push_back(std::move(c.term));
    } else if (c.textLine > 0) {
      // Numbers for a while, then text: more likely a typing slip in a
      // term than a column of labels.
      diagnostics.Warn("column '" + c.term.name + "' holds text on line " + std::to_string(c.textLine) +
                           " after numbers, so it is not read as a term",
                       name_);
    }
  }
  columns_.clear();
  return result;
}

}  // namespace drav::selection
