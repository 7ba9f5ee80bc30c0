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

// The report prints with four masks over and over; the last few parsed are
// kept so that a mask is read once, not once per number.
const Mask& CachedMask(std::string_view text) {
  struct Entry {
    std::string text;
    Mask mask;
  };
  thread_local Entry cache[4];
  thread_local std::size_t next = 0;
  for (const Entry& entry : cache) {
    if (entry.text == text && !entry.text.empty()) return entry.mask;
  }
  Entry& entry = cache[next];
  next = (next + 1) % std::size(cache);
  entry.text = text;
  entry.mask = ParseMask(text);
  return entry.mask;
}

}  // namespace

std::string Format(double number, std::string_view maskText) {
  const Mask& mask = CachedMask(maskText);
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
  char text[sizeof digits + 8];
  char* end = text;
  if (number < 0 && !(isZero(integerStart, integerLength) && isZero(point + 1, fractionLength))) {
    *end++ = '-';
  } else if (mask.alwaysSign) {
    *end++ = '+';
  }
  for (std::size_t n = integerLength; n < static_cast<std::size_t>(mask.integerZeros); ++n) *end++ = '0';
  end = std::copy_n(integerStart, integerLength, end);
  if (mask.fractionPlaces > 0) {
    *end++ = '.';
    end = std::copy_n(point + 1, fractionLength, end);
  }
  out.assign(text, end);
  return out;
}

}  // namespace drav
