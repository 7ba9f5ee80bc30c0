#include "shell/text_edit.hpp"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QTextEdit>

#include "shell/handler_guard.hpp"
#include "shell/key_text.hpp"
#include "shell/qt_convert.hpp"

namespace drav {
namespace {

// A combination that a menu item of the window carries is that item's
// command, never a typed key: enabled, the item acts; disabled, nothing
// happens. Text widgets would otherwise accept the shortcut override of
// Ctrl+C, Ctrl+Z and the like for their own built-in commands, and a
// disabled item's key would fall through to the KeyDown filter.
bool BelongsToMenu(const QWidget* widget, const QKeyEvent& event) {
  const QKeySequence pressed(event.keyCombination());
  for (const QAction* action : widget->window()->findChildren<QAction*>()) {
    if (!action->shortcut().isEmpty() && action->shortcut() == pressed) return true;
  }
  return false;
}

}  // namespace

TextEdit::TextEdit(QWidget* widget) : RectControl(widget), style_(widget) {
  widget->installEventFilter(this);
}

TextEdit* TextEdit::Of(const QWidget* focus) {
  if (focus == nullptr) return nullptr;
  for (QObject* child : focus->children()) {
    if (auto* edit = dynamic_cast<TextEdit*>(child)) return edit;
  }
  return nullptr;
}

bool TextEdit::eventFilter(QObject* watched, QEvent* event) {
  if (watched != Widget()) return false;
  if (event->type() == QEvent::FocusOut && static_cast<QFocusEvent*>(event)->reason() == Qt::MenuBarFocusReason) {
    // The bar takes the keys while a menu is worked by keyboard (Alt, an
    // access key). To the control that is a menu popping up, as with the
    // mouse: it keeps its selection for the Edit items to act on.
    QFocusEvent popup(QEvent::FocusOut, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(Widget(), &popup);
    return true;
  }
  if (event->type() == QEvent::ShortcutOverride) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (BelongsToMenu(Widget(), *key)) {
      key->ignore();
      return true;
    }
  } else if (event->type() == QEvent::KeyPress && BelongsToMenu(Widget(), *static_cast<QKeyEvent*>(event))) {
    return true;  // the key of a disabled item: the shortcut did not fire
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

// The user's undo starts from the control as its window built it: the text
// and styling that the Open handler put in are no edit to take back.
void TextEdit::Opened() {
  RectControl::Opened();
  if (auto* area = qobject_cast<QTextEdit*>(Widget())) area->document()->clearUndoRedoStacks();
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
