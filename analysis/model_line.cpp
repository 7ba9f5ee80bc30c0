#include "analysis/model_line.hpp"

#include <algorithm>

#include "base/utf8.hpp"

namespace drav {

void ModelLine::Add(std::string_view piece) {
  while (!piece.empty() && field_ < 2) {
    const std::size_t end = static_cast<std::size_t>(
        std::find_if(piece.begin(), piece.end(), [](char c) { return c == ',' || c == '\t'; }) - piece.begin());
    const std::string_view part = piece.substr(0, end);
    if (field_ == 0) {
      name_.append(part.substr(0, kNameBytes - std::min(kNameBytes, name_.size())));
    } else {
      // The scanner starts only once the field outgrows what is kept of it:
      // a short field is read by Val from its text, as it stands.
      if (aicLength_ + part.size() > kAicBytes) {
        number_.Feed(aicLength_ <= kAicBytes ? std::string_view(aic_) : std::string_view());
        number_.Feed(part);
      }
      aic_.append(part.substr(0, kAicBytes - std::min(kAicBytes, aic_.size())));
      aicLength_ += part.size();
    }
    if (end == piece.size()) return;
    ++field_;
    piece.remove_prefix(end + 1);
  }
}

std::string ModelLine::Name() const { return utf8::Sanitize(name_); }

std::string ModelLine::AicText() const {
  return aicLength_ <= kAicBytes ? utf8::Sanitize(aic_) : number_.Canonical();
}

}  // namespace drav
