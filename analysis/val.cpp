#include "analysis/val.hpp"

#include "analysis/number_scanner.hpp"

namespace drav {

double Val(std::string_view text) {
  NumberScanner scanner;
  scanner.Feed(text);
  return scanner.Value();
}

}  // namespace drav
