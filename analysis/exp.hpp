#pragma once
#include <cmath>

namespace drav {

// e to the power of x in double precision: exactly 1 at 0, exactly 0.0 below
// about -745.13, where the weight of a very poor model underflows.
inline double Exp(double x) { return std::exp(x); }

}  // namespace drav
