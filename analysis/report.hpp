#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "analysis/model_tables.hpp"

namespace drav {

// The credit line at the foot of every report; it begins with two blanks.
extern const std::string CreditLine;

// What a report prints above its table.
struct ReportHeading {
  std::string shortDate;
  std::string shortTime;
  std::string fileName;
};

// One model's row, without its line end. Cells 1 to 4 are as wide as their
// column's constant (20, 25, 25, 23) minus the length of their text, so in a
// font whose digits are twice as wide as a blank each takes the same room;
// cell 5 is 20 characters.
std::string ReportRow(std::string_view name, double aic, double difference, double weight, double ratio);

// The whole text one run appends to the report area: the date and file
// block, the table of rows 1 to modelCount in file order, and the foot,
// 12 + modelCount lines each ended by lineEnd.
std::string ComposeReport(const TextTable& ModelTextTable, const NumberTable& ModelStatTable,
                          std::int64_t modelCount, const ReportHeading& heading, std::string_view lineEnd);

}  // namespace drav
