#pragma once
// How several models of one file that its output gives the same name (the
// file's, where it gives none) are told apart: as lavaan's and statsmodels'
// unnamed summaries are, by their place in the file.
#include <vector>

#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

// Where a name repeats, every model of that name gets " (1)", " (2)", ...
// in file order; a name that stands once stays as it is.
void NumberRepeatedNames(std::vector<FitRecord>& records);

}  // namespace drav::selection::fits
