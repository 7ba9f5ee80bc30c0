#include "tools/exit_status.hpp"

namespace drav::cli {

std::string ExitStatusHelp() {
  std::string text = "Exit status:\n";
  for (const ExitStatusEntry& entry : kExitStatuses) {
    text += "  " + std::to_string(Code(entry.status)) + "  ";
    text += entry.meaning;
    text += '\n';
  }
  return text + "A reader that goes away (a closed pipe) ends the program quietly, as any filter.\n";
}

}  // namespace drav::cli
