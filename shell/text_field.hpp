#pragma once
#include <QLineEdit>

#include "shell/text_edit.hpp"

namespace drav {

// One-line text entry over QLineEdit. MaximumCharactersAllowed limits what
// can be typed or pasted; ValidationMask "##" takes one digit per #.
class TextField : public TextEdit {
 public:
  TextField();
  QLineEdit* Edit() const { return edit_; }

  // The field does the work of a label: it takes no focus, and a screen
  // reader reads it as a label, by its text.
  void ReadAsCaption();

  std::string Text() const override;
  void SetText(const std::string& text) override;

  bool CanUndo() const override { return edit_->isUndoAvailable(); }
  bool HasSelection() const override { return edit_->hasSelectedText(); }
  bool IsReadOnly() const override { return edit_->isReadOnly(); }
  bool IsEmpty() const override { return edit_->text().isEmpty(); }
  void Undo() override { edit_->undo(); }
  void Cut() override { edit_->cut(); }
  void Copy() override { edit_->copy(); }
  void Paste() override { edit_->paste(); }
  void Delete() override { edit_->del(); }
  void SelectAll() override { edit_->selectAll(); }
  void WatchState(QObject* context, std::function<void()> changed) override;

 protected:
  bool ApplyProperty(const Property& property) override;
  void SetAlignment(Qt::Alignment alignment) override;
  void SetColours(Color text, Color background) override;
  void SetBorder(bool border) override { edit_->setFrame(border); }
  void FontApplied() override;

 private:
  explicit TextField(QLineEdit* edit);
  QLineEdit* edit_;
};

}  // namespace drav
