#include "shell/text_area.hpp"

#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>

#include "analysis/end_of_line.hpp"
#include "base/text.hpp"
#include "base/utf8.hpp"
#include "shell/qt_convert.hpp"

namespace drav {
namespace {

// On X11 a paste into a QTextEdit while the clipboard is empty crashes inside
// Qt, so a paste of nothing is refused here; only plain text is taken.
class GuardedTextEdit : public QTextEdit {
 protected:
  bool canInsertFromMimeData(const QMimeData* source) const override {
    return source != nullptr && source->hasText() && !source->text().isEmpty();
  }
  void insertFromMimeData(const QMimeData* source) override {
    if (canInsertFromMimeData(source)) textCursor().insertText(source->text());
  }
  // Tab reaches the area only when there is no other stop to move to;
  // where tabs are not allowed it still types nothing.
  void keyPressEvent(QKeyEvent* event) override {
    const bool tab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    if (tab && tabChangesFocus() && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
      event->ignore();
      return;
    }
    QTextEdit::keyPressEvent(event);
  }
};

QString DisplayForm(const std::string& text) {
  return ToQ(ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n"));
}

}  // namespace

int DisplayPosition(std::string_view text, std::int64_t index) {
  int position = 0;
  std::size_t i = 0;
  for (std::int64_t counted = 0; counted < index && i < text.size(); ++counted) {
    const bool crlf = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    // The CR of CR LF takes no place of its own on the screen.
    if (!crlf) position += utf8::Decode(text, i) > 0xFFFF ? 2 : 1;
    i += utf8::CharLength(text, i);
  }
  return position;
}

TextArea::TextArea() : TextArea(new GuardedTextEdit) {}

TextArea::TextArea(QTextEdit* edit) : TextEdit(edit), edit_(edit) {
  edit_->setAcceptRichText(false);
  edit_->setTabChangesFocus(true);
  edit_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(edit_, &QTextEdit::textChanged, this, [this] {
    if (!settingText_) edited_ = true;
  });
}

TextArea::~TextArea() = default;

std::string TextArea::Text() const {
  if (!edited_) return exactText_;
  return ReplaceAll(FromQ(edit_->toPlainText()), "\n", EndOfLine::Build());
}

void TextArea::SetText(const std::string& text) {
  // A run sets the old text with a new report behind it. Laying out the whole
  // text again would make each run slower than the one before, so only the
  // new tail is added, with the same text as setting it all and no undo step;
  // the caret, a selection and the scroll position stay where the user left
  // them.
  const bool extends = !edited_ && !exactText_.empty() && text.size() > exactText_.size() &&
                       std::string_view(text).substr(0, exactText_.size()) == exactText_ &&
                       !(exactText_.back() == '\r' && text[exactText_.size()] == '\n');
  settingText_ = true;
  if (extends) {
    QTextDocument* document = edit_->document();
    document->setUndoRedoEnabled(false);
    QTextCursor end(document);
    end.movePosition(QTextCursor::End);
    end.setCharFormat(QTextCharFormat());
    end.insertText(DisplayForm(text.substr(exactText_.size())));
    document->setUndoRedoEnabled(true);
  } else {
    edit_->setPlainText(DisplayForm(text));
  }
  exactText_ = text;
  edited_ = false;
  settingText_ = false;
}

void TextArea::AppendText(const std::string& text) {
  const std::string before = Text();
  settingText_ = true;
  exactText_ = before + text;
  edited_ = false;
  QTextCursor end(edit_->document());
  end.movePosition(QTextCursor::End);
  end.setCharFormat(QTextCharFormat());
  end.insertText(DisplayForm(text));
  settingText_ = false;
}

void TextArea::ScrollToTop(std::int64_t index) {
  QTextDocument* document = edit_->document();
  QTextCursor at(document);
  at.setPosition(std::min(DisplayPosition(Text(), index), document->characterCount() - 1));
  QScrollBar* bar = edit_->verticalScrollBar();
  bar->setValue(bar->value() + edit_->cursorRect(at).top());
}

void TextArea::WatchState(QObject* context, std::function<void()> changed) {
  connect(edit_, &QTextEdit::textChanged, context, changed);
  connect(edit_, &QTextEdit::selectionChanged, context, changed);
  connect(edit_, &QTextEdit::undoAvailable, context, changed);
}

StyledText& TextArea::GetStyledText() {
  if (!styledText_) styledText_ = std::make_unique<StyledText>(*this);
  return *styledText_;
}

void TextArea::SetAlignment(Qt::Alignment alignment) { edit_->setAlignment(alignment); }

void TextArea::SetColours(Color text, Color background) {
  QPalette palette = edit_->palette();
  palette.setColor(QPalette::Text, ToQ(text));
  palette.setColor(QPalette::Base, ToQ(background));
  edit_->setPalette(palette);
}

void TextArea::SetBorder(bool border) { edit_->setFrameShape(border ? QFrame::StyledPanel : QFrame::NoFrame); }

bool TextArea::ApplyProperty(const Property& p) {
  if (p.name == "ReadOnly") {
    edit_->setReadOnly(std::get<bool>(p.value));
  } else if (p.name == "AllowTabs") {
    edit_->setTabChangesFocus(!std::get<bool>(p.value));
  } else if (p.name == "HasVerticalScrollbar") {
    edit_->setVerticalScrollBarPolicy(std::get<bool>(p.value) ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAsNeeded);
  } else if (p.name == "HasHorizontalScrollbar") {
    const bool on = std::get<bool>(p.value);
    edit_->setLineWrapMode(on ? QTextEdit::NoWrap : QTextEdit::WidgetWidth);
    edit_->setHorizontalScrollBarPolicy(on ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
  } else {
    return TextEdit::ApplyProperty(p);
  }
  return true;
}

void StyledText::Bold(std::int64_t start, std::int64_t length, bool bold) {
  const std::string text = area_.Text();
  QTextCursor cursor(area_.Edit()->document());
  cursor.setPosition(DisplayPosition(text, start));
  cursor.setPosition(DisplayPosition(text, start + length), QTextCursor::KeepAnchor);
  QTextCharFormat format;
  format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
  cursor.mergeCharFormat(format);
}

bool StyledText::IsBold(std::int64_t position) const {
  QTextCursor cursor(area_.Edit()->document());
  cursor.setPosition(DisplayPosition(area_.Text(), position) + 1);  // the format of the character before
  return cursor.charFormat().fontWeight() >= QFont::Bold;
}

}  // namespace drav
