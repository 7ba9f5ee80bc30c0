#include "shell/text_field.hpp"

#include <QRegularExpressionValidator>

#include "shell/accessible_role.hpp"
#include "shell/qt_convert.hpp"

namespace drav {
namespace {

// A mask of # places: each takes one digit, so "##" takes up to two.
QValidator* MaskValidator(const std::string& mask, QObject* parent) {
  QString pattern;
  for (char c : mask) pattern += c == '#' ? QStringLiteral("[0-9]?") : QRegularExpression::escape(QString(QChar(c)));
  return new QRegularExpressionValidator(QRegularExpression(pattern), parent);
}

}  // namespace

TextField::TextField() : TextField(new QLineEdit) {}

TextField::TextField(QLineEdit* edit) : TextEdit(edit), edit_(edit) {}

std::string TextField::Text() const { return FromQ(edit_->text()); }

void TextField::SetText(const std::string& text) { edit_->setText(ToQ(text)); }

// A borderless read-only field is a caption: it reads from its start, and
// as interface fonts differ in width from platform to platform, a caption
// that would be clipped in its fixed width is drawn a little smaller.
void TextField::FontApplied() {
  if (edit_->hasFrame() || !edit_->isReadOnly() || edit_->text().isEmpty()) return;
  edit_->setCursorPosition(0);
  QFont font = edit_->font();
  const int room = edit_->width() - 6;
  while (QFontInfo(font).pixelSize() > 8 && QFontMetrics(font).horizontalAdvance(edit_->text()) > room) {
    font.setPixelSize(QFontInfo(font).pixelSize() - 1);
  }
  edit_->setFont(font);
}

void TextField::ReadAsCaption() {
  edit_->setFocusPolicy(Qt::NoFocus);
  SetAccessibleRole(*edit_, QAccessible::StaticText);
  SetAccessibleText(Text(), "The label of the field beside it");
}

void TextField::WatchState(QObject* context, std::function<void()> changed) {
  connect(edit_, &QLineEdit::textChanged, context, changed);
  connect(edit_, &QLineEdit::selectionChanged, context, changed);
}

void TextField::SetAlignment(Qt::Alignment alignment) { edit_->setAlignment(alignment | Qt::AlignVCenter); }

void TextField::SetColours(Color text, Color background) {
  QPalette palette = edit_->palette();
  palette.setColor(QPalette::Text, ToQ(text));
  palette.setColor(QPalette::Base, ToQ(background));
  edit_->setPalette(palette);
}

bool TextField::ApplyProperty(const Property& p) {
  if (p.name == "MaximumCharactersAllowed") {
    const std::int64_t limit = std::get<std::int64_t>(p.value);
    edit_->setMaxLength(limit > 0 ? static_cast<int>(limit) : 32767);
  } else if (p.name == "ValidationMask") {
    const std::string& mask = std::get<std::string>(p.value);
    edit_->setValidator(mask.empty() ? nullptr : MaskValidator(mask, edit_));
  } else if (p.name == "ReadOnly") {
    edit_->setReadOnly(std::get<bool>(p.value));
  } else if (p.name == "Password") {
    edit_->setEchoMode(std::get<bool>(p.value) ? QLineEdit::Password : QLineEdit::Normal);
  } else if (p.name == "Hint") {
    edit_->setPlaceholderText(ToQ(std::get<std::string>(p.value)));
  } else {
    return TextEdit::ApplyProperty(p);
  }
  return true;
}

}  // namespace drav
