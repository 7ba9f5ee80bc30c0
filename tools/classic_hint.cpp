#include "tools/classic_hint.hpp"

#include <string>
#include <string_view>

#include "analysis/folder_item.hpp"
#include "analysis/model_line.hpp"
#include "analysis/text_input_stream.hpp"
#include "analysis/val.hpp"
#include "base/runtime_exception.hpp"

namespace drav::cli {

std::optional<std::int64_t> FirstLineWithoutNumber(const std::filesystem::path& path, std::int64_t count) {
  FolderItem item(path, FolderItem::Kinds::RegularFile);
  try {
    TextInputStream stream = TextInputStream::Open(item);
    for (std::int64_t line = 1; line <= count; ++line) {
      ModelLine fields;
      stream.ReadLine([&fields](std::string_view piece) { fields.Add(piece); });
      if (!LeadingNumber(fields.AicText())) return line;
    }
  } catch (const RuntimeException&) {
    // No regular file, or one that went away since the run: no hint.
  }
  return std::nullopt;
}

}  // namespace drav::cli
