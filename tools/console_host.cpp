#include "tools/console_host.hpp"

#include <ostream>

namespace drav::cli {

void StreamAlert::MsgBox(const std::string& text) {
  out_ << text;
  if (text.empty() || text.back() != '\n') out_ << '\n';
  out_.flush();
}

}  // namespace drav::cli
