#include "shell/text_edit.hpp"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>

#include "shell/handler_guard.hpp"
#include "shell/key_text.hpp"
#include "shell/qt_convert.hpp"

namespace drav {
namespace {

// Text widgets accept the shortcut override of Ctrl+C, Ctrl+V, Ctrl+Z and
// the like for their own built-in commands, which would keep the menu's
// shortcuts from ever firing. The menu gets every combination it has an
// enabled item for; all other keys go on to the KeyDown filter.
bool BelongsToMenu(const QWidget* widget, const QKeyEvent& event) {
  const QKeySequence pressed(event.keyCombination());
  for (const QAction* action : widget->window()->findChildren<QAction*>()) {
    if (action->isEnabled() && !action->shortcut().isEmpty() && action->shortcut() == pressed) return true;
  }
  return false;
}

}  // namespace

TextEdit::TextEdit(QWidget* widget) : RectControl(widget), style_(widget) {
  widget->installEventFilter(this);
}

TextEdit* TextEdit::Focused(const QWidget* window) {
  QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr || focus->window() != window) return nullptr;
  for (QObject* child : focus->children()) {
    if (auto* edit = dynamic_cast<TextEdit*>(child)) return edit;
  }
  return nullptr;
}

bool TextEdit::eventFilter(QObject* watched, QEvent* event) {
  if (watched != Widget()) return false;
  if (event->type() == QEvent::ShortcutOverride) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (BelongsToMenu(Widget(), *key)) {
      key->ignore();
      return true;
    }
  } else if (event->type() == QEvent::KeyPress && KeyDown) {
    const std::optional<std::string> text = KeyText(*static_cast<QKeyEvent*>(event));
    if (!text) return false;
    bool consumed = false;
    // A key whose handler failed is consumed: the control does nothing with it.
    if (!internal::GuardHandler([&] { consumed = KeyDown(*text); })) return true;
    return consumed;
  }
  return false;
}

void TextEdit::SetTextFont(const std::string& name) {
  style_.SetFont(name);
  FontApplied();
}

void TextEdit::SetTextSize(float size) {
  style_.SetSize(size);
  FontApplied();
}

void TextEdit::SetBold(bool bold) {
  style_.SetBold(bold);
  FontApplied();
}

bool TextEdit::ApplyProperty(const Property& p) {
  const std::string& n = p.name;
  if (style_.Apply(p)) {
    FontApplied();
  } else if (n == "Value") {
    SetText(std::get<std::string>(p.value));
  } else if (n == "TextColor" || n == "BackgroundColor") {
    (n == "TextColor" ? textColor_ : backgroundColor_) = std::get<Color>(p.value);
    SetColours(textColor_, backgroundColor_);
  } else if (n == "HasBorder") {
    SetBorder(std::get<bool>(p.value));
  } else if (n == "TextAlignment") {
    // 0 is the platform's default, 1 left, 2 centre, 3 right.
    const std::int64_t a = std::get<std::int64_t>(p.value);
    SetAlignment(a == 2 ? Qt::AlignHCenter : a == 3 ? Qt::AlignRight : Qt::AlignLeft);
  } else {
    return RectControl::ApplyProperty(p);
  }
  return true;
}

}  // namespace drav
