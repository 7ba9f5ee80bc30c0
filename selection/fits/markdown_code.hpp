#pragma once
// A program's printed output pasted into a Markdown or Quarto document
// (README.md, a .qmd report, notes): between ``` or ~~~ fences, perhaps
// under a list item and so indented, perhaps with knitr's "## " before
// every line. A reader that wants the output alone reads the code, line for
// line, so that a model's line in the document is its line in the file.
#include <string>
#include <string_view>

namespace drav::selection::fits {

// Whether `text` holds a fenced code block: a line that opens with ``` or
// ~~~ after blanks.
bool HasCodeFences(std::string_view text);

// `text` with every line outside its fenced blocks, and the fences
// themselves, left empty; inside a block whose every printed line starts
// with knitr's "##", that prefix taken off. Every line end is kept.
std::string FencedCode(std::string_view text);

}  // namespace drav::selection::fits
