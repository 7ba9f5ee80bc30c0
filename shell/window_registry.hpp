#pragma once
#include <string>

namespace drav {
class Window;
namespace internal {

// The live windows by full class name, one per class.
void RegisterWindow(const std::string& fullClassName, Window* window);
void UnregisterWindow(const std::string& fullClassName, Window* window);

}  // namespace internal
}  // namespace drav
