#pragma once
// What a model is called when its output gives it no name of its own, and
// how several such models in one file are told apart.
#include <string>
#include <string_view>
#include <vector>

#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

// The file's name without its folder and its last extension:
// "runs/cars.lst" gives "cars"; "-" (standard input) stays "-".
std::string FileStem(std::string_view source);

// Where names repeat, every one after the first gets " #2", " #3", ... in
// file order, so that each model can be named on its own in a table.
void NumberRepeatedNames(std::vector<FitRecord>& records);

}  // namespace drav::selection::fits
