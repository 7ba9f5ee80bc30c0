// The property-sheet reader on any bytes: it either refuses them with
// UnsupportedFormatException or reads entries that write back to exactly
// the same bytes.
#include <cstdint>
#include <string>

#include "base/runtime_exception.hpp"
#include "fuzz/fuzz_checks.hpp"
#include "sheets/property_sheet.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::vector<drav::Property> sheet;
  try {
    sheet = drav::DecodeSheet(bytes);
  } catch (const drav::UnsupportedFormatException&) {
    return 0;
  }
  // Doubles are compared by their bytes: a NaN must come back as the same NaN.
  FUZZ_CHECK(drav::EncodeSheet(sheet) == bytes);
  return 0;
}
