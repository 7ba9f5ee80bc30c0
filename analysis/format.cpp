#include "analysis/format.hpp"

#include <algorithm>
#include <iterator>
#include <charconv>
#include <cmath>

namespace drav {
namespace {

struct Mask {
  bool alwaysSign = false;
  int integerZeros = 0;    // integer places that always print
  int fractionZeros = 0;   // fraction places that always print
  int fractionPlaces = 0;  // all fraction places, 0 and #
};

Mask ParseMask(std::string_view text) {
  Mask mask;
  std::size_t i = 0;
  if (!text.empty() && text[0] == '+') {
    mask.alwaysSign = true;
    ++i;
  }
  bool inFraction = false;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '.') {
      inFraction = true;
    } else if (c == '0' || c == '#') {
      if (!inFraction) {
        mask.integerZeros += c == '0';
      } else {
        mask.fractionZeros += c == '0';
        ++mask.fractionPlaces;
      }
    }
  }
  return mask;
}

}  // namespace

std::string Format(double number, std::string_view maskText) {
  const Mask mask = ParseMask(maskText);
  std::string out;
  if (std::isnan(number)) {
    if (mask.alwaysSign) out += '+';
    return out + "NAN";
  }
  if (std::isinf(number)) {
    if (number < 0) {
      out += '-';
    } else if (mask.alwaysSign) {
      out += '+';
    }
    return out + "INF";
  }

  // The largest double has 309 integer digits; fraction places are few.
  char digits[400];
  const auto result = std::to_chars(std::begin(digits), std::end(digits), std::fabs(number),
                                    std::chars_format::fixed, mask.fractionPlaces);
  const char* const digitsEnd = result.ptr;
  const char* point = std::find(static_cast<const char*>(digits), digitsEnd, '.');
  std::size_t integerLength = static_cast<std::size_t>(point - digits);
  std::size_t fractionLength = point == digitsEnd ? 0 : static_cast<std::size_t>(digitsEnd - point - 1);
  while (fractionLength > static_cast<std::size_t>(mask.fractionZeros) && point[fractionLength] == '0') {
    --fractionLength;
  }
  const char* integerStart = digits;
  if (integerLength == 1 && digits[0] == '0' && mask.integerZeros == 0) integerLength = 0;

  // A negative number that rounds to zero prints as zero, with no minus.
  const auto isZero = [](const char* from, std::size_t n) {
    return std::all_of(from, from + n, [](char c) { return c == '0'; });
  };
  const bool roundsToZero = isZero(integerStart, integerLength) && isZero(point + 1, fractionLength);
  if (number < 0 && !roundsToZero) {
    out += '-';
  } else if (mask.alwaysSign) {
    out += '+';
  }
  if (integerLength < static_cast<std::size_t>(mask.integerZeros)) {
    out.append(static_cast<std::size_t>(mask.integerZeros) - integerLength, '0');
  }
  out.append(integerStart, integerLength);
  if (mask.fractionPlaces > 0) {
    out += '.';
    out.append(point + 1, fractionLength);
  }
  return out;
}

}  // namespace drav
