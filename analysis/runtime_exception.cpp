#include "analysis/runtime_exception.hpp"

#include <system_error>

namespace drav {
namespace {

std::string SystemReason(std::int64_t code) {
  return std::generic_category().message(static_cast<int>(code));
}

}  // namespace

IOException::IOException(std::string path, std::int64_t errorNumber)
    : RuntimeException("Cannot read \"" + path + "\": " + SystemReason(errorNumber) +
                           " (error " + std::to_string(errorNumber) + ")",
                       errorNumber),
      path_(std::move(path)) {}

std::string IOException::Reason() const { return SystemReason(ErrorNumber()); }

}  // namespace drav
