#pragma once
// Text handed to the reader as a stream, as a file or a pipe would be: an
// anonymous temporary file, so that parallel runs never share a path.
#include <cstdio>
#include <memory>
#include <string_view>

namespace drav::testing_support {

using File = std::unique_ptr<std::FILE, decltype(&std::fclose)>;

inline File MemoryInput(std::string_view text) {
  File file(std::tmpfile(), &std::fclose);
  std::fwrite(text.data(), 1, text.size(), file.get());
  std::rewind(file.get());
  return file;
}

}  // namespace drav::testing_support
