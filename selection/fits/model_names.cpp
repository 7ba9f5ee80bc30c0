#include "selection/fits/model_names.hpp"

#include <map>
#include <string>

namespace drav::selection::fits {

void NumberRepeatedNames(std::vector<FitRecord>& records) {
  std::map<std::string, int> uses;
  for (const FitRecord& record : records) ++uses[record.model];
  std::map<std::string, int> seen;
  for (FitRecord& record : records) {
    if (uses[record.model] < 2) continue;
    const int number = ++seen[record.model];
    record.model += " (" + std::to_string(number) + ")";
  }
}

}  // namespace drav::selection::fits
