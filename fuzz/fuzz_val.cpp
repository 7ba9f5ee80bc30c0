// Val on any text: never fails, always finite, and reading back what Format printed of its
// result gives that printed value again.
#include <cmath>
#include <cstdint>
#include <string_view>

#include "analysis/format.hpp"
#include "analysis/number_scanner.hpp"
#include "analysis/val.hpp"
#include "fuzz/fuzz_checks.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const double value = drav::Val(text);
  // Overflow stands as the largest finite double: never NaN, never infinite.
  FUZZ_CHECK(std::isfinite(value));
  // The scanner that reads numbers streaming by, fed in two pieces, agrees
  // with Val, and so does its short stand-in text.
  drav::NumberScanner scanner;
  const std::size_t cut = size == 0 ? 0 : data[0] % (size + 1);
  scanner.Feed(text.substr(0, cut));
  scanner.Feed(text.substr(cut));
  FUZZ_CHECK(scanner.Value() == value);
  FUZZ_CHECK(drav::Val(scanner.Canonical()) == value);
  for (const char* mask : {"+########0.0###", "#####0.0#"}) {
    const std::string printed = drav::Format(value, mask);
    const double reread = drav::Val(printed);
    // The printed text is the value rounded; printing it again changes nothing.
    FUZZ_CHECK(drav::Format(reread, mask) == printed);
    const double places = mask[1] == '#' && mask[0] == '+' ? 1e-4 : 1e-2;
    FUZZ_CHECK(std::fabs(reread - value) <= places / 2 * (1 + 1e-9) + std::fabs(value) * 1e-15);
  }
  return 0;
}
