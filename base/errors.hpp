#pragma once
// The refusals of a selection run. They stand in the one tree of run-time
// failures that the analysis core roots in RuntimeException; a file that
// cannot be read is the core's IOException. A refusal of the data carries
// its diagnostic (where the fault lies, the column and the record), and its
// message is that diagnostic described as every message is.
#include <string>
#include <utility>

#include "base/diagnostics.hpp"
#include "base/runtime_exception.hpp"

namespace drav::selection {

// The data cannot give a result: a cell that is not a number where one is
// needed, a missing column, a sample too small for AICc, an input that is
// not text or has no end, a warning under --strict. The message starts with
// "file:line:" where a line is to blame.
class DataError : public RuntimeException {
 public:
  explicit DataError(Diagnostic diagnostic)
      : RuntimeException(Describe(diagnostic)), diagnostic_(std::move(diagnostic)) {}
  const Diagnostic& Said() const { return diagnostic_; }

 private:
  Diagnostic diagnostic_;
};

// The one way the data is refused: throws DataError with `diagnostic` as
// an error.
[[noreturn]] inline void Refuse(Diagnostic diagnostic) {
  diagnostic.severity = Severity::Error;
  throw DataError(std::move(diagnostic));
}

// The options ask for something the data cannot answer in any case, such as
// QAIC computed without an overdispersion factor.
class UsageError : public RuntimeException {
 public:
  explicit UsageError(const std::string& message) : RuntimeException(message) {}
};

}  // namespace drav::selection
