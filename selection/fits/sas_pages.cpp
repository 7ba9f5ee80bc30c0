#include "selection/fits/sas_pages.hpp"


namespace drav::selection::fits {
namespace {

bool AllDigits(std::string_view word, std::size_t least, std::size_t most) {
  if (word.size() < least || word.size() > most) return false;
  for (char c : word) {
    if (c < '0' || c > '9') return false;
  }
  return true;
}

// "09:30" or "9:30".
bool Time(std::string_view word) {
  const std::size_t colon = word.find(':');
  return colon != std::string_view::npos && AllDigits(word.substr(0, colon), 1, 2) &&
         AllDigits(word.substr(colon + 1), 2, 2);
}

// SAS's first title line ends with the date, "09:30 Monday, March 4, 2024",
// and the page number two blanks or more after it, unless NODATE and
// NONUMBER are set: both are cut off.
std::string Title(std::string_view line) {
  std::string_view title = ListingText(line);
  std::vector<std::string_view> words = Words(title);
  const auto cutAt = [&](std::size_t word) {
    title = Trimmed(title.substr(0, static_cast<std::size_t>(words[word].data() - title.data())));
    words.resize(word);
  };
  if (words.size() > 1 && AllDigits(words.back(), 1, 9)) {
    const std::size_t last = words.size() - 1;
    const std::size_t gapStart = static_cast<std::size_t>(words[last - 1].data() - title.data()) + words[last - 1].size();
    const std::size_t gap = static_cast<std::size_t>(words[last].data() - title.data()) - gapStart;
    if (gap >= 2) cutAt(last);
  }
  if (words.size() > 5) {
    const std::size_t at = words.size() - 5;
    const std::string_view weekday = words[at + 1];
    const std::string_view day = words[at + 3];
    if (Time(words[at]) && weekday.size() > 1 && weekday.ends_with(',') && day.ends_with(',') &&
        AllDigits(day.substr(0, day.size() - 1), 1, 2) && AllDigits(words[at + 4], 4, 4)) {
      cutAt(at);
    }
  }
  return std::string(title);
}

// The first title line as SAS dates and numbers it.
bool Dated(std::string_view line) {
  const std::string text(ListingText(line));
  return Title(line).size() < text.size();
}

// A title as SAS centres it: words a blank apart, no columns; a table's row
// spaces its label from its values.
bool TitleLike(std::string_view line) {
  const std::string_view text = ListingText(line);
  return !text.empty() && text.find("   ") == std::string_view::npos;
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

// A listing pasted into a document or an e-mail has lost its form feeds:
// a page starts at its titles above the procedure's name, as far up as the
// dated first title, or a blank line; where a table ran on to the page, its
// last row stands right above them.
void FindUnfedPages(const std::vector<TextLine>& lines, SasPages& pages) {
  constexpr std::size_t kMostTitles = 10;  // SAS's TITLE1 to TITLE10
  for (std::size_t at = 0; at < lines.size(); ++at) {
    // Most of a listing is tables: the name's last word is looked for first.
    const std::string_view text = ListingText(lines[at].text);
    if (!text.ends_with(" Procedure") || pages.header.contains(at) || SasProcedureOf(text).empty()) continue;
    std::size_t end = at;  // one past the last title
    while (end > 0 && ListingText(lines[end - 1].text).empty()) --end;
    std::size_t first = end;
    while (first > 0 && end - first < kMostTitles && (TitleLike(lines[first - 1].text) || Dated(lines[first - 1].text))) {
      --first;
      if (Dated(lines[first].text)) break;
    }
    if (first == end || pages.header.contains(first)) continue;
    std::vector<std::string> titles;
    for (std::size_t t = first; t < end; ++t) {
      titles.push_back(t == first ? Title(lines[t].text) : std::string(ListingText(lines[t].text)));
    }
    if (!ProcedureFollows(lines, end, pages)) continue;
    for (std::size_t t = first; t < end; ++t) pages.header.insert(t);
    pages.titles[first] = titles;
  }
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
  FindUnfedPages(lines, pages);
  return pages;
}

}  // namespace drav::selection::fits
