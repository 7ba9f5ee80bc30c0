#pragma once
#include <string>

namespace drav {

// A modal alert with one button; MsgBox returns when the user has dismissed it.
class Alert {
 public:
  virtual ~Alert() = default;
  virtual void MsgBox(const std::string& text) = 0;
};

}  // namespace drav
