#pragma once
// A file in a fresh temporary folder that goes away with the object.
#include <filesystem>
#include <string>
#include <string_view>

#include "analysis/text_input_stream.hpp"

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

// The contents in a temporary file, opened as a run opens its model file.
// The open stream keeps the data after the file is gone.
TextInputStream OpenAsRunDoes(std::string_view contents);

}  // namespace drav::testing_support
