#include "shell/propertied.hpp"

#include "sheets/property_sheet.hpp"

namespace drav {

void SetProperties(Propertied& object, std::string_view sheet) {
  for (Property& property : DecodeSheet(sheet)) {
    if (!object.ApplyProperty(property)) object.kept_.push_back(std::move(property));
  }
}

}  // namespace drav
