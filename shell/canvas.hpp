#pragma once
#include <memory>

#include "shell/control.hpp"
#include "shell/picture.hpp"

namespace drav {

// A picture surface: shows its Backdrop from its top left, no drawing code.
class Canvas : public RectControl {
 public:
  Canvas();
  void SetBackdrop(std::shared_ptr<Picture> picture);
  const std::shared_ptr<Picture>& Backdrop() const { return backdrop_; }

 protected:
  bool ApplyProperty(const Property& property) override;

 private:
  std::shared_ptr<Picture> backdrop_;
};

}  // namespace drav
