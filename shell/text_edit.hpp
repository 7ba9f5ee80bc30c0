#pragma once
#include <QFont>
#include <functional>
#include <string>

#include "shell/control.hpp"
#include "sheets/property_value.hpp"
#include "shell/text_style.hpp"

namespace drav {

// What TextField and TextArea share: the key filter, fonts and colours, and
// the six Edit commands, which work on whichever text control has the focus.
class TextEdit : public RectControl {
 public:
  virtual std::string Text() const = 0;
  virtual void SetText(const std::string& text) = 0;
  std::string Value() const { return Text(); }
  void SetValue(const std::string& text) { SetText(text); }

  void SetTextFont(const std::string& name);
  void SetTextSize(float size);
  void SetBold(bool bold);

  // Called with the key's text before the control sees the key; True
  // consumes it. Setting Text never raises it.
  std::function<bool(const std::string& key)> KeyDown;

  // The Edit commands, and whether each can act now.
  virtual bool CanUndo() const = 0;
  virtual bool HasSelection() const = 0;
  virtual bool IsReadOnly() const = 0;
  virtual bool IsEmpty() const = 0;
  virtual void Undo() = 0;
  virtual void Cut() = 0;
  virtual void Copy() = 0;
  virtual void Paste() = 0;
  virtual void Delete() = 0;
  virtual void SelectAll() = 0;

  // Calls back, in the context's lifetime, whenever what the Edit commands
  // can do may have changed: text, selection, undo history.
  virtual void WatchState(QObject* context, std::function<void()> changed) = 0;

  // The text control that is this widget, if it is one.
  static TextEdit* Of(const QWidget* widget);

  void Opened() override;

 protected:
  explicit TextEdit(QWidget* widget);
  bool ApplyProperty(const Property& property) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  virtual void SetAlignment(Qt::Alignment alignment) = 0;
  virtual void SetColours(Color text, Color background) = 0;
  virtual void SetBorder(bool border) = 0;
  // Called after the font changed.
  virtual void FontApplied() {}

 private:
  TextStyle style_;
  Color textColor_{0, 0, 0};
  Color backgroundColor_{255, 255, 255};
};

}  // namespace drav
