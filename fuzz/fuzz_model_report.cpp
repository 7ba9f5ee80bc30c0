// The model file reader with the statistics and the report behind it, for
// any bytes and any count from 2 to 99: the tables have exactly the count's
// rows, names have at most 8 characters, and every report row is as wide as
// the texts of its cells dictate.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/end_of_line.hpp"
#include "analysis/format.hpp"
#include "analysis/model_reader.hpp"
#include "analysis/report.hpp"
#include "analysis/statistics.hpp"
#include "analysis/val.hpp"
#include "base/text.hpp"
#include "fuzz/fuzz_checks.hpp"

namespace {

std::int64_t CellWidth(std::int64_t constant, const std::string& text) { return std::max<std::int64_t>(0, constant - drav::Len(text)); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::int32_t count = 2 + data[0] % 98;
  // fmemopen wants at least one byte: an empty file is one byte, already read.
  static char empty[1] = {0};
  std::FILE* memory = size > 1 ? fmemopen(const_cast<std::uint8_t*>(data + 1), size - 1, "rb") : fmemopen(empty, 1, "rb");
  if (memory == nullptr) return 0;
  if (size == 1) std::fgetc(memory);
  drav::TextInputStream stream = drav::TextInputStream::Adopt(memory, "fuzz");

  drav::TextTable names(99, drav::kTextColumns);
  drav::NumberTable stats(99, drav::kStatColumns);
  names.Redim(count, drav::kTextColumns);
  stats.Redim(count, drav::kStatColumns);
  drav::ReadModels(stream, count, names, stats);
  FUZZ_CHECK(names.RowBound() == count && stats.RowBound() == count);
  for (std::int32_t i = 1; i <= count; ++i) FUZZ_CHECK(drav::Len(names(i, drav::kNameColumn)) <= 8);

  const std::int64_t low = drav::ComputeStatistics(stats, count);
  if (low == 0) {
    for (std::int32_t i = 1; i <= count; ++i) FUZZ_CHECK(!(stats(i, drav::kAicColumn) < 99999999999.0));
    return 0;
  }
  FUZZ_CHECK(low >= 1 && low <= count);
  // Whatever the file holds, the best model reads 0.0, 1.0 and 1.0.
  for (std::int32_t i = 1; i <= count; ++i) FUZZ_CHECK(std::isfinite(stats(i, drav::kAicColumn)));
  FUZZ_CHECK(stats(low, drav::kDifferenceColumn) == 0.0);
  FUZZ_CHECK(stats(low, drav::kWeightColumn) > 0.0 && stats(low, drav::kWeightColumn) <= 1.0);
  FUZZ_CHECK(stats(low, drav::kRatioColumn) == 1.0);

  const std::string& end = drav::EndOfLine::Build();
  const std::string report = drav::ComposeReport(names, stats, count, {"d", "t", "fuzz"}, end);
  std::vector<std::string_view> lines;
  for (std::size_t start = 0, at; (at = report.find(end, start)) != std::string::npos; start = at + end.size()) {
    lines.emplace_back(report.data() + start, at - start);
  }
  FUZZ_CHECK(lines.size() == 12u + static_cast<std::size_t>(count));

  for (std::int32_t i = 1; i <= count; ++i) {
    // Rows follow the date, file, empty, rule, header and rule lines.
    const std::string_view row = lines[static_cast<std::size_t>(5 + i)];
    FUZZ_CHECK(row.substr(0, names(i, drav::kNameColumn).size()) == names(i, drav::kNameColumn));
    std::string weight = drav::Format(stats(i, drav::kWeightColumn), "0.0###");
    if (drav::Val(weight) < 0.0001) weight = "<.0001";
    const std::int64_t expected = CellWidth(20, names(i, drav::kNameColumn)) +
                                  CellWidth(25, drav::Format(stats(i, drav::kAicColumn), "+########0.0###")) +
                                  CellWidth(25, drav::Format(stats(i, drav::kDifferenceColumn), "#######0.0###")) +
                                  CellWidth(23, weight) + 20;
    FUZZ_CHECK(drav::Len(row) == expected);
  }
  return 0;
}
