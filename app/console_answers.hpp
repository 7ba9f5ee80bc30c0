#pragma once
// What drav answers on its terminal, before any window: --help, --version,
// and the want of a display.
#include <iosfwd>
#include <optional>

namespace drav {

// The exit status when drav has answered on the terminal and must not go
// on to open its windows; nothing when it should.
std::optional<int> AnswerOnTheTerminal(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace drav
