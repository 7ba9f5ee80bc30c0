#pragma once
// The two tables of one analysis run. Rows 1 to the model count hold the
// models in file order; row 0 and column 0 exist but are never used.
#include <cstdint>
#include <string>

#include "analysis/array2d.hpp"

namespace drav {

using TextTable = Array2D<std::string>;
using NumberTable = Array2D<double>;

inline constexpr std::int32_t kMaxModels = 99;

// Columns of ModelTextTable; 3 to 5 exist and are never used.
inline constexpr std::int32_t kNameColumn = 1;
inline constexpr std::int32_t kAicTextColumn = 2;
inline constexpr std::int32_t kTextColumns = 5;

// Columns of ModelStatTable.
inline constexpr std::int32_t kAicColumn = 1;
inline constexpr std::int32_t kDifferenceColumn = 2;
inline constexpr std::int32_t kWeightColumn = 3;  // relative likelihood, then the Akaike weight
inline constexpr std::int32_t kRatioColumn = 4;
inline constexpr std::int32_t kStatColumns = 4;

}  // namespace drav
