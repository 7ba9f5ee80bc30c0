#include "shell/timer.hpp"

#include "shell/handler_guard.hpp"

namespace drav {

Timer::Timer(QObject* window) : Control(window) {
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (runMode_ == 1) {
      runMode_ = 0;
      timer_.stop();
    }
    if (Action) internal::GuardHandler(Action);
  });
}

void Timer::Opened() {
  built_ = true;
  Arm();
  Control::Opened();
}

void Timer::Arm() {
  if (!built_ || runMode_ == 0) {
    timer_.stop();
    return;
  }
  timer_.setSingleShot(runMode_ == 1);
  timer_.start(static_cast<int>(period_));
}

bool Timer::ApplyProperty(const Property& p) {
  if (p.name == "Period") {
    period_ = std::get<std::int64_t>(p.value);
  } else if (p.name == "RunMode") {
    runMode_ = std::get<std::int64_t>(p.value);
  } else {
    return false;
  }
  Arm();
  return true;
}

}  // namespace drav
