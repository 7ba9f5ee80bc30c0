#include "analysis/folder_item.hpp"

#include <system_error>

namespace drav {

bool FolderItem::Exists() const {
  std::error_code error;
  return std::filesystem::exists(path_, error);
}

}  // namespace drav
