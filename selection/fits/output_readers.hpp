#pragma once
// Which program printed a file, and its models read by that program's
// reader. Each program's reader, in a file of its own, says whether a text
// looks like its output and reads it; the registry names the programs and
// tries their readers in a fixed order, the most particular first.
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"
#include "selection/fits/program_output.hpp"

namespace drav::selection::fits {

struct OutputReader {
  std::string_view program;
  ProgramReader reading;

  bool LooksLike(std::string_view text) const { return reading.looksLike(text); }
  // Its records carry the program's name as listed here; `source` names
  // the file in them and in messages.
  std::vector<FitRecord> Read(std::string_view text, const std::string& source, Diagnostics& diagnostics) const;
};

// The readers in the order they are tried.
const std::vector<OutputReader>& OutputReaders();

// The reader of the program named so; throws std::out_of_range for a name
// no reader has.
const OutputReader& ReaderOf(std::string_view program);

// "R, lavaan, Mplus, ..." for messages and help.
std::string KnownPrograms();

// Whether a binary file (its start) is a program's all the same, for its
// reader to refuse saying how to get its text.
bool IsProgramsBinaryFile(std::string_view start);

// The models of one file's text. A notebook (.ipynb) is read as the text
// its cells printed. Throws DataError, naming the programs Drav knows, when
// no reader recognises the text, and whatever the reader throws.
std::vector<FitRecord> ReadProgramOutput(std::string_view text, const std::string& source, Diagnostics& diagnostics);

}  // namespace drav::selection::fits
