#pragma once
// What a reader of the candidate table is shown besides the models: the
// header and each record, in the same layout the models are read from (row
// names already given their empty header name), so that a second reading of
// the same columns never disagrees with the first about which is which.
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "selection/input/column_roles.hpp"
#include "selection/input/decimal_mark.hpp"

namespace drav::selection {

class ExtraColumnReader {
 public:
  virtual ~ExtraColumnReader() = default;
  // Once, before the first record, with the roles the table settled and a
  // guess at how many records follow (0 when there is none), generous
  // rather than short: room that goes unused costs only address space.
  virtual void Start(const std::vector<std::string>& header, const ColumnRoles& roles, std::size_t expectedRows) = 0;
  // Every record that became a model, in file order; may throw DataError.
  // Numbers are read with `decimal`, the file's own decimal mark, so that
  // the observer and the table never read one file two ways.
  virtual void Row(std::span<const std::string_view> fields, std::int64_t line, DecimalMark& decimal) = 0;

  // For reading the records on two threads: an observer in this one's state
  // that is shown a later run of records while this one is shown those
  // before it. None where the records must be shown to one observer.
  virtual std::unique_ptr<ExtraColumnReader> Fork() const { return nullptr; }
  // Takes what a fork of this observer was shown, as if shown after this
  // one's own records. False, changing nothing, when what either was shown
  // changed how the fork's records are to be read; they must then be shown
  // to this observer again.
  virtual bool Join(ExtraColumnReader& fork) {
    static_cast<void>(fork);
    return false;
  }
};

}  // namespace drav::selection
