#include "selection/fits/markdown_code.hpp"

#include <vector>

#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {
namespace {

// "```", "~~~~ text", "```{.text}": the fence's character and its length,
// or 0 where the line is no fence.
std::size_t FenceLength(std::string_view line, char& mark) {
  line = Trimmed(line);
  if (line.size() < 3 || (line[0] != '`' && line[0] != '~')) return 0;
  std::size_t length = 0;
  while (length < line.size() && line[length] == line[0]) ++length;
  if (length < 3) return 0;
  mark = line[0];
  return length;
}

// knitr's mark of a printed line, "##" alone or before a blank.
bool KnitrPrinted(std::string_view line) {
  line = Trimmed(line);
  return line.starts_with("##") && (line.size() == 2 || line[2] == ' ');
}

void AppendBlock(std::string& out, const std::vector<std::string_view>& block) {
  bool knitr = false;
  for (const std::string_view line : block) {
    if (Trimmed(line).empty()) continue;
    knitr = KnitrPrinted(line);
    if (!knitr) break;
  }
  for (std::string_view line : block) {
    if (knitr && KnitrPrinted(line)) {
      line = line.substr(line.find("##") + 2);
      if (!line.empty()) line.remove_prefix(1);
    }
    out.append(line).append(1, '\n');
  }
}

}  // namespace

bool HasCodeFences(std::string_view text) {
  for (std::size_t at = text.find("```"); at != std::string_view::npos; at = text.find("```", at + 3)) {
    const std::size_t start = text.rfind('\n', at) + 1;  // npos + 1 is 0
    if (Trimmed(text.substr(start, at - start)).empty()) return true;
  }
  for (std::size_t at = text.find("~~~"); at != std::string_view::npos; at = text.find("~~~", at + 3)) {
    const std::size_t start = text.rfind('\n', at) + 1;
    if (Trimmed(text.substr(start, at - start)).empty()) return true;
  }
  return false;
}

std::string FencedCode(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  std::vector<std::string_view> block;
  char openMark = 0;
  std::size_t openLength = 0;  // 0: outside a block
  for (const TextLine& line : SplitLines(text)) {
    char mark = 0;
    const std::size_t length = FenceLength(line.text, mark);
    if (openLength == 0) {
      if (length > 0) {
        openMark = mark;
        openLength = length;
      }
      out.append(1, '\n');
      continue;
    }
    // A block closes at a fence of its own character, as long at the least,
    // with nothing after it.
    if (length >= openLength && mark == openMark && Trimmed(line.text).size() == length) {
      AppendBlock(out, block);
      block.clear();
      openLength = 0;
      out.append(1, '\n');
      continue;
    }
    block.push_back(line.text);
  }
  AppendBlock(out, block);  // a block the document never closes
  return out;
}

}  // namespace drav::selection::fits
