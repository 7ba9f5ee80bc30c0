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

void Claim(std::optional<std::size_t>& role, std::size_t column) {
  if (!role) role = column;
}

}  // namespace

ColumnRoles FindRoles(const std::vector<std::string>& header) {
  ColumnRoles roles;
  if (!header.empty() && Trimmed(header[0]).empty()) roles.rowName = 0;
  for (std::size_t i = 0; i < header.size(); ++i) {
    const std::string_view name = header[i];
    if (Matches(name, {"model", "name", "modnames", "formula", "call"})) Claim(roles.model, i);
    if (Matches(name, {"loglik", "logl", "ll"})) Claim(roles.logLik, i);
    if (Matches(name, {"k", "df", "npar"})) Claim(roles.k, i);
    if (Matches(name, {"n", "nobs"})) Claim(roles.n, i);
    for (Criterion c : kCriteria) {
      if (!Matches(name, {Name(c)})) continue;
      Claim(roles.criterion[static_cast<std::size_t>(c)], i);
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

std::optional<std::size_t> FindColumn(const std::vector<std::string>& header, std::string_view name) {
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (SameWithoutCase(Trimmed(header[i]), Trimmed(name))) return i;
  }
  return std::nullopt;
}

}  // namespace drav::selection
