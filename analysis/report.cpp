#include "analysis/report.hpp"

#include <cmath>

#include "analysis/format.hpp"
#include "analysis/text.hpp"
#include "analysis/val.hpp"

namespace drav {

const std::string CreditLine = "  Drav 2.1, written by the Drav project";

namespace {

const std::string& Blanks() {
  static const std::string blanks(99, ' ');
  return blanks;
}

// The text followed by blanks, cut to `count` characters.
std::string Cell(std::string_view text, std::int64_t count) { return Left(std::string(text) + Blanks(), count); }

// A cell whose width shrinks by one blank per character of its text.
std::string ShrinkingCell(std::string_view text, std::int64_t constant) { return Cell(text, constant - Len(text)); }

std::string Rule(std::string_view lineEnd) {
  const std::string ruleText(10, '=');
  std::string reportText;
  for (int k = 0; k < 5; ++k) reportText += ruleText;
  return reportText + std::string(lineEnd);
}

}  // namespace

std::string ReportRow(std::string_view name, double aic, double difference, double weight, double ratio) {
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

  return ShrinkingCell(name, 20) + ShrinkingCell(aicText, 25) + ShrinkingCell(diffText, 25) +
         ShrinkingCell(weightText, 23) + Cell(erText, 20);
}

std::string ComposeReport(const TextTable& ModelTextTable, const NumberTable& ModelStatTable,
                          std::int64_t modelCount, const ReportHeading& heading, std::string_view lineEnd) {
  const std::string end(lineEnd);
  std::string text = "Date: " + heading.shortDate + "  " + heading.shortTime + end;
  text += "File: " + heading.fileName + end + end;
  text += Rule(lineEnd);
  for (const char* header : {"Model", " AIC", "Drav", "weight", "ER"}) text += Cell(header, 20);
  text += end;
  text += Rule(lineEnd);
  for (std::int32_t i = 1; i <= static_cast<std::int32_t>(modelCount); ++i) {
    text += ReportRow(ModelTextTable(i, kNameColumn), ModelStatTable(i, kAicColumn),
                      ModelStatTable(i, kDifferenceColumn), ModelStatTable(i, kWeightColumn),
                      ModelStatTable(i, kRatioColumn));
    text += end;
  }
  text += Rule(lineEnd);
  text += end + end + CreditLine + end + end + end;
  return text;
}

}  // namespace drav
