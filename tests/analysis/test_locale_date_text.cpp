#include <gtest/gtest.h>

#include <clocale>
#include <regex>

#include "analysis/locale_date_text.hpp"

namespace drav {
namespace {

// The locales' own time patterns, as glibc gives them, lose their seconds
// and nothing else.
TEST(LocaleDateText, TimePatternsLoseTheirSecondsOnly) {
  const std::pair<const char*, const char*> cases[] = {
      {"%H:%M:%S", "%H:%M"},       {"%T", "%H:%M"},          {"%r", "%I:%M %p"},
      {"%I:%M:%S %p", "%I:%M %p"}, {"%H.%M.%S", "%H.%M"},    {"%H\xE6\x99\x82%M\xE5\x88\x86%S\xE7\xA7\x92", "%H\xE6\x99\x82%M\xE5\x88\x86"},
      {"%H:%M", "%H:%M"},          {"%X", "%H:%M"},
  };
  for (const auto& [pattern, expected] : cases) EXPECT_EQ(internal::WithoutSeconds(pattern), expected) << pattern;
}

// Both programs print the heading through this one class; in the C locale it
// reads as drav-report has always printed it.
TEST(LocaleDateText, CLocaleGivesShortDateAndHoursAndMinutes) {
  std::setlocale(LC_TIME, "C");
  const LocaleDateText dates;
  const Date now;
  EXPECT_TRUE(std::regex_match(dates.ShortDate(now), std::regex(R"(\d\d/\d\d/\d\d)"))) << dates.ShortDate(now);
  EXPECT_TRUE(std::regex_match(dates.ShortTime(now), std::regex(R"(\d\d:\d\d)"))) << dates.ShortTime(now);
}

}  // namespace
}  // namespace drav
