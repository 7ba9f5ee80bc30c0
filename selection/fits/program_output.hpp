#pragma once
// One reading of one file by one program's reader: what every reader needs
// beside the text. The registry (output_readers.cpp) makes it with the
// program's name from its own list, so that no reader spells its program's
// name; what is amiss with a model goes into the listing's warnings column
// and to the diagnostics by one call, told the same way by every reader;
// and a model whose output gives it no name is named after the file.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

class ProgramOutput;

// What a reader's own file gives the registry, which names the program and
// sets it in the order the readers are tried:
//   extern const ProgramReader kMplusReader{.looksLike = LooksLikeMplusOutput, .read = ReadMplusOutput};
struct ProgramReader {
  // Whether a text bears the program's marks; cheap, for it is asked of
  // every file the readers before it did not claim.
  bool (*looksLike)(std::string_view text);
  // One record per model, in file order. Throws DataError where the file
  // is the program's but cannot be ranked.
  std::vector<FitRecord> (*read)(std::string_view text, ProgramOutput& output);
  // A binary file, which no printed output is, that is the program's all
  // the same: its reader refuses it saying how to get text, rather than
  // the file being refused for its NUL bytes. Null where the program writes
  // none.
  bool (*ownsBinary)(std::string_view start) = nullptr;
};

// How the models a file leaves unnamed, each named after the file, are told
// apart where the file holds several.
enum class Numbering {
  None,           // not: the file's name stands for one model, the others name theirs
  ByPlace,        // " (2)" for the second of the file's models, where it holds more than one
  WhereRepeated,  // " (1)", " (2)", ... after every name, given or the file's, that stands more than once
};

class ProgramOutput {
 public:
  // `source` is the file as messages name it.
  ProgramOutput(std::string_view program, std::string source, Diagnostics& diagnostics);

  const std::string& Source() const { return source_; }

  // A record of this program's for the model whose output starts on `line`.
  FitRecord Model(std::int64_t line) const;

  // What is amiss with a model: `text` goes into its warnings column and is
  // told to the diagnostics once, at `line`, after `label` where the message
  // must name the model among others ("model 'm1': ", "PROC MIXED at line
  // 12: "). Under --strict the telling refuses the file.
  void Flag(FitRecord& record, std::string text, std::int64_t line, const std::string& label = {});

  // Trouble with no model to flag: a summary left out, a count unknown.
  void Warn(std::string text, std::int64_t line);
  void Note(std::string text, std::int64_t line);

  [[noreturn]] void Refuse(std::int64_t line, std::string text) const;

  // The name of a model whose output gives it none: the file's, without
  // folders and extension.
  std::string FileName() const;
  // Every model without a name of its own named after the file, told apart
  // as `numbering` says.
  void NameUnnamed(std::vector<FitRecord>& records, Numbering numbering) const;

 private:
  std::string_view program_;
  std::string source_;
  Diagnostics& diagnostics_;
};

// The opening of a text that a reader's looksLike searches for its
// program's marks: a long file of another program's is not searched whole.
// Four MiB hold the first tables of every program's output.
inline constexpr std::size_t kOpeningBytes = std::size_t{1} << 22;
std::string_view Opening(std::string_view text, std::size_t bytes = kOpeningBytes);

}  // namespace drav::selection::fits
