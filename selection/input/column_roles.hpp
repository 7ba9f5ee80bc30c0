#pragma once
// Which header column holds what. Names are matched without case and with
// the spellings the statistics packages use: R's logLik, AICcmodavg's
// Modnames and LL, MuMIn's df, Stata's ll and N, and formula or call where
// a model is named by how it was fitted.
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/table/criterion.hpp"

namespace drav::selection {

struct ColumnRoles {
  std::optional<std::size_t> model;
  std::optional<std::size_t> rowName;  // an unnamed first column, as write.csv puts row names there
  std::optional<std::size_t> logLik;
  std::optional<std::size_t> k;
  std::optional<std::size_t> n;
  std::array<std::optional<std::size_t>, kCriterionCount> criterion;  // by Criterion
  std::optional<Criterion> firstCriterion;              // the leftmost criterion column's
  // Columns whose names spell a role or a statistic but that hold terms:
  // the K and N of an all-subsets table of factors named so, or a column
  // given with --term.
  std::vector<std::size_t> terms;
  // K or n was read from a column whose name a term may have too (K, N),
  // so a cell that only a term's column holds (NA, +) is refused.
  bool kMayBeTerm = false;
  bool nMayBeTerm = false;

  bool IsTerm(std::size_t column) const;
};

// What the user settled with --k, --n and --term; empty where not given.
struct RoleChoices {
  std::string k;
  std::string n;
  std::vector<std::string> terms;
};

// The roles by name alone.
ColumnRoles FindRoles(const std::vector<std::string>& header);

// The roles by name, then by what the first record holds where a term may
// carry a role's name: a column K or N is K or n only where it behaves as
// one (K a whole number of 1 or more, n a whole number no smaller than K)
// and no column holds its standard errors; otherwise it is a term, and the
// role goes to its next spelling (df, nobs). Each column so read as a term
// adds a note to `diagnostics`. Throws DataError for a chosen column that the
// header does not hold.
ColumnRoles SettleRoles(const std::vector<std::string>& header, std::span<const std::string_view> firstRow,
                        std::int64_t firstLine, const RoleChoices& choices, const std::string& fileName,
                        Diagnostics& diagnostics);

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

// The first column, by spelling order, whose name is one of `spellings`;
// among columns of one spelling, the leftmost.
std::optional<std::size_t> FindSpelled(const std::vector<std::string>& header,
                                       std::span<const std::string_view> spellings);

}  // namespace drav::selection
