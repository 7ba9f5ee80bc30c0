#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "base/runtime_exception.hpp"

namespace drav {

// A rectangular table addressed (row, column). Bounds are inclusive upper
// bounds and indexes start at 0, so bounds 99 and 5 make rows 0 to 99 and
// columns 0 to 5. New cells hold the element type's empty value.
template <class T>
class Array2D {
 public:
  Array2D(std::int32_t rowBound, std::int32_t columnBound) { Redim(rowBound, columnBound); }

  // Makes the bounds the given ones; no cell value survives.
  void Redim(std::int32_t rowBound, std::int32_t columnBound) {
    if (rowBound < -1 || columnBound < -1) throw OutOfBoundsException("negative array bound");
    rows_ = rowBound + 1;
    columns_ = columnBound + 1;
    cells_.assign(static_cast<std::size_t>(rows_) * static_cast<std::size_t>(columns_), T{});
  }

  std::int32_t RowBound() const { return rows_ - 1; }
  std::int32_t ColumnBound() const { return columns_ - 1; }

  T& operator()(std::int32_t row, std::int32_t column) { return cells_[Offset(row, column)]; }
  const T& operator()(std::int32_t row, std::int32_t column) const { return cells_[Offset(row, column)]; }

 private:
  std::size_t Offset(std::int32_t row, std::int32_t column) const {
    if (row < 0 || row >= rows_ || column < 0 || column >= columns_) [[unlikely]] {
      OutOfBounds(row, column);
    }
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column);
  }

  // Kept out of line so that the check above stays small enough to inline.
  [[noreturn, gnu::noinline, gnu::cold]] void OutOfBounds(std::int32_t row, std::int32_t column) const {
    throw OutOfBoundsException("table index (" + std::to_string(row) + ", " + std::to_string(column) +
                               ") outside bounds (" + std::to_string(RowBound()) + ", " +
                               std::to_string(ColumnBound()) + ")");
  }

  std::int32_t rows_ = 0;
  std::int32_t columns_ = 0;
  std::vector<T> cells_;
};

}  // namespace drav
