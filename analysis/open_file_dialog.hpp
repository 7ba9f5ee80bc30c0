#pragma once
#include <optional>

#include "analysis/folder_item.hpp"

namespace drav {

// The platform's open-file dialog, with no title, filter or start folder set,
// so that every file can be chosen.
class OpenFileDialog {
 public:
  virtual ~OpenFileDialog() = default;
  // Modal; the chosen file, or nothing when the user cancelled.
  virtual std::optional<FolderItem> ShowModal() = 0;
};

}  // namespace drav
