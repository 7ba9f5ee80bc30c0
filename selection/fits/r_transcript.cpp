#include "selection/fits/r_transcript.hpp"

#include <cctype>

namespace drav::selection::fits {
namespace {

// knitr's "## " (or "##" alone on a blank printed line), maybe indented as
// an md_document indents code blocks.
bool KnitrPrinted(std::string_view line, std::string_view& rest) {
  const std::string_view trimmed = Trimmed(line);
  if (!trimmed.starts_with("##")) return false;
  if (trimmed.size() > 2 && trimmed[2] != ' ') return false;  // "###" is a heading
  rest = trimmed.size() > 3 ? line.substr(line.find("##") + 3) : std::string_view();
  return true;
}

}  // namespace

bool IsName(std::string_view text) {
  if (text.empty() || std::isdigit(static_cast<unsigned char>(text[0]))) return false;
  for (char c : text) {
    if (!std::isalnum(static_cast<unsigned char>(c)) && c != '.' && c != '_') return false;
  }
  return true;
}

std::vector<TranscriptLine> ReadTranscript(std::string_view text) {
  const std::vector<TextLine> lines = SplitLines(text);
  // knitr prefixes every printed line; a file where they are a good share
  // of the non-blank lines is knitr's, and its other lines are code or prose.
  std::size_t knitr = 0;
  std::size_t nonBlank = 0;
  std::string_view rest;
  for (const TextLine& line : lines) {
    if (Trimmed(line.text).empty()) continue;
    ++nonBlank;
    if (KnitrPrinted(line.text, rest)) ++knitr;
  }
  const bool knitted = knitr * 4 >= nonBlank && knitr > 0;
  std::vector<TranscriptLine> out;
  out.reserve(lines.size());
  bool continuing = false;
  for (const TextLine& line : lines) {
    if (knitted) {
      if (KnitrPrinted(line.text, rest)) {
        out.push_back({rest, line.number, false});
      } else {
        out.push_back({line.text, line.number, true});
      }
      continue;
    }
    if (line.text.starts_with("> ") || line.text == ">") {
      out.push_back({line.text.substr(line.text.size() > 1 ? 2 : 1), line.number, true});
      continuing = true;
    } else if (continuing && (line.text.starts_with("+ ") || line.text == "+")) {
      out.push_back({line.text.substr(line.text.size() > 1 ? 2 : 1), line.number, true});
    } else {
      out.push_back({line.text, line.number, false});
      continuing = false;
    }
  }
  return out;
}

std::string PrintedObject(std::string_view command) {
  command = Trimmed(command);
  for (std::string_view call : {"summary(", "print(", "logLik(", "show(", "fitMeasures(", "fitmeasures("}) {
    if (!command.starts_with(call)) continue;
    command.remove_prefix(call.size());
    const std::size_t end = command.find_first_of(",)");
    if (end == std::string_view::npos) return {};
    command = Trimmed(command.substr(0, end));
    break;
  }
  return IsName(command) ? std::string(command) : std::string();
}

std::string_view CommandBefore(const std::vector<TranscriptLine>& lines, std::size_t index) {
  for (std::size_t i = index + 1; i-- > 0;) {
    // knitr's code fences stand between the code and what it printed.
    if (lines[i].command && !Trimmed(lines[i].text).empty() && !Trimmed(lines[i].text).starts_with("```")) {
      return lines[i].text;
    }
  }
  return {};
}

}  // namespace drav::selection::fits
