#include "app/console_answers.hpp"

#include <cstdlib>
#include <ostream>
#include <string_view>

namespace drav {
namespace {

constexpr std::string_view kVersion = "drav 2.1\n";

constexpr std::string_view kHelp = R"(Usage: drav
       drav --help | --version

Drav is a desktop program: in its window you type the number of models
in a set, press Load Data and choose a file of model names and AIC values,
and it reports each model's AIC difference, Akaike weight and evidence
ratio. It takes no file or option of its own; Qt's own options, such as
-platform offscreen, are accepted. See man drav.

The same report on the command line: drav-report COUNT FILE
(drav-report --help, man drav-report).
)";

constexpr std::string_view kNoDisplay =
    "drav: Drav is a desktop program and found no display (neither DISPLAY nor WAYLAND_DISPLAY is set); "
    "drav-report COUNT FILE gives the same report on the command line.\n";

bool Set(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

// Qt takes -platform and --platform alike, as a pair of arguments or joined
// by "=".
bool ChoosesPlatform(std::string_view arg) {
  if (arg.starts_with("--")) arg.remove_prefix(1);
  return arg == "-platform" || arg.starts_with("-platform=");
}

}  // namespace

std::optional<int> AnswerOnTheTerminal(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
  bool platformChosen = Set("QT_QPA_PLATFORM");
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    if (arg == "--help") return out << kHelp << std::flush ? 0 : 1;
    if (arg == "--version") return out << kVersion << std::flush ? 0 : 1;
    platformChosen = platformChosen || ChoosesPlatform(arg);
  }
  // Without a display Qt would abort with a core dump and advise a
  // reinstall, which helps no one.
  if (!platformChosen && !Set("DISPLAY") && !Set("WAYLAND_DISPLAY")) {
    err << kNoDisplay << std::flush;
    return 1;
  }
  return std::nullopt;
}

}  // namespace drav
