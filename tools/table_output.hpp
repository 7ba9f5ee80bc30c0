#pragma once
// Standard output of the command forms: tables in the format the user chose,
// and a write that fails (a full disk) told as a failure of the output.
#include <optional>
#include <string>
#include <string_view>

#include "base/runtime_exception.hpp"
#include "selection/table/output_table.hpp"
#include "tools/selection_options.hpp"

namespace drav::cli {

// A write to standard output failed: the output, not the input, is to blame.
// `written` is what was being written, as the message names it.
class WriteFailure : public IOException {
 public:
  explicit WriteFailure(int errorNumber, std::string_view written = "output")
      : IOException("standard output", errorNumber), written_(written) {}
  const std::string& Written() const { return written_; }

 private:
  std::string written_;
};

// Throw WriteFailure naming `written`.
void WriteOut(std::string_view text, std::string_view written = "output");
void FinishOutput(std::string_view written = "output");

// The table in `format`; `threads` may share the formatting.
void WriteTable(const selection::OutputTable& layout, OutputFormat format, std::optional<int> digits,
                unsigned threads = 1);

}  // namespace drav::cli
