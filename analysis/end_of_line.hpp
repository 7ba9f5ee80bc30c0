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

  // The line end this build gives the report and typed line breaks: CR LF on
  // Windows, LF on macOS, and CR on every other platform.
  static const std::string& Build() {
#if defined(_WIN32)
    return Windows;
#elif defined(__APPLE__)
    return macOS;
#else
    static const std::string cr = "\r";
    return cr;
#endif
  }
};

}  // namespace drav
