#include "analysis/model_reader.hpp"

#include "analysis/end_of_line.hpp"
#include "analysis/text.hpp"
#include "analysis/val.hpp"

namespace drav {

void ReadModels(TextInputStream& modelStream, std::int64_t modelCount, TextTable& ModelTextTable,
                NumberTable& ModelStatTable) {
  const std::string tabText = Chr(9);
  const auto rows = static_cast<std::int32_t>(modelCount);

  // All lines are read before any is converted.
  for (std::int32_t i = 1; i <= rows; ++i) {
    std::string lineText = modelStream.ReadLine();
    lineText = ReplaceAll(std::move(lineText), tabText, ",");
    lineText = ReplaceAll(std::move(lineText), EndOfLine::Platform(), ",");
    ModelTextTable(i, kNameColumn) = NthField(lineText, ",", 1);
    ModelTextTable(i, kAicTextColumn) = NthField(lineText, ",", 2);
  }
  for (std::int32_t i = 1; i <= rows; ++i) {
    ModelTextTable(i, kNameColumn) = Left(ModelTextTable(i, kNameColumn), 8);
    ModelStatTable(i, kAicColumn) = Val(ModelTextTable(i, kAicTextColumn));
  }
}

}  // namespace drav
