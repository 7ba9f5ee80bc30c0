#pragma once
#include <chrono>

namespace drav {

// A moment. A Date made with no arguments holds the current time; how it is
// written out (the user's short date and time style) is the host's business.
class Date {
 public:
  Date() : moment_(std::chrono::system_clock::now()) {}
  explicit Date(std::chrono::system_clock::time_point moment) : moment_(moment) {}
  std::chrono::system_clock::time_point Moment() const { return moment_; }

 private:
  std::chrono::system_clock::time_point moment_;
};

}  // namespace drav
