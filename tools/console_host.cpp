#include "tools/console_host.hpp"

#include <ctime>
#include <ostream>

namespace drav::cli {
namespace {

std::string LocalTime(const Date& date, const char* pattern) {
  const std::time_t moment = std::chrono::system_clock::to_time_t(date.Moment());
  std::tm local{};
  localtime_r(&moment, &local);
  char text[128];
  const std::size_t length = std::strftime(text, sizeof text, pattern, &local);
  return std::string(text, length);
}

}  // namespace

void StreamAlert::MsgBox(const std::string& text) {
  out_ << text;
  if (text.empty() || text.back() != '\n') out_ << '\n';
  out_.flush();
}

std::string LocaleDateText::ShortDate(const Date& date) const { return LocalTime(date, "%x"); }

std::string LocaleDateText::ShortTime(const Date& date) const { return LocalTime(date, "%H:%M"); }

}  // namespace drav::cli
