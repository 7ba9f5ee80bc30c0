#pragma once
// A named numeric vector as R prints it: a line of names over a line of
// values, each name right-aligned over its value in columns of one width
// with a blank after each, wrapped into as many such pairs of lines as the
// console's width asks. lavaan's fitMeasures() prints so, and it is the
// columns of one width, not the names, that tell such a print from the
// other tables R prints.
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "selection/fits/printed_text.hpp"
#include "selection/fits/r_transcript.hpp"

namespace drav::selection::fits {

struct NamedValue {
  std::string_view name;
  std::optional<Printed> value;  // nothing for NA
};

struct NamedVector {
  std::vector<NamedValue> values;
  std::size_t last = 0;  // the index of its last line of values

  // The entry of that name; null where the vector has none.
  const NamedValue* Find(std::string_view name) const;
};

// The vector whose first line of names is lines[index]; nothing where the
// lines there are not one. A name that stands twice starts another vector:
// two printed one after the other are not taken for one wrapped.
std::optional<NamedVector> NamedVectorAt(const std::vector<TranscriptLine>& lines, std::size_t index);

}  // namespace drav::selection::fits
