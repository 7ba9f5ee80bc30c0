#include "selection/input/decimal_mark.hpp"

#include "base/number_text.hpp"

namespace drav::selection {

DecimalMark::DecimalMark(char separator, char forced)
    : mark_(forced != 0 ? forced : separator == ',' ? '.' : 0), forced_(forced != 0) {}

std::optional<double> DecimalMark::Read(std::string_view cell, std::int64_t line) {
  if (mark_ != 0) return ParseNumber(cell, mark_ == ',');
  const bool comma = cell.find(',') != std::string_view::npos;
  const bool point = cell.find('.') != std::string_view::npos;
  if (comma == point) return ParseNumber(cell, false);  // a whole number, or neither mark reads it
  const auto value = ParseNumber(cell, comma);
  if (value) {
    mark_ = comma ? ',' : '.';
    decidedOn_ = line;
  }
  return value;
}

std::optional<std::string> DecimalMark::WhyRefused(std::string_view cell) const {
  if (mark_ == 0 || !ParseNumber(cell, mark_ != ',')) return std::nullopt;
  std::string why = "the file's decimal mark is '";
  why += mark_;
  why += forced_ ? "' (--decimal)" : "' (line " + std::to_string(decidedOn_) + "; --decimal chooses)";
  return why;
}

}  // namespace drav::selection
