#include "selection/fits/sas_pages.hpp"

#include <regex>

namespace drav::selection::fits {
namespace {

// SAS's first title line ends with the date and the page number unless
// NODATE and NONUMBER are set.
std::string Title(std::string_view line) {
  static const std::regex kDated(R"(\s+\d{1,2}:\d{2}\s+\w+,\s+\w+\s+\d{1,2},\s+\d{4}\s*$)");
  static const std::regex kNumbered(R"(\s{2,}\d+\s*$)");
  std::string title(ListingText(line));
  if (title.size() > 400) return title;  // no title line is this long; the regex need not walk it
  title = std::regex_replace(title, kNumbered, "");
  title = std::regex_replace(title, kDated, "");
  return std::string(ListingText(title));
}

std::string ByGroup(std::string_view line) {
  while (!line.empty() && (line.front() == '-' || line.front() == ' ')) line.remove_prefix(1);
  while (!line.empty() && (line.back() == '-' || line.back() == ' ')) line.remove_suffix(1);
  return std::string(line);
}

// After the titles and blank lines, the procedure's name, then perhaps a BY
// line set between dashes: both join the header.
bool ProcedureFollows(const std::vector<TextLine>& lines, std::size_t j, SasPages& pages) {
  for (; j < lines.size(); ++j) {
    const std::string_view line = ListingText(lines[j].text);
    if (line.empty()) continue;
    if (SasProcedureOf(line).empty()) return false;
    pages.header.insert(j);
    for (std::size_t k = j + 1; k < lines.size() && k < j + 4; ++k) {
      const std::string_view by = ListingText(lines[k].text);
      if (by.starts_with("---") && by.ends_with("---")) {
        pages.header.insert(k);
        pages.byGroups[j] = ByGroup(by);
        break;
      }
      if (!by.empty()) break;
    }
    return true;
  }
  return false;
}

}  // namespace

std::string_view ListingText(std::string_view line) {
  line = Trimmed(line);
  while (!line.empty() && line.front() == '\f') line = Trimmed(line.substr(1));
  while (!line.empty() && line.back() == '\f') line = Trimmed(line.substr(0, line.size() - 1));
  return line;
}

std::string SasProcedureOf(std::string_view line) {
  const auto words = Words(line);
  if (words.size() != 3 || words[0] != "The" || words[2] != "Procedure") return {};
  std::string name(words[1]);
  for (char& c : name) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  return name;
}

SasPages FindSasPages(const std::vector<TextLine>& lines) {
  SasPages pages;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i != 0 && lines[i].text.find('\f') == std::string_view::npos) continue;
    std::size_t j = i;
    if (ListingText(lines[j].text).empty()) ++j;  // a form feed on a line of its own
    const std::size_t first = j;
    std::vector<std::string> titles;
    for (; j < lines.size() && !ListingText(lines[j].text).empty(); ++j) {
      if (j > first && lines[j].text.find('\f') != std::string_view::npos) break;
      titles.push_back(j == first ? Title(lines[j].text) : std::string(ListingText(lines[j].text)));
    }
    // A page cut from its header (a listing pasted from its middle) has none.
    if (titles.empty() || !ProcedureFollows(lines, j, pages)) continue;
    for (std::size_t k = i; k < j; ++k) pages.header.insert(k);
    pages.titles[i] = titles;
  }
  return pages;
}

}  // namespace drav::selection::fits
