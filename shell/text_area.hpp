#pragma once
#include <QTextEdit>

#include "shell/text_edit.hpp"

namespace drav {

class StyledText;

// Scrolling multi-line text over QTextEdit. Text reads back exactly what was
// set, CR, LF and CR LF included, while the area shows each as a line break;
// once the user has typed, line breaks read back as the build's line end.
class TextArea : public TextEdit {
 public:
  TextArea();
  ~TextArea() override;
  QTextEdit* Edit() const { return edit_; }

  std::string Text() const override;
  void SetText(const std::string& text) override;
  // Adds the text behind the content.
  void AppendText(const std::string& text);
  // Scrolls the line that holds character `index` of Text, from 0, to the
  // top of the view, or as near as the text's length allows.
  void ScrollToTop(std::int64_t index);
  // The styling view of the area.
  StyledText& GetStyledText();

  bool CanUndo() const override { return edit_->document()->isUndoAvailable(); }
  bool HasSelection() const override { return edit_->textCursor().hasSelection(); }
  bool IsReadOnly() const override { return edit_->isReadOnly(); }
  bool IsEmpty() const override { return edit_->document()->isEmpty(); }
  void Undo() override { edit_->undo(); }
  void Cut() override { edit_->cut(); }
  void Copy() override { edit_->copy(); }
  void Paste() override { edit_->paste(); }
  void Delete() override { edit_->textCursor().removeSelectedText(); }
  void SelectAll() override { edit_->selectAll(); }
  void WatchState(QObject* context, std::function<void()> changed) override;

 protected:
  bool ApplyProperty(const Property& property) override;
  void SetAlignment(Qt::Alignment alignment) override;
  void SetColours(Color text, Color background) override;
  void SetBorder(bool border) override;

 private:
  explicit TextArea(QTextEdit* edit);
  QTextEdit* edit_;
  std::string exactText_;
  bool edited_ = false;   // the user has changed the text since it was set
  bool settingText_ = false;
  std::unique_ptr<StyledText> styledText_;
};

// The styling view of a TextArea. Start and length count characters of the
// area's Text, from 0.
class StyledText {
 public:
  explicit StyledText(TextArea& area) : area_(area) {}
  void Bold(std::int64_t start, std::int64_t length, bool bold);
  bool IsBold(std::int64_t position) const;

 private:
  TextArea& area_;
};

// Where character `index` of a text stands in its display form: CR LF shows
// as one line break, and characters beyond U+FFFF take two UTF-16 units.
int DisplayPosition(std::string_view text, std::int64_t index);

}  // namespace drav
