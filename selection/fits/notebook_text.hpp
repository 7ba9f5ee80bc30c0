#pragma once
// A Jupyter notebook (.ipynb) is JSON; what its cells printed is inside it
// as strings. The readers read that text as if it had been printed to a
// console: each code cell's source as "> " commands, then its outputs.
#include <string>
#include <string_view>

namespace drav::selection::fits {

bool LooksLikeNotebook(std::string_view text);

// The cells' sources and printed outputs (stream text and text/plain), in
// order. Throws DataError for JSON that does not parse.
std::string NotebookOutputText(std::string_view json, const std::string& source);

}  // namespace drav::selection::fits
