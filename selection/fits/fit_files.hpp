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

// Every model of every file, in the order given. "-" is standard input; a
// name with * ? or [ that names no file is expanded as a shell would
// (for shells that pass a pattern on). With `modelNames`, a file of one
// name a line, the models are named by it in order; with `n` (--n N), the
// models whose outputs print no n are given it. Throws IOException for a
// file that cannot be read, DataError for one no reader knows or that holds
// a NUL byte.
std::vector<FitRecord> ReadFitFiles(const std::vector<std::string>& files, const std::string& modelNames,
                                    std::optional<double> n, Diagnostics& diagnostics);

}  // namespace drav::selection::fits
