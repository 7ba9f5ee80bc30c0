#include "selection/fits/sas_estimates.hpp"

#include <algorithm>

#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {
namespace {

std::size_t End(std::string_view line, std::string_view word) {
  return static_cast<std::size_t>(word.data() - line.data()) + word.size();
}

// Where the heading `name` ends in a line of headings, as a word of its own.
std::size_t HeadingEnd(std::string_view line, std::string_view name) {
  for (const std::string_view word : Words(line)) {
    if (word == name) return End(line, word);
  }
  return std::string_view::npos;
}

}  // namespace

bool IsSasEstimatesTitle(std::string_view title) {
  return EqualsNoCase(title, "Analysis of Maximum Likelihood Estimates") ||
         EqualsNoCase(title, "Analysis Of Maximum Likelihood Parameter Estimates") ||
         EqualsNoCase(title, "Solution for Fixed Effects");
}

bool SasEstimates::Take(std::string_view line) {
  const std::vector<std::string_view> words = Words(line);
  if (words.empty()) return !rows_;
  const bool numbers = std::any_of(words.begin(), words.end(), [](std::string_view w) { return ReadPrinted(w).has_value(); });
  if (!rows_ && !numbers) {
    // The headings, over one line or two: "Standard" over "Error".
    if (const std::size_t at = HeadingEnd(line, "Estimate"); at != std::string_view::npos) estimateEnd_ = at;
    if (const std::size_t at = HeadingEnd(line, "Error"); at != std::string_view::npos) errorEnd_ = at;
    if (const std::size_t at = HeadingEnd(line, "DF"); at != std::string_view::npos) dfEnd_ = at;
    return true;
  }
  const auto under = [&](std::size_t end) {
    return std::find_if(words.begin(), words.end(), [&](std::string_view w) { return End(line, w) == end; });
  };
  const auto estimate = under(estimateEnd_);
  if (estimate == words.end()) return false;
  rows_ = true;
  // The name ends where the first column of numbers starts: the DF where
  // it comes before the estimate (LOGISTIC, GENMOD), else the estimate.
  const auto df = under(dfEnd_);
  const auto nameEnd = df != words.end() && df < estimate ? df : estimate;
  std::string name;
  for (auto w = words.begin(); w != nameEnd; ++w) {
    if (!name.empty()) name += ' ';
    name.append(*w);
  }
  const auto error = under(errorEnd_);
  const bool fixed = (df != words.end() && *df == "0") || (error != words.end() && *error == ".");
  if (name.empty() || fixed || name == "Scale") return true;
  const auto value = [](std::string_view w) {
    const auto printed = ReadPrinted(w);
    return printed ? printed->value : kUnknown;
  };
  terms.push_back({name, value(*estimate), error != words.end() ? value(*error) : kUnknown});
  return true;
}

}  // namespace drav::selection::fits
