#pragma once
// The refusals of a selection run. They stand in the one tree of run-time
// failures that the analysis core roots in RuntimeException; a file that
// cannot be read is the core's IOException. Each message is complete and
// names where the fault lies, in the shape Describe() gives a diagnostic.
#include <string>

#include "analysis/runtime_exception.hpp"

namespace drav::selection {

// The data cannot give a result: a cell that is not a number where one is
// needed, a missing column, a sample too small for AICc, an input that is
// not text or has no end, a warning under --strict. The message starts with
// "file:line:" where a line is to blame.
class DataError : public RuntimeException {
 public:
  explicit DataError(const std::string& message) : RuntimeException(message) {}
};

// The options ask for something the data cannot answer in any case, such as
// QAIC computed without an overdispersion factor.
class UsageError : public RuntimeException {
 public:
  explicit UsageError(const std::string& message) : RuntimeException(message) {}
};

}  // namespace drav::selection
