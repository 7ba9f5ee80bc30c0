#include "shell/qt_convert.hpp"

#include <QApplication>

namespace drav {

QFont ResolveFont(QFont font, const std::string& name, float pointSize) {
  const QFont system = QApplication::font();
  font.setFamily(name.empty() || name == "System" ? system.family() : ToQ(name));
  // The sheets' sizes are in the toolkit's default unit, one pixel per
  // point as on the platform they were laid out on; the windows' fixed
  // geometry was drawn for that. Size 0 keeps the platform's own size.
  if (pointSize > 0) {
    font.setPixelSize(qRound(pointSize));
  } else {
    font.setPointSizeF(system.pointSizeF());
  }
  return font;
}

}  // namespace drav
