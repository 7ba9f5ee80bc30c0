#pragma once
// How messages show what a file holds: names and cells in single quotes,
// numbers in the shortest text that reads back the same.
#include <string>
#include <string_view>

#include "base/number_text.hpp"

namespace drav::selection {

inline std::string Quoted(std::string_view text) {
  std::string quoted(1, '\'');
  quoted.append(text).push_back('\'');
  return quoted;
}

inline std::string Shown(double number) {
  std::string text;
  AppendShortest(text, number);
  return text;
}

}  // namespace drav::selection
