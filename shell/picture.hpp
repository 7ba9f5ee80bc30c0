#pragma once
#include <QPixmap>
#include <memory>
#include <string>

namespace drav {

// An image.
class Picture {
 public:
  explicit Picture(QPixmap pixmap) : pixmap_(std::move(pixmap)) {}
  const QPixmap& Pixmap() const { return pixmap_; }
  int Width() const { return pixmap_.width(); }
  int Height() const { return pixmap_.height(); }

  // The picture of that file name among the application's own resources
  // (":/" in Qt's resource system); nil when there is none.
  static std::shared_ptr<Picture> OpenFromApp(const std::string& fileName);

 private:
  QPixmap pixmap_;
};

}  // namespace drav
