#include "analysis/locale_date_text.hpp"

#include <langinfo.h>

#include <ctime>

#include "base/text.hpp"

namespace drav {
namespace {

std::string LocalTime(const Date& date, const std::string& pattern) {
  const std::time_t moment = std::chrono::system_clock::to_time_t(date.Moment());
  std::tm local{};
  localtime_r(&moment, &local);
  char text[256];
  const std::size_t length = std::strftime(text, sizeof text, pattern.c_str(), &local);
  return std::string(text, length);
}

}  // namespace

namespace internal {

std::string WithoutSeconds(std::string pattern) {
  // The shorthands first, so that their seconds can be seen.
  pattern = ReplaceAll(ReplaceAll(ReplaceAll(pattern, "%r", "%I:%M:%S %p"), "%T", "%H:%M:%S"), "%X", "%H:%M:%S");
  const std::size_t seconds = pattern.find("%S");
  if (seconds == std::string::npos) return pattern;
  std::size_t from = seconds;
  std::size_t to = seconds + 2;
  if (from > 0 && (pattern[from - 1] == ':' || pattern[from - 1] == '.')) {
    --from;  // "%M:%S": the separator goes with the seconds
  } else {
    // "%M分%S秒": the seconds' own word goes with them
    while (to < pattern.size() && pattern[to] != '%' && pattern[to] != ' ') ++to;
  }
  return pattern.erase(from, to - from);
}

}  // namespace internal

std::string LocaleDateText::ShortDate(const Date& date) const { return LocalTime(date, "%x"); }

std::string LocaleDateText::ShortTime(const Date& date) const {
  return LocalTime(date, internal::WithoutSeconds(nl_langinfo(T_FMT)));
}

}  // namespace drav
