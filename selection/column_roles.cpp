#include "selection/column_roles.hpp"

#include <algorithm>
#include <initializer_list>

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

bool Matches(std::string_view name, std::initializer_list<std::string_view> spellings) {
  return std::any_of(spellings.begin(), spellings.end(),
                     [&](std::string_view s) { return SameWithoutCase(Trimmed(name), s); });
}

// The spelling listed first wins where a file has two, as broom's glance()
// does once K is added beside its df (which counts only the slopes); among
// columns of one spelling, the leftmost.
std::optional<std::size_t> Spelled(const std::vector<std::string>& header,
                                   std::initializer_list<std::string_view> spellings) {
  for (std::string_view spelling : spellings) {
    if (const auto column = FindColumn(header, spelling)) return column;
  }
  return std::nullopt;
}

}  // namespace

ColumnRoles FindRoles(const std::vector<std::string>& header) {
  ColumnRoles roles;
  if (!header.empty() && Trimmed(header[0]).empty()) roles.rowName = 0;
  roles.model = Spelled(header, {"model", "modnames", "name", "formula", "call"});
  roles.logLik = Spelled(header, {"loglik", "logl", "ll"});
  roles.k = Spelled(header, {"k", "npar", "df"});
  roles.n = Spelled(header, {"n", "nobs"});
  for (std::size_t i = 0; i < header.size(); ++i) {
    for (Criterion c : kCriteria) {
      auto& role = roles.criterion[static_cast<std::size_t>(c)];
      if (role || !Matches(header[i], {Name(c)})) continue;
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

bool NameIs(std::string_view name, std::string_view spelling) { return SameWithoutCase(Trimmed(name), Trimmed(spelling)); }

std::optional<std::size_t> FindColumn(const std::vector<std::string>& header, std::string_view name) {
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (NameIs(header[i], name)) return i;
  }
  return std::nullopt;
}

}  // namespace drav::selection
