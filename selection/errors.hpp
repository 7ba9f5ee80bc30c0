#pragma once
// What can go wrong while a selection table is made, one type per answer the
// front end gives: a file it cannot read, data it refuses, or a request that
// makes no sense. Each message is complete and names where the fault lies.
#include <stdexcept>
#include <string>

namespace drav::selection {

// The input could not be read; `ErrorNumber` is the system's errno, so that
// the front end can give the system's own words for it.
class ReadError : public std::runtime_error {
 public:
  ReadError(std::string name, int errorNumber)
      : std::runtime_error(name), name_(std::move(name)), errorNumber_(errorNumber) {}
  const std::string& Name() const { return name_; }
  int ErrorNumber() const { return errorNumber_; }

 private:
  std::string name_;
  int errorNumber_;
};

// The data cannot give a table: a cell that is not a number where one is
// needed, a missing column, a sample too small for AICc, an input that is
// not text or has no end. The message starts with "file:line:" where a line
// is to blame.
class DataError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The options ask for something the data cannot answer in any case, such as
// QAIC computed without an overdispersion factor.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace drav::selection
