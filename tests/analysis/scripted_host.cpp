#include "tests/analysis/scripted_host.hpp"

#include "analysis/text.hpp"

namespace drav::testing_support {

std::string WithLf(const std::string& report) { return ReplaceAll(report, "\r", "\n"); }

}  // namespace drav::testing_support
