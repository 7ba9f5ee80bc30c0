#pragma once
#include <string>

namespace drav {

// The help document of the Information window: 105 lines, each ended by a
// carriage return but the last, with the title "Drav" as its first line.
const std::string& HelpDocument();

}  // namespace drav
