#include "shell/label.hpp"

#include "shell/qt_convert.hpp"

namespace drav {

Label::Label() : Label(new QLabel) {}

Label::Label(QLabel* label) : RectControl(label), label_(label), style_(label) { label_->setTextFormat(Qt::PlainText); }

std::string Label::Value() const { return FromQ(label_->text()); }
void Label::SetValue(const std::string& text) { label_->setText(ToQ(text)); }

void Label::SetTextFont(const std::string& name) { style_.SetFont(name); }
void Label::SetTextSize(float size) { style_.SetSize(size); }
void Label::SetBold(bool bold) { style_.SetBold(bold); }

bool Label::ApplyProperty(const Property& p) {
  const std::string& n = p.name;
  if (style_.Apply(p)) {
    return true;
  } else if (n == "Value") {
    SetValue(std::get<std::string>(p.value));
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
