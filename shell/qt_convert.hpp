#pragma once
// Conversions between the core's texts and values and Qt's.
#include <QColor>
#include <QFont>
#include <QString>
#include <string>
#include <string_view>

#include "sheets/property_value.hpp"

namespace drav {

inline QString ToQ(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }
inline std::string FromQ(const QString& text) { return text.toStdString(); }
inline QColor ToQ(Color c) { return QColor(c.red, c.green, c.blue, 255 - c.alpha); }

// "System" is the platform's interface font; a size of 0 its standard size,
// any other size that many pixels.
QFont ResolveFont(QFont font, const std::string& name, float pointSize);

}  // namespace drav
