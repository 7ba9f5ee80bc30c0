#pragma once
// A file in a fresh temporary folder that goes away with the object.
#include <filesystem>
#include <string>
#include <string_view>

namespace drav::testing_support {

class TempFile {
 public:
  explicit TempFile(std::string_view contents, std::string_view name = "models.txt");
  ~TempFile();
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;
  const std::filesystem::path& Path() const { return path_; }
  const std::filesystem::path& Folder() const { return folder_; }

 private:
  std::filesystem::path folder_;
  std::filesystem::path path_;
};

}  // namespace drav::testing_support
