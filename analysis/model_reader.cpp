#include "analysis/model_reader.hpp"

#include "analysis/model_line.hpp"
#include "analysis/val.hpp"
#include "base/text.hpp"

namespace drav {

void ReadModels(TextInputStream& modelStream, std::int64_t modelCount, TextTable& ModelTextTable,
                NumberTable& ModelStatTable) {
  const auto rows = static_cast<std::int32_t>(modelCount);

  // All lines are read before any is converted. Each line is split into its
  // fields as it streams by, keeping only what the report uses of it.
  for (std::int32_t i = 1; i <= rows; ++i) {
    ModelLine lineText;
    modelStream.ReadLine([&lineText](std::string_view piece) { lineText.Add(piece); });
    ModelTextTable(i, kNameColumn) = lineText.Name();
    ModelTextTable(i, kAicTextColumn) = lineText.AicText();
  }
  for (std::int32_t i = 1; i <= rows; ++i) {
    ModelTextTable(i, kNameColumn) = Left(ModelTextTable(i, kNameColumn), 8);
    ModelStatTable(i, kAicColumn) = Val(ModelTextTable(i, kAicTextColumn));
  }
}

}  // namespace drav
