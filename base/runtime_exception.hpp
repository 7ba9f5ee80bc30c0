#pragma once
// Run-time failures. The analysis has no handler for any of them: whatever
// leaves an event handler goes to the application's unhandled path, which
// shows it to the user and keeps the program running.
#include <cstdint>
#include <stdexcept>
#include <string>

namespace drav {

class RuntimeException : public std::runtime_error {
 public:
  explicit RuntimeException(const std::string& message, std::int64_t errorNumber = 0)
      : std::runtime_error(message), errorNumber_(errorNumber) {}
  // The failure's code; for file failures the system's errno value.
  std::int64_t ErrorNumber() const { return errorNumber_; }

 private:
  std::int64_t errorNumber_;
};

// A file that exists could not be opened, or a read from it failed.
class IOException : public RuntimeException {
 public:
  IOException(std::string path, std::int64_t errorNumber);
  // A failure that the system has no words for, such as a pipe refused.
  IOException(std::string path, std::int64_t errorNumber, std::string reason);
  // The file, as the program was given it.
  const std::string& Path() const { return path_; }
  // Why, in the system's own words for ErrorNumber or in the thrower's.
  const std::string& Reason() const { return reason_; }

 private:
  std::string path_;
  std::string reason_;
};

// An empty reference was used where an object must be.
class NilObjectException : public RuntimeException {
 public:
  using RuntimeException::RuntimeException;
};

// A table was addressed outside its bounds.
class OutOfBoundsException : public RuntimeException {
 public:
  using RuntimeException::RuntimeException;
};

// A control or menu item was fetched as a class it is not.
class IllegalCastException : public RuntimeException {
 public:
  using RuntimeException::RuntimeException;
};

// A property sheet or other design-time data does not have the form the
// program was built with.
class UnsupportedFormatException : public RuntimeException {
 public:
  using RuntimeException::RuntimeException;
};

// The runtime's own checks; the program's paths do not raise them.
class StackOverflowException : public RuntimeException {
 public:
  using RuntimeException::RuntimeException;
};
class ThreadAccessingUIException : public RuntimeException {
 public:
  using RuntimeException::RuntimeException;
};
class TypeMismatchException : public RuntimeException {
 public:
  using RuntimeException::RuntimeException;
};
class FunctionNotFoundException : public RuntimeException {
 public:
  using RuntimeException::RuntimeException;
};

// Ends the program or a thread on purpose; the unhandled path drops both
// without a word.
class EndException : public RuntimeException {
 public:
  EndException() : RuntimeException("end") {}
};
class ThreadEndException : public RuntimeException {
 public:
  ThreadEndException() : RuntimeException("thread end") {}
};

}  // namespace drav
