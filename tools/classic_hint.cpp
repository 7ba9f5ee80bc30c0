#include "tools/classic_hint.hpp"

#include <string>
#include <string_view>

#include "analysis/folder_item.hpp"
#include "analysis/model_line.hpp"
#include "analysis/runtime_exception.hpp"
#include "analysis/text_input_stream.hpp"

namespace drav::cli {
namespace {

// Whether Val finds a number at the start of the field: blanks, a sign,
// then a digit, or a full stop and a digit.
bool StartsWithNumber(std::string_view text) {
  std::size_t i = text.find_first_not_of(" \t");
  if (i == std::string_view::npos) return false;
  if (text[i] == '+' || text[i] == '-') ++i;
  if (i < text.size() && text[i] == '.') ++i;
  return i < text.size() && text[i] >= '0' && text[i] <= '9';
}

}  // namespace

std::optional<std::int64_t> FirstLineWithoutNumber(const std::filesystem::path& path, std::int64_t count) {
  FolderItem item(path, FolderItem::Kinds::RegularFile);
  try {
    TextInputStream stream = TextInputStream::Open(item);
    for (std::int64_t line = 1; line <= count; ++line) {
      ModelLine fields;
      stream.ReadLine([&fields](std::string_view piece) { fields.Add(piece); });
      if (!StartsWithNumber(fields.AicText())) return line;
    }
  } catch (const RuntimeException&) {
    // No regular file, or one that went away since the run: no hint.
  }
  return std::nullopt;
}

}  // namespace drav::cli
