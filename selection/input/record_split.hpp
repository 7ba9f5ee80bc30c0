#pragma once
// How the text of one record becomes its fields: separated by the file's
// separator (or by runs of blanks, for write.table's sep = " "), quoted
// fields unquoted, their doubled quotes, or quotes escaped by a backslash
// as write.table writes them, read as one quote.
#include <string>
#include <string_view>
#include <vector>

namespace drav::selection {

struct RecordSyntax {
  char separator = ',';           // ',', ';', '\t', or ' ' for runs of blanks
  bool backslashEscapes = false;  // \" inside quotes is a quote, not ""
};

// Splits `record` (without its line end) into `fields`: views into `record`
// where a field stands as written, into `unquoted` where quotes were taken
// off. Both are cleared first; the views stay valid while neither changes.
void SplitRecord(std::string_view record, RecordSyntax syntax, std::string& unquoted,
                 std::vector<std::string_view>& fields);

// Whether every field of the record is empty, as a line of separators is.
// Most records hold a byte that no empty field can, and are not split.
bool IsBlankRecord(std::string_view record, RecordSyntax syntax, std::string& unquoted,
                   std::vector<std::string_view>& fields);

}  // namespace drav::selection
