#include "shell/label.hpp"

#include "shell/qt_convert.hpp"

namespace drav {

Label::Label() : Label(new QLabel) {}

Label::Label(QLabel* label) : RectControl(label), label_(label) { label_->setTextFormat(Qt::PlainText); }

std::string Label::Value() const { return FromQ(label_->text()); }
void Label::SetValue(const std::string& text) { label_->setText(ToQ(text)); }

void Label::SetTextFont(const std::string& name) {
  fontName_ = name;
  ApplyFont();
}

void Label::SetTextSize(float size) {
  fontSize_ = size;
  ApplyFont();
}

void Label::SetBold(bool bold) {
  QFont font = label_->font();
  font.setBold(bold);
  label_->setFont(font);
}

void Label::ApplyFont() { label_->setFont(ResolveFont(label_->font(), fontName_, fontSize_)); }

bool Label::ApplyProperty(const Property& p) {
  const std::string& n = p.name;
  if (n == "Value") {
    SetValue(std::get<std::string>(p.value));
  } else if (n == "FontName") {
    SetTextFont(std::get<std::string>(p.value));
  } else if (n == "FontSize") {
    SetTextSize(std::get<Single>(p.value).value);
  } else if (n == "Bold") {
    SetBold(std::get<bool>(p.value));
  } else if (n == "Italic" || n == "Underline") {
    QFont font = label_->font();
    n == "Italic" ? font.setItalic(std::get<bool>(p.value)) : font.setUnderline(std::get<bool>(p.value));
    label_->setFont(font);
  } else if (n == "TextColor") {
    QPalette palette = label_->palette();
    palette.setColor(QPalette::WindowText, ToQ(std::get<Color>(p.value)));
    label_->setPalette(palette);
  } else if (n == "TextAlignment") {
    const std::int64_t a = std::get<std::int64_t>(p.value);
    label_->setAlignment((a == 2 ? Qt::AlignHCenter : a == 3 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  } else if (n == "Multiline") {
    label_->setWordWrap(std::get<bool>(p.value));
  } else if (n == "Selectable") {
    label_->setTextInteractionFlags(std::get<bool>(p.value) ? Qt::TextSelectableByMouse : Qt::NoTextInteraction);
  } else if (n == "Transparent") {
    label_->setAutoFillBackground(!std::get<bool>(p.value));
  } else {
    return RectControl::ApplyProperty(p);
  }
  return true;
}

}  // namespace drav
