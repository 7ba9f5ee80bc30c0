#include "shell/qt_convert.hpp"

#include <QApplication>

namespace drav {

QFont ResolveFont(QFont font, const std::string& name, float pointSize) {
  const QFont system = QApplication::font();
  font.setFamily(name.empty() || name == "System" ? system.family() : ToQ(name));
  font.setPointSizeF(pointSize > 0 ? pointSize : system.pointSizeF());
  return font;
}

}  // namespace drav
