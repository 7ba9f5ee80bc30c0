#pragma once
#include <QFont>
#include <QWidget>
#include <string>

#include "sheets/property_value.hpp"

namespace drav {

// The font of a control's text: name, size and styles, as sheets and Open
// handlers set them. "System" and size 0 are the platform's own.
class TextStyle {
 public:
  explicit TextStyle(QWidget* widget) : widget_(widget), font_(widget->font()) {}

  void SetFont(const std::string& name);
  void SetSize(float size);
  void SetBold(bool bold);

  // FontName, FontSize, Bold, Italic or Underline; false for any other.
  bool Apply(const Property& property);

 private:
  void Update();
  QWidget* widget_;
  QFont font_;
  std::string name_ = "System";
  float size_ = 0;
};

}  // namespace drav
