#pragma once
#include <QLabel>

#include "shell/control.hpp"
#include "shell/text_style.hpp"

namespace drav {

// One line (or a few) of fixed text over QLabel.
class Label : public RectControl {
 public:
  Label();
  QLabel* Text() const { return label_; }
  std::string Value() const;
  void SetValue(const std::string& text);
  void SetTextFont(const std::string& name);
  void SetTextSize(float size);
  void SetBold(bool bold);

 protected:
  bool ApplyProperty(const Property& property) override;

 private:
  explicit Label(QLabel* label);
  QLabel* label_;
  TextStyle style_;
};

}  // namespace drav
