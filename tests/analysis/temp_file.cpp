#include "tests/analysis/temp_file.hpp"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace drav::testing_support {

TempFile::TempFile(std::string_view contents, std::string_view name) {
  std::string pattern = (std::filesystem::temp_directory_path() / "drav-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
  folder_ = pattern;
  path_ = folder_ / std::string(name);
  std::ofstream out(path_, std::ios::binary);
  out.write(contents.data(), static_cast<std::streamsize>(contents.size()));
  if (!out) throw std::runtime_error("cannot write " + path_.string());
}

TempFile::~TempFile() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

TextInputStream OpenAsRunDoes(std::string_view contents) {
  const TempFile file(contents);
  FolderItem item(file.Path());
  TextInputStream stream = TextInputStream::Open(item);
  stream.SetEncoding(Encodings::UTF8);
  return stream;
}

}  // namespace drav::testing_support
