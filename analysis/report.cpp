#include "analysis/report.hpp"

#include <algorithm>
#include <cmath>

#include "analysis/format.hpp"
#include "analysis/val.hpp"
#include "base/text.hpp"

namespace drav {

const std::string CreditLine = "  Drav 2.1, written by the Drav project";

namespace {

constexpr std::int64_t kBlanks = 99;  // the longest run of blanks a cell can take

// Appends Left(text + 99 blanks, count) for a text of `length` characters:
// the text followed by blanks, cut to `count` characters. Built in place; a
// report has about 500 cells.
void AppendCell(std::string& out, std::string_view text, std::int64_t length, std::int64_t count) {
  if (count <= length) {
    out += Left(text, count);
    return;
  }
  out += text;
  out.append(static_cast<std::size_t>(std::min(count - length, kBlanks)), ' ');
}

void AppendCell(std::string& out, std::string_view text, std::int64_t count) {
  AppendCell(out, text, Len(text), count);
}

// A cell whose width shrinks by one blank per character of its text.
void AppendShrinkingCell(std::string& out, std::string_view text, std::int64_t constant) {
  const std::int64_t length = Len(text);
  AppendCell(out, text, length, constant - length);
}

std::string Rule(std::string_view lineEnd) {
  const std::string ruleText(10, '=');
  std::string reportText;
  for (int k = 0; k < 5; ++k) reportText += ruleText;
  return reportText + std::string(lineEnd);
}

}  // namespace

namespace {

void AppendReportRow(std::string& row, std::string_view name, double aic, double difference, double weight,
                     double ratio) {
  const std::string aicText = Format(aic, "+########0.0###");
  const std::string diffText = Format(difference, "#######0.0###");

  // Both thresholds judge the printed, rounded text, not the stored number:
  // a weight printed as 0.0001 stays, one printed as 0.0 does not.
  std::string weightText = Format(weight, "0.0###");
  if (Val(weightText) < 0.0001) weightText = "<.0001";
  std::string erText = Format(ratio, "#####0.0#");
  // An infinite ratio (a weight that underflowed) prints as INF, which Val
  // does not read as a number; it is above every limit all the same.
  if (Val(erText) > 99999.0 || (std::isinf(ratio) && ratio > 0)) erText = ">99999";

  AppendShrinkingCell(row, name, 20);
  AppendShrinkingCell(row, aicText, 25);
  AppendShrinkingCell(row, diffText, 25);
  AppendShrinkingCell(row, weightText, 23);
  AppendCell(row, erText, 20);
}

}  // namespace

std::string ReportRow(std::string_view name, double aic, double difference, double weight, double ratio) {
  std::string row;
  AppendReportRow(row, name, aic, difference, weight, ratio);
  return row;
}

std::string ComposeReport(const TextTable& ModelTextTable, const NumberTable& ModelStatTable,
                          std::int64_t modelCount, const ReportHeading& heading, std::string_view lineEnd) {
  const std::string end(lineEnd);
  std::string text;
  text.reserve(static_cast<std::size_t>(modelCount + 12) * 104);
  text += "Date: " + heading.shortDate + "  " + heading.shortTime + end;
  text += "File: " + heading.fileName + end + end;
  text += Rule(lineEnd);
  for (const char* header : {"Model", " AIC", "Drav", "weight", "ER"}) AppendCell(text, header, 20);
  text += end;
  text += Rule(lineEnd);
  for (std::int32_t i = 1; i <= static_cast<std::int32_t>(modelCount); ++i) {
    AppendReportRow(text, ModelTextTable(i, kNameColumn), ModelStatTable(i, kAicColumn),
                      ModelStatTable(i, kDifferenceColumn), ModelStatTable(i, kWeightColumn),
                      ModelStatTable(i, kRatioColumn));
    text += end;
  }
  text += Rule(lineEnd);
  text += end + end + CreditLine + end + end + end;
  return text;
}

}  // namespace drav
