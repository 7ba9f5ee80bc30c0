#include "base/runtime_exception.hpp"

#include <system_error>

namespace drav {
namespace {

std::string SystemReason(std::int64_t code) {
  return std::generic_category().message(static_cast<int>(code));
}

}  // namespace

IOException::IOException(std::string path, std::int64_t errorNumber)
    : IOException(std::move(path), errorNumber, SystemReason(errorNumber)) {}

IOException::IOException(std::string path, std::int64_t errorNumber, std::string reason)
    : RuntimeException("Cannot read \"" + path + "\": " + reason + " (error " + std::to_string(errorNumber) + ")",
                       errorNumber),
      path_(std::move(path)),
      reason_(std::move(reason)) {}

}  // namespace drav
