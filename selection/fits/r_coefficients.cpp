// The terms of a coefficient table as R prints it, for importance and
// averages. summary() prints one row a term: the name left-aligned, then
// the columns right-aligned under their headings, so a term's estimate is
// the word that ends where "Estimate" (nlme: "Value") ends, and its name
// everything before it, blanks and all ("poly(x, 2)1"). print() prints
// the names across, each right-aligned over its value.
#include <algorithm>

#include "selection/fits/r_blocks.hpp"

namespace drav::selection::fits {
namespace {

// Where a word of `line` starts and ends, as offsets into it.
std::size_t Start(std::string_view line, std::string_view word) {
  return static_cast<std::size_t>(word.data() - line.data());
}
std::size_t End(std::string_view line, std::string_view word) { return Start(line, word) + word.size(); }

// The end of the first of `headings` that `line` holds, else npos.
std::size_t HeadingEnd(std::string_view line, std::initializer_list<std::string_view> headings) {
  for (std::string_view heading : headings) {
    if (const std::size_t at = line.find(heading); at != std::string_view::npos) return at + heading.size();
  }
  return std::string_view::npos;
}

double Number(std::string_view word) {
  const auto printed = ReadPrinted(word);
  return printed ? printed->value : kUnknown;
}

// R's word that it printed only part of what it holds.
bool IsCutOffMark(std::string_view line) {
  return line.find("reached") != std::string_view::npos && line.find("max") != std::string_view::npos &&
         line.find("omitted") != std::string_view::npos;
}

// One row: the word ending under the estimate's heading is the estimate,
// the one ending under the SE's is its SE. Where a copy lost the alignment
// (tabs, a proportional font's paste), the first number after the name is
// the estimate and the next its SE.
PrintedTerm Row(std::string_view row, const std::vector<std::string_view>& words, std::size_t estimateEnd,
                std::size_t seEnd) {
  const auto at = std::find_if(words.begin() + 1, words.end(), [&](std::string_view w) { return End(row, w) == estimateEnd; });
  std::size_t estimate = static_cast<std::size_t>(at - words.begin());
  std::size_t se = estimate + 1;
  if (at == words.end()) {
    estimate = 1;
    while (estimate < words.size() && words[estimate] != "NA" && !ReadPrinted(words[estimate])) ++estimate;
    se = estimate + 1;
  } else if (seEnd != std::string_view::npos) {
    const auto seAt = std::find_if(at, words.end(), [&](std::string_view w) { return End(row, w) == seEnd; });
    if (seAt != words.end()) se = static_cast<std::size_t>(seAt - words.begin());
  }
  PrintedTerm term;
  term.name = std::string(Trimmed(row.substr(0, estimate < words.size() ? Start(row, words[estimate]) : row.size())));
  if (estimate < words.size()) term.estimate = Number(words[estimate]);
  if (se < words.size() && seEnd != std::string_view::npos) term.se = Number(words[se]);
  return term;
}

}  // namespace

CoefficientRows ReadCoefficientTable(const Transcript& lines, std::size_t heading, std::size_t end) {
  CoefficientRows rows;
  const std::string_view headings = lines[heading].text;
  const std::size_t estimateEnd = HeadingEnd(headings, {"Estimate", "Value"});
  const std::size_t seEnd = HeadingEnd(headings, {"Std. Error", "Std.Error"});
  std::size_t j = heading + 1;
  for (; j < end && !lines[j].command; ++j) {
    const auto words = Words(lines[j].text);
    if (!IsTableRow(words)) break;
    rows.terms.push_back(Row(lines[j].text, words, estimateEnd, seEnd));
  }
  rows.cutOff = j < end && IsCutOffMark(lines[j].text);
  rows.next = j;
  return rows;
}

CoefficientRows ReadCoefficientsAcross(const Transcript& lines, std::size_t at, std::size_t end) {
  CoefficientRows rows;
  std::size_t j = at;
  for (; j + 1 < end && !lines[j].command && !lines[j + 1].command; j += 2) {
    const std::string_view names = lines[j].text;
    const std::string_view values = lines[j + 1].text;
    const auto numbers = Words(values);
    const bool allNumbers = !numbers.empty() && std::all_of(numbers.begin(), numbers.end(), [](std::string_view w) {
      return w == "NA" || ReadPrinted(w).has_value();
    });
    if (Trimmed(names).empty() || !allNumbers) break;
    // Each name ends where its value ends; the one before it ended at the
    // previous value's end.
    std::size_t from = 0;
    for (std::string_view value : numbers) {
      const std::size_t to = std::min(End(values, value), names.size());
      rows.terms.push_back({std::string(Trimmed(names.substr(std::min(from, to), to - std::min(from, to)))),
                              Number(value), kUnknown});
      from = to;
    }
  }
  rows.cutOff = j < end && IsCutOffMark(lines[j].text);
  rows.next = j;
  return rows;
}

void TakeTerms(CoefficientRows&& rows, FitRecord& record) {
  record.terms = std::move(rows.terms);
  record.termsCutOff = rows.cutOff;
}

}  // namespace drav::selection::fits
