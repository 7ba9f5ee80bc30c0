#include "selection/input/column_roles.hpp"

#include <algorithm>
#include <cmath>
#include <span>

#include "base/errors.hpp"
#include "base/message_text.hpp"
#include "base/number_text.hpp"
#include "base/text.hpp"
#include "selection/input/known_columns.hpp"

namespace drav::selection {
namespace {

bool SameWithoutCase(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return lower(x) == lower(y); });
}

bool Matches(std::string_view name, std::span<const std::string_view> spellings) {
  return std::any_of(spellings.begin(), spellings.end(),
                     [&](std::string_view s) { return SameWithoutCase(Trimmed(name), s); });
}

using Spellings = std::span<const std::string_view>;
constexpr std::string_view kModel[] = {"model", "modnames", "name", "formula", "call"};
constexpr std::string_view kLogLik[] = {"loglik", "logl", "ll"};
constexpr std::string_view kK[] = {"k", "npar", "df"};
constexpr std::string_view kN[] = {"n", "nobs"};


std::optional<std::string> SeColumnOf(const std::vector<std::string>& header, std::size_t column) {
  for (const std::string& name : header) {
    const auto spread = SpreadColumnOf(name);
    // Exact case: R's N and n are two variables.
    if (spread && spread->kind == SpreadColumn::Kind::StandardError && spread->term == Trimmed(header[column])) {
      return name;
    }
  }
  return std::nullopt;
}

// Why the first record's cell in `column` is a term's rather than a count's:
// a whole number of at least `least` is a count; with `wholeOnly` false a
// fraction is too (the effective degrees of freedom of a smooth).
std::optional<std::string> TermLike(const std::vector<std::string>& header, std::span<const std::string_view> row,
                                    std::int64_t line, std::size_t column, double least, bool wholeOnly) {
  if (const auto se = SeColumnOf(header, column)) return "has its standard errors in column " + Quoted(*se);
  const std::string_view cell = column < row.size() ? Trimmed(row[column]) : std::string_view();
  auto value = ParseNumber(cell, false);
  if (!value) value = ParseNumber(cell, true);
  const std::string holds = "holds " + (cell.empty() ? std::string("an empty cell") : Quoted(cell.substr(0, 40))) +
                            " on line " + std::to_string(line);
  if (!value) return holds;
  if (wholeOnly && *value != std::floor(*value)) return holds;
  if (*value < least) return holds;
  return std::nullopt;
}

}  // namespace

bool ColumnRoles::IsTerm(std::size_t column) const {
  return std::find(terms.begin(), terms.end(), column) != terms.end();
}

ColumnRoles FindRoles(const std::vector<std::string>& header) {
  ColumnRoles roles;
  if (!header.empty() && Trimmed(header[0]).empty()) roles.rowName = 0;
  roles.model = FindSpelled(header, kModel);
  roles.logLik = FindSpelled(header, kLogLik);
  roles.k = FindSpelled(header, kK);
  roles.n = FindSpelled(header, kN);
  for (std::size_t i = 0; i < header.size(); ++i) {
    for (Criterion c : kCriteria) {
      auto& role = roles.criterion[static_cast<std::size_t>(c)];
      if (role || !NameIs(header[i], Name(c))) continue;
      role = i;
      if (!roles.firstCriterion) roles.firstCriterion = c;
    }
  }
  return roles;
}

ColumnRoles SettleRoles(const std::vector<std::string>& header, std::span<const std::string_view> firstRow,
                        std::int64_t firstLine, const RoleChoices& choices, const std::string& fileName,
                        Diagnostics& diagnostics) {
  ColumnRoles roles = FindRoles(header);
  const auto required = [&](const std::string& name, std::string_view option) {
    const auto column = FindColumn(header, name);
    if (!column) Refuse({.file = fileName, .column = name, .text = "no column named " + Quoted(name) + " (" + std::string(option) + ")"});
    return *column;
  };
  for (const std::string& name : choices.terms) roles.terms.push_back(required(name, "--term"));
  // Of the columns that spell a role, in the order of the spellings, the
  // first that is not a term's. A one-letter name may be a term's too; the
  // longer spellings never are.
  const auto settle = [&](Spellings spellings, const std::string& chosen, std::string_view role, std::string_view option,
                          double least, bool& mayBeTerm) -> std::optional<std::size_t> {
    if (!chosen.empty()) return required(chosen, option);
    const bool longerSpelling = std::any_of(spellings.begin() + 1, spellings.end(),
                                            [&](std::string_view s) { return FindColumn(header, s).has_value(); });
    for (std::string_view spelling : spellings) {
      for (std::size_t column = 0; column < header.size(); ++column) {
        if (!NameIs(header[column], spelling) || roles.IsTerm(column) || column == roles.k) continue;
        if (spelling.size() > 1) return column;
        // K may be a fraction (a smooth's effective degrees of freedom)
        // unless a longer spelling stands by to take the role.
        const auto why = TermLike(header, firstRow, firstLine, column, least, role == "n" || longerSpelling);
        if (!why) {
          mayBeTerm = true;
          return column;
        }
        roles.terms.push_back(column);
        diagnostics.Note("column " + Quoted(header[column]) + " " + *why +
                         ", as a term's column does, so it is read as a term, not as " + std::string(role) + "; " +
                         std::string(option) + " " + header[column] + " reads it as " + std::string(role));
      }
    }
    return std::nullopt;
  };
  roles.k.reset();
  roles.n.reset();
  roles.k = settle(kK, choices.k, "K", "--k", 1, roles.kMayBeTerm);
  double leastN = 1;
  if (roles.k && *roles.k < firstRow.size()) {
    leastN = std::max(leastN, ParseNumber(Trimmed(firstRow[*roles.k]), false).value_or(1));
  }
  roles.n = settle(kN, choices.n, "n", "--n", leastN, roles.nMayBeTerm);
  if (!choices.k.empty()) roles.kMayBeTerm = false;
  if (!choices.n.empty()) roles.nMayBeTerm = false;
  return roles;
}

bool AlignHeader(std::vector<std::string>& header, std::span<const std::string_view> firstRow) {
  if (firstRow.size() != header.size() + 1) return false;
  if (Trimmed(firstRow.back()).empty()) {
    header.emplace_back();
    return false;
  }
  header.insert(header.begin(), std::string());
  return true;
}

bool IsRoleName(std::string_view name) {
  return Matches(name, kModel) || Matches(name, kLogLik) || Matches(name, kK) || Matches(name, kN) ||
         std::any_of(std::begin(kCriteria), std::end(kCriteria), [name](Criterion c) { return NameIs(name, Name(c)); });
}

bool NameIs(std::string_view name, std::string_view spelling) { return SameWithoutCase(Trimmed(name), Trimmed(spelling)); }

std::optional<std::size_t> FindSpelled(const std::vector<std::string>& header, Spellings spellings) {
  for (std::string_view spelling : spellings) {
    if (const auto column = FindColumn(header, spelling)) return column;
  }
  return std::nullopt;
}

std::optional<std::size_t> FindColumn(const std::vector<std::string>& header, std::string_view name) {
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (NameIs(header[i], name)) return i;
  }
  return std::nullopt;
}

}  // namespace drav::selection
