#include "windows/pictures.hpp"

namespace drav {

const std::shared_ptr<Picture>& _x_Dravtitle() {
  static const std::shared_ptr<Picture> picture = Picture::OpenFromApp("Dravtitle.png");
  return picture;
}

const std::shared_ptr<Picture>& _x_Drav256() {
  static const std::shared_ptr<Picture> picture = Picture::OpenFromApp("Drav256.png");
  return picture;
}

}  // namespace drav
