#pragma once
#include <string>

namespace drav {

// Line ends. EndOfLine::Platform() is the line end of the platform the
// program runs on; the others are fixed.
struct EndOfLine {
  static inline const std::string macOS = "\n";
  static inline const std::string UNIX = "\n";
  static inline const std::string Windows = "\r\n";

  static const std::string& Platform() {
#if defined(_WIN32)
    return Windows;
#else
    return UNIX;
#endif
  }
};

}  // namespace drav
