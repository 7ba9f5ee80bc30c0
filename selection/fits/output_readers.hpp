#pragma once
// Which program printed a file, and its models read by that program's
// reader. Each program's reader says whether a text looks like its output
// and reads it; they are tried in a fixed order, the most particular first.
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

struct OutputReader {
  std::string_view program;
  bool (*looksLike)(std::string_view text);
  std::vector<FitRecord> (*read)(std::string_view text, const std::string& source, Diagnostics& diagnostics);
};

// The readers in the order they are tried.
const std::vector<OutputReader>& OutputReaders();

// "R, lavaan, Mplus, ..." for messages and help.
std::string KnownPrograms();

// The models of one file's text. A notebook (.ipynb) is read as the text
// its cells printed. Throws DataError, naming the programs Drav knows, when
// no reader recognises the text, and whatever the reader throws.
std::vector<FitRecord> ReadProgramOutput(std::string_view text, const std::string& source, Diagnostics& diagnostics);

}  // namespace drav::selection::fits
