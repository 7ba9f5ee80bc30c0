#pragma once
// The program's two pictures, read from the application's resources once
// and shared from then on; nil if a picture is missing, and the windows
// work without it.
#include <memory>

#include "shell/picture.hpp"

namespace drav {

// "Dravtitle.png", 250 by 70: the title over the main window.
const std::shared_ptr<Picture>& _x_Dravtitle();
// "Drav256.png", 256 by 256: the splash panel's picture.
const std::shared_ptr<Picture>& _x_Drav256();

}  // namespace drav
