#pragma once
// What R printed, told apart from what was typed: an R session's printed
// output comes as a console transcript ("> " prompts, "+ " continuations),
// as knitr renders it ("## " before every printed line, the code plain), or
// as Rscript prints it (output alone). The readers of R and lavaan output
// see the printed lines without their prefixes, and the commands before
// them, to name a model by the object it was printed from.
#include <string>
#include <string_view>
#include <vector>

#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {

struct TranscriptLine {
  std::string_view text;     // without "## " or the prompt
  std::int64_t number = 0;   // in the file
  bool command = false;      // typed, not printed
};

std::vector<TranscriptLine> ReadTranscript(std::string_view text);

// Whether a word is an R object's name ("fit2", "m.1"): what a command
// printed, or what R prints over a value of a named vector.
bool IsName(std::string_view text);

// The object a command printed, for a name: "fit2" from
// "summary(fit2, fit.measures = TRUE)", "m1" from "logLik(m1)",
// "fitMeasures(m1, ...)" or "m1" alone; empty when the command is not of
// that shape.
std::string PrintedObject(std::string_view command);

// The last command at or before `index` in `lines`, or empty.
std::string_view CommandBefore(const std::vector<TranscriptLine>& lines, std::size_t index);

}  // namespace drav::selection::fits
