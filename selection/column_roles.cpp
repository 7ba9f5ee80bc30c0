#include "selection/column_roles.hpp"

#include <algorithm>
#include <span>

namespace drav::selection {
namespace {

std::string_view Trimmed(std::string_view s) {
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  return s;
}

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

// The spelling listed first wins where a file has two, as broom's glance()
// does once K is added beside its df (which counts only the slopes); among
// columns of one spelling, the leftmost.
std::optional<std::size_t> Spelled(const std::vector<std::string>& header, Spellings spellings) {
  for (std::string_view spelling : spellings) {
    if (const auto column = FindColumn(header, spelling)) return column;
  }
  return std::nullopt;
}

}  // namespace

ColumnRoles FindRoles(const std::vector<std::string>& header) {
  ColumnRoles roles;
  if (!header.empty() && Trimmed(header[0]).empty()) roles.rowName = 0;
  roles.model = Spelled(header, kModel);
  roles.logLik = Spelled(header, kLogLik);
  roles.k = Spelled(header, kK);
  roles.n = Spelled(header, kN);
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

std::optional<std::size_t> FindColumn(const std::vector<std::string>& header, std::string_view name) {
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (NameIs(header[i], name)) return i;
  }
  return std::nullopt;
}

}  // namespace drav::selection
