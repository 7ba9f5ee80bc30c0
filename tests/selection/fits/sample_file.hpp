#pragma once
// The sample outputs under tests/golden/fits/samples, read whole, and the
// one record of them a case is about.
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

}  // namespace drav::testing_support
