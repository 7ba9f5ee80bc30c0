#include "selection/fits/stata_log.hpp"

#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {

std::vector<StataLogLine> ReadStataLog(std::string_view text) {
  std::vector<StataLogLine> lines;
  for (const auto& line : SplitLines(text)) {
    if (line.text.starts_with("> ") && !lines.empty()) {
      lines.back().text += line.text.substr(2);
    } else {
      lines.push_back({std::string(line.text), line.number});
    }
  }
  return lines;
}

}  // namespace drav::selection::fits
