#pragma once
// Which header column holds what. Names are matched without case and with
// the spellings the statistics packages use: R's logLik, AICcmodavg's
// Modnames and LL, MuMIn's df, Stata's ll and N, and formula or call where
// a model is named by how it was fitted.
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "selection/criterion.hpp"

namespace drav::selection {

struct ColumnRoles {
  std::optional<std::size_t> model;
  std::optional<std::size_t> rowName;  // an unnamed first column, as write.csv puts row names there
  std::optional<std::size_t> logLik;
  std::optional<std::size_t> k;
  std::optional<std::size_t> n;
  std::array<std::optional<std::size_t>, kCriterionCount> criterion;  // by Criterion
  std::optional<Criterion> firstCriterion;              // the leftmost criterion column's
};

ColumnRoles FindRoles(const std::vector<std::string>& header);

// Lines the header up with the rows when the first row is one field longer.
// Ending in an empty field, the row has a spreadsheet's trailing separator:
// the header gets an empty column without a name at its end. Otherwise it is
// write.table's layout, with row names under no header name at all: the
// header gets an empty name in front, and true says that every row is so.
bool AlignHeader(std::vector<std::string>& header, std::span<const std::string_view> firstRow);

// Whether a header name is any spelling of a role, read or not: a second
// spelling (broom's df beside a K) is never a term.
bool IsRoleName(std::string_view name);

// Whether a header name is `spelling`, without case and surrounding blanks.
bool NameIs(std::string_view name, std::string_view spelling);

// The column whose name matches `name` without case; the first of several.
std::optional<std::size_t> FindColumn(const std::vector<std::string>& header, std::string_view name);

}  // namespace drav::selection
