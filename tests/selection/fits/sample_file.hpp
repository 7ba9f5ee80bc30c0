#pragma once
// The sample outputs under tests/golden/fits/samples, read whole, and
// places in them named by what stands there.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>

namespace drav::testing_support {

inline std::string SampleText(const std::string& relative) {
  std::ifstream in(std::string(DRAV_SOURCE_DIR) + "/tests/golden/fits/samples/" + relative, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// The line of `text` (from 1) that first contains `needle`, so that a test
// names a place in a sample by what stands there.
inline std::int64_t LineOf(const std::string& text, const std::string& needle) {
  const std::size_t at = text.find(needle);
  if (at == std::string::npos) return 0;
  return 1 + static_cast<std::int64_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

}  // namespace drav::testing_support
