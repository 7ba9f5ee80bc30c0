#pragma once
#include <cstdint>
#include <filesystem>
#include <string>

namespace drav {

// A file as the open-file dialog yields it.
class FolderItem {
 public:
  // What may stand behind the item's path. A file chosen in a window must be
  // a regular file: a pipe or a device would block or never end, and the
  // window could not even be closed meanwhile. A file named on a command
  // line may be any readable stream, as for every Unix filter.
  enum class Kinds { RegularFile, AnyStream };

  explicit FolderItem(std::filesystem::path path, Kinds accepts = Kinds::RegularFile)
      : path_(std::move(path)), accepts_(accepts) {}

  bool Exists() const;
  // The file's name without its folders.
  std::string Name() const { return path_.filename().string(); }
  const std::filesystem::path& Path() const { return path_; }
  Kinds Accepts() const { return accepts_; }
  // The code of the failure of the last operation on the item; 0 if none.
  std::int64_t LastErrorCode() const { return lastErrorCode_; }
  void SetLastErrorCode(std::int64_t code) { lastErrorCode_ = code; }

 private:
  std::filesystem::path path_;
  Kinds accepts_;
  std::int64_t lastErrorCode_ = 0;
};

}  // namespace drav
