#pragma once
#include <string>

#include "analysis/date.hpp"

namespace drav {

// The user's short system styles for a date and a time of day. The report
// prints them as they come and never parses them.
class DateText {
 public:
  virtual ~DateText() = default;
  virtual std::string ShortDate(const Date& date) const = 0;
  virtual std::string ShortTime(const Date& date) const = 0;
};

}  // namespace drav
