#include "selection/fits/model_names.hpp"

#include <map>

namespace drav::selection::fits {

std::string FileStem(std::string_view source) {
  const std::size_t slash = source.find_last_of("/\\");
  if (slash != std::string_view::npos) source.remove_prefix(slash + 1);
  const std::size_t dot = source.rfind('.');
  if (dot != std::string_view::npos && dot > 0) source = source.substr(0, dot);
  return std::string(source);
}

void NumberRepeatedNames(std::vector<FitRecord>& records) {
  std::map<std::string, int> seen;
  for (auto& record : records) {
    const int count = ++seen[record.model];
    if (count > 1) record.model += " #" + std::to_string(count);
  }
}

}  // namespace drav::selection::fits
