#pragma once
// What a reader of the candidate table is shown besides the models: the
// header and each record, in the same layout the models are read from (row
// names already given their empty header name), so that a second reading of
// the same columns never disagrees with the first about which is which.
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "selection/column_roles.hpp"
#include "selection/decimal_mark.hpp"

namespace drav::selection {

class RowObserver {
 public:
  virtual ~RowObserver() = default;
  // Once, before the first record, with the roles the table settled.
  virtual void Start(const std::vector<std::string>& header, const ColumnRoles& roles) = 0;
  // Every record that became a model, in file order; may throw DataError.
  // Numbers are read with `decimal`, the file's own decimal mark, so that
  // the observer and the table never read one file two ways.
  virtual void Row(std::span<const std::string_view> fields, std::int64_t line, DecimalMark& decimal) = 0;
};

}  // namespace drav::selection
