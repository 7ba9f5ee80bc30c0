#include "shell/picture.hpp"

#include "shell/qt_convert.hpp"

namespace drav {

std::shared_ptr<Picture> Picture::OpenFromApp(const std::string& fileName) {
  QPixmap pixmap;
  if (!pixmap.load(QStringLiteral(":/") + ToQ(fileName))) return nullptr;
  return std::make_shared<Picture>(std::move(pixmap));
}

}  // namespace drav
