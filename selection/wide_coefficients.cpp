#include "selection/wide_coefficients.hpp"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>

#include "selection/column_roles.hpp"
#include "selection/errors.hpp"
#include "selection/number_text.hpp"

namespace drav::selection {
namespace {

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

std::string_view Trimmed(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

// Columns that ranked tables carry beside the models and that Drav computes
// afresh: the differences and weights of the all-subsets exports, and every
// column of Drav's own table, so that a table fed back in shows no terms.
bool IsComputedColumn(std::string_view name) {
  const std::string lower = Lower(Trimmed(name));
  for (std::string_view computed : {"delta", "weight", "rank", "likelihood", "cumulative_weight", "evidence_ratio",
                                    "confidence_set", "modellik", "cum.wt"}) {
    if (lower == computed) return true;
  }
  // AICcmodavg's AICcWt, QAICWt and the like.
  return lower.starts_with("delta_") ||
         (lower.ends_with("wt") && lower.substr(0, lower.size() - 2).find("aic") != std::string::npos);
}

// The term whose standard errors a column holds, by the spellings people
// give such columns: wt_se, wt.se, "wt se", se_wt, se.wt.
std::optional<std::string> SeOf(std::string_view name) {
  const std::string lower = Lower(Trimmed(name));
  const std::string_view trimmed = Trimmed(name);
  for (std::string_view suffix : {"_se", ".se", " se"}) {
    if (lower.size() > suffix.size() && lower.ends_with(suffix))
      return std::string(trimmed.substr(0, trimmed.size() - suffix.size()));
  }
  for (std::string_view prefix : {"se_", "se."}) {
    if (lower.size() > prefix.size() && lower.starts_with(prefix)) return std::string(trimmed.substr(prefix.size()));
  }
  return std::nullopt;
}

}  // namespace

void WideCoefficients::Start(const std::vector<std::string>& header) {
  header_ = header;
  const ColumnRoles roles = FindRoles(header);
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
  // and so does the column a spreadsheet's trailing separator leaves.
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (IsComputedColumn(header[i]) || IsRoleName(header[i]) || Trimmed(header[i]).empty()) claimed[i] = true;
  }
  // A column is a term's SE column when the term is a column too; it is
  // then no term of its own.
  std::vector<std::optional<std::size_t>> seFor(header.size());
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (claimed[i]) continue;
    if (const auto term = SeOf(header[i])) {
      const auto column = FindColumn(header, *term);
      if (column && !claimed[*column] && !seFor[*column]) {
        seFor[*column] = i;
        claimed[i] = true;
      }
    }
  }
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (!claimed[i]) columns_.push_back({i, seFor[i], true, 0, Term(std::string(Trimmed(header[i])))});
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
        throw DataError(name_ + ":" + std::to_string(line) + ": column '" + header_[*c.seColumn] + "' holds '" +
                        std::string(cell(*c.seColumn).substr(0, 40)) + "', not a standard error");
      }
      se = *number;
    }
    c.term.estimate.push_back(estimate);
    c.term.se.push_back(se);
    c.term.held.push_back(held);
  }
  ++rows_;
}

Coefficients WideCoefficients::Finish() {
  Coefficients result;
  for (Candidate& c : columns_) {
    if (c.isTerm) {
      result.terms.push_back(std::move(c.term));
    } else if (c.textLine > 0) {
      // Numbers for a while, then text: more likely a typing slip in a
      // term than a column of labels.
      result.warnings.push_back("column '" + c.term.name + "' holds text on line " + std::to_string(c.textLine) +
                                " after numbers, so it is not read as a term");
    }
  }
  columns_.clear();
  return result;
}

}  // namespace drav::selection
