#pragma once
#include <cstdint>
#include <filesystem>
#include <string>

namespace drav {

// A file as the open-file dialog yields it.
class FolderItem {
 public:
  explicit FolderItem(std::filesystem::path path) : path_(std::move(path)) {}

  bool Exists() const;
  // The file's name without its folders.
  std::string Name() const { return path_.filename().string(); }
  const std::filesystem::path& Path() const { return path_; }
  // The code of the failure of the last operation on the item; 0 if none.
  std::int64_t LastErrorCode() const { return lastErrorCode_; }
  void SetLastErrorCode(std::int64_t code) { lastErrorCode_ = code; }

 private:
  std::filesystem::path path_;
  std::int64_t lastErrorCode_ = 0;
};

}  // namespace drav
