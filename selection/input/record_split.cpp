#include "selection/input/record_split.hpp"

#include <algorithm>

namespace drav::selection {

void SplitRecord(std::string_view record, RecordSyntax syntax, std::string& unquoted,
                 std::vector<std::string_view>& fields) {
  fields.clear();
  unquoted.clear();
  // Room for every quoted field up front: the views into it must not move.
  unquoted.reserve(record.size());
  const char* const text = record.data();
  const std::size_t end = record.size();
  const char separator = syntax.separator;
  // Blank-separated text, as write.table lines up nothing but may be lined
  // up by hand: a run of spaces is one separator, and the line's ends are
  // trimmed.
  const bool blanks = separator == ' ';
  const auto skipBlanks = [&](std::size_t at) {
    while (at < end && text[at] == ' ') ++at;
    return at;
  };
  std::size_t i = blanks ? skipBlanks(0) : 0;
  for (;;) {
    if (i < end && text[i] == '"') {
      const std::size_t start = unquoted.size();
      for (++i; i < end; ++i) {
        if (syntax.backslashEscapes && text[i] == '\\' && i + 1 < end && text[i + 1] == '"') {
          unquoted += '"';
          ++i;
        } else if (text[i] != '"') {
          unquoted += text[i];
        } else if (i + 1 < end && text[i + 1] == '"') {
          unquoted += '"';
          ++i;
        } else {
          ++i;
          break;
        }
      }
      // Anything between the closing quote and the separator is kept, as
      // spreadsheets do, rather than lost.
      for (; i < end && text[i] != separator; ++i) unquoted += text[i];
      fields.emplace_back(unquoted.data() + start, unquoted.size() - start);
    } else {
      // Fields are short: a plain loop beats a call of memchr for each.
      std::size_t stop = i;
      while (stop < end && text[stop] != separator) ++stop;
      fields.emplace_back(text + i, stop - i);
      i = stop;
    }
    if (i >= end) break;
    ++i;
    if (blanks && (i = skipBlanks(i)) >= end) break;
  }
}

bool IsBlankRecord(std::string_view record, RecordSyntax syntax, std::string& unquoted,
                   std::vector<std::string_view>& fields) {
  // Every byte but a separator or a quote (or a blank, between blanks) is
  // some field's text, quoted or not, so such a record is not blank.
  const bool onlySeparators = std::all_of(record.begin(), record.end(), [syntax](char c) {
    return c == syntax.separator || c == '"' || (syntax.separator == ' ' && c == ' ');
  });
  if (!onlySeparators) return false;
  SplitRecord(record, syntax, unquoted, fields);
  return std::all_of(fields.begin(), fields.end(), [](std::string_view f) { return f.empty(); });
}

}  // namespace drav::selection
