#pragma once
#include <QObject>
#include <QWidget>
#include <functional>
#include <string>

#include "shell/propertied.hpp"

namespace drav {

// Base of all controls. A control is a QObject child of its Qt widget (or,
// for a timer, of its window), so it lives exactly as long as that.
class Control : public QObject, public Propertied {
 public:
  const std::string& Name() const { return name_; }
  void SetName(std::string name) { name_ = std::move(name); }

  // Raised once, after the control's sheet is applied and its window built.
  std::function<void()> Open;
  // Called by the window when it is built; raises Open.
  virtual void Opened();

 protected:
  explicit Control(QObject* parent) : QObject(parent) {}

 private:
  std::string name_;
};

// A control with a place on the window.
class RectControl : public Control {
 public:
  QWidget* Widget() const { return widget_; }

  bool Visible() const { return !widget_->isHidden(); }
  // False takes the control off the screen and keeps its contents.
  void SetVisible(bool visible) { widget_->setVisible(visible); }
  void SetFocus() { widget_->setFocus(Qt::OtherFocusReason); }
  // What a screen reader reads for the control: its name, and what it is for.
  void SetAccessibleText(const std::string& name, const std::string& description);

 protected:
  explicit RectControl(QWidget* widget) : Control(widget), widget_(widget) {}
  // Geometry, visibility, enabling, tooltip and tab stop; false for the rest.
  bool ApplyProperty(const Property& property) override;

 private:
  QWidget* widget_;
};

}  // namespace drav
