#include "analysis/format.hpp"

#include <array>
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
  std::array<char, 400> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(number),
                                    std::chars_format::fixed, mask.fractionPlaces);
  std::string_view digits(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));

  const std::size_t point = digits.find('.');
  std::string_view integerPart = digits.substr(0, point);
  std::string_view fractionPart =
      point == std::string_view::npos ? std::string_view{} : digits.substr(point + 1);
  while (fractionPart.size() > static_cast<std::size_t>(mask.fractionZeros) && fractionPart.back() == '0') {
    fractionPart.remove_suffix(1);
  }
  if (integerPart == "0" && mask.integerZeros == 0) integerPart = {};

  // A negative number that rounds to zero prints as zero, with no minus.
  const bool roundsToZero = integerPart.find_first_not_of('0') == std::string_view::npos &&
                            fractionPart.find_first_not_of('0') == std::string_view::npos;
  if (number < 0 && !roundsToZero) {
    out += '-';
  } else if (mask.alwaysSign) {
    out += '+';
  }
  for (std::size_t n = integerPart.size(); n < static_cast<std::size_t>(mask.integerZeros); ++n) out += '0';
  out += integerPart;
  if (mask.fractionPlaces > 0) {
    out += '.';
    out += fractionPart;
  }
  return out;
}

}  // namespace drav
