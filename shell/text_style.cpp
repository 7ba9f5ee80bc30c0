#include "shell/text_style.hpp"

#include "shell/qt_convert.hpp"

namespace drav {

void TextStyle::SetFont(const std::string& name) {
  name_ = name;
  Update();
}

void TextStyle::SetSize(float size) {
  size_ = size;
  Update();
}

void TextStyle::SetBold(bool bold) {
  font_.setBold(bold);
  Update();
}

bool TextStyle::Apply(const Property& p) {
  if (p.name == "FontName") {
    SetFont(std::get<std::string>(p.value));
  } else if (p.name == "FontSize") {
    SetSize(std::get<Single>(p.value).value);
  } else if (p.name == "Bold") {
    SetBold(std::get<bool>(p.value));
  } else if (p.name == "Italic") {
    font_.setItalic(std::get<bool>(p.value));
    Update();
  } else if (p.name == "Underline") {
    font_.setUnderline(std::get<bool>(p.value));
    Update();
  } else {
    return false;
  }
  return true;
}

void TextStyle::Update() {
  font_ = ResolveFont(font_, name_, size_);
  widget_->setFont(font_);
}

}  // namespace drav
