#pragma once
// The pages of a SAS listing. Each starts with a form feed and a header:
// the TITLE lines (the first ending in the date and page number), the
// procedure's name, and a BY group's line. The header repeats on every page,
// in the middle of a table too, and is never part of one.
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {

struct SasPages {
  std::set<std::size_t> header;                              // indexes of the header lines
  std::map<std::size_t, std::vector<std::string>> titles;    // a page's titles, by its first line
  std::map<std::size_t, std::string> byGroups;               // "sex=F", by its procedure line
};

SasPages FindSasPages(const std::vector<TextLine>& lines);

// A listing's line without the form feed that starts a page and without
// blanks at either end.
std::string_view ListingText(std::string_view line);

// "logistic" for "The LOGISTIC Procedure"; empty for any other line.
std::string SasProcedureOf(std::string_view line);

}  // namespace drav::selection::fits
