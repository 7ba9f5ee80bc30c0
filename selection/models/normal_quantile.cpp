#include "selection/models/normal_quantile.hpp"

#include <cmath>

namespace drav::selection {

double NormalQuantile(double p) {
  // Bisection on the CDF, 0.5 erfc(-z/sqrt 2), which rises strictly: slower
  // than a rational approximation but exact to the last bit the CDF has,
  // and one interval per table is nothing.
  double low = -40;
  double high = 40;
  for (int i = 0; i < 200 && high - low > 0; ++i) {
    const double mid = low + (high - low) / 2;
    if (mid == low || mid == high) break;
    if (0.5 * std::erfc(-mid / std::sqrt(2.0)) < p) {
      low = mid;
    } else {
      high = mid;
    }
  }
  return low + (high - low) / 2;
}

}  // namespace drav::selection
