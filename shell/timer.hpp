#pragma once
#include <QTimer>
#include <functional>

#include "shell/control.hpp"

namespace drav {

// A timer among a window's controls. RunMode 0 is off, 1 fires once, 2
// fires every Period milliseconds; the count starts when its window is
// built. The timer is a child of its window and holds no reference to it.
class Timer : public Control {
 public:
  explicit Timer(QObject* window);
  std::function<void()> Action;
  std::int64_t Period() const { return period_; }
  bool IsActive() const { return timer_.isActive(); }
  void Opened() override;

 protected:
  bool ApplyProperty(const Property& property) override;

 private:
  void Arm();
  QTimer timer_;
  std::int64_t period_ = 1000;
  std::int64_t runMode_ = 0;
  bool built_ = false;
};

}  // namespace drav
