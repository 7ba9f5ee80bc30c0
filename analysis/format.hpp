#pragma once
#include <string>
#include <string_view>

namespace drav {

// Prints a number under a mask of the form [+][#...][0...].[0...][#...]:
//   +  always print a sign (plus for zero and positive numbers);
//   #  a digit place that prints only what the number has, never pads;
//   0  a digit place that always prints, a zero if need be;
//   .  the decimal point, always a full stop.
// The magnitude is rounded to the mask's fraction places on the exact binary
// value, so 1.005 under two places prints 1.0. Integer digits are never
// dropped and no thousands separator is printed: the report re-reads the
// text with Val to apply its thresholds. The result is plain ASCII.
// Non-finite numbers print as INF or NAN, with the sign the mask asks for.
std::string Format(double number, std::string_view mask);

}  // namespace drav
