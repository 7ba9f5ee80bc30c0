#include "shell/runtime.hpp"

#include <QApplication>
#include <map>

#include "shell/window.hpp"
#include "shell/window_registry.hpp"

namespace drav {
namespace {

std::map<std::string, Window*>& LiveWindows() {
  static std::map<std::string, Window*> windows;
  return windows;
}

std::int64_t beeps = 0;
bool quitting = false;

}  // namespace

namespace internal {

void RegisterWindow(const std::string& fullClassName, Window* window) { LiveWindows()[fullClassName] = window; }

void UnregisterWindow(const std::string& fullClassName, Window* window) {
  const auto found = LiveWindows().find(fullClassName);
  if (found != LiveWindows().end() && found->second == window) LiveWindows().erase(found);
}

}  // namespace internal

void Beep() {
  ++beeps;
  QApplication::beep();
}

std::int64_t BeepCount() { return beeps; }

void Quit(std::int64_t code) {
  if (quitting) return;  // reached again from a window closed on the way
  quitting = true;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* window = dynamic_cast<Window*>(widget); window != nullptr && window->isVisible()) window->close();
  }
  QCoreApplication::exit(static_cast<int>(code));
  quitting = false;
}

Window* GetImplicitWindow(const std::string& fullClassName) {
  const auto found = LiveWindows().find(fullClassName);
  return found == LiveWindows().end() ? nullptr : found->second;
}

}  // namespace drav
