#pragma once
// The files that `drav-report fits` and `table --fits` read: each one
// program's printed output, read whole and handed to the reader of that
// program.
#include <optional>
#include <string>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

// What to do with a file that cannot be read or that no reader knows.
enum class BadFile {
  Refuse,    // throw what stopped it: a ranking depends on every model of the set
  Tell,      // say why as an error and go on with the rest, as grep does
  LeaveOut,  // say why as a warning (refused under --strict) and go on
};

// The files left out, by BadFile::Tell or LeaveOut.
struct FilesLeftOut {
  std::size_t unreadable = 0;  // could not be opened or read
  std::size_t refused = 0;     // read, but no reader knows them
};

// The whole of a text file ("-": standard input) into `text`. Throws
// IOException where it cannot be read, DataError where it holds a NUL byte
// or more than a gigabyte.
void ReadWhole(const std::string& path, std::string& text);

// Every model of every file, in the order given. "-" is standard input; a
// name with * ? or [ that names no file is expanded as a shell would
// (for shells that pass a pattern on). With `modelNames`, a file of one
// name a line, the models are named by it in order; with `n` (--n N), the
// models whose outputs print no n are given it. A file that cannot be read
// (IOException) or that no reader knows or that holds a NUL byte
// (DataError) is handled as `bad` says, and counted in `leftOut`.
std::vector<FitRecord> ReadFitFiles(const std::vector<std::string>& files, const std::string& modelNames,
                                    std::optional<double> n, Diagnostics& diagnostics, BadFile bad = BadFile::Refuse,
                                    FilesLeftOut* leftOut = nullptr);

}  // namespace drav::selection::fits
