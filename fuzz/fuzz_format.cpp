// Format under each of the four masks, for any double: plain ASCII, the
// mask's sign rule, at least one and at most the mask's fraction places,
// and Val reads back the rounded value.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

#include "analysis/format.hpp"
#include "analysis/val.hpp"
#include "fuzz/fuzz_checks.hpp"

namespace {

struct MaskCase {
  const char* mask;
  bool alwaysSign;
  std::size_t minFraction, maxFraction;
};

constexpr MaskCase kMasks[] = {
    {"+########0.0###", true, 1, 4}, {"#######0.0###", false, 1, 4}, {"0.0###", false, 1, 4}, {"#####0.0#", false, 1, 2}};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < sizeof(double) + 1) return 0;
  double value;
  std::memcpy(&value, data, sizeof value);
  const MaskCase& m = kMasks[data[sizeof value] % 4];
  const std::string text = drav::Format(value, m.mask);

  FUZZ_CHECK(!text.empty());
  for (char c : text) FUZZ_CHECK(static_cast<unsigned char>(c) < 0x80);
  if (std::isnan(value)) {
    FUZZ_CHECK(text == (m.alwaysSign ? "+NAN" : "NAN"));
    return 0;
  }
  if (std::isinf(value)) {
    FUZZ_CHECK(text == (value < 0 ? "-INF" : m.alwaysSign ? "+INF" : "INF"));
    return 0;
  }

  std::size_t i = 0;
  if (text[0] == '+' || text[0] == '-') ++i;
  FUZZ_CHECK(m.alwaysSign ? i == 1 : (i == 0 || text[0] == '-'));
  FUZZ_CHECK(text[0] != '-' || value < 0);
  const std::size_t point = text.find('.');
  FUZZ_CHECK(point != std::string::npos && point > i);
  for (std::size_t k = i; k < text.size(); ++k) FUZZ_CHECK(k == point || (text[k] >= '0' && text[k] <= '9'));
  const std::size_t fraction = text.size() - point - 1;
  FUZZ_CHECK(fraction >= m.minFraction && fraction <= m.maxFraction);
  FUZZ_CHECK(fraction == m.minFraction || text.back() != '0');  // no trailing zero on a # place
  FUZZ_CHECK(point - i == 1 || text[i] != '0');                 // no leading zero

  // Val gives back the rounded value, within half a unit of the last place.
  const double reread = drav::Val(text);
  FUZZ_CHECK(std::fabs(reread - value) <= 0.5 * std::pow(10.0, -double(m.maxFraction)) * (1 + 1e-9) +
                                               std::fabs(value) * 1e-15);
  return 0;
}
