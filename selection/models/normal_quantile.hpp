#pragma once

namespace drav::selection {

// The standard normal distribution's quantile: the z with P(Z <= z) = p, for
// 0 < p < 1 (1.959964 for 0.975). The standard library has the normal CDF
// through std::erfc but not its inverse.
double NormalQuantile(double p);

}  // namespace drav::selection
