#pragma once
// Stata's text log as its readers see it: every line that Stata wrapped at
// the line size joined back to one.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace drav::selection::fits {

struct StataLogLine {
  std::string text;
  std::int64_t number = 0;  // where it starts in the file, from 1
};

// A text log wraps every line longer than the line size, going on after
// "> " on the next; the break falls anywhere, inside a number too, so the
// pieces are joined as they stand.
std::vector<StataLogLine> ReadStataLog(std::string_view text);

}  // namespace drav::selection::fits
