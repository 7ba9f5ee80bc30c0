#pragma once
#include <string>

#include "analysis/date_text.hpp"

namespace drav {

// The date and time in the user's locale (LC_TIME), one style for the window
// and for drav-report, so that the same run prints the same heading in both:
// the locale's date form, and its time form without the seconds, which a
// report heading has no use for.
class LocaleDateText : public DateText {
 public:
  std::string ShortDate(const Date& date) const override;
  std::string ShortTime(const Date& date) const override;
};

namespace internal {
// The locale's time pattern (strftime form) without its seconds: "%H:%M:%S"
// gives "%H:%M", "%r" gives "%I:%M %p".
std::string WithoutSeconds(std::string pattern);
}  // namespace internal

}  // namespace drav
