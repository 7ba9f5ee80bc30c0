#include "tools/table_output.hpp"

#include <cerrno>
#include <cstdio>

#include "selection/output/delimited_writer.hpp"
#include "selection/output/json_writer.hpp"
#include "selection/output/latex_writer.hpp"
#include "selection/output/markdown_writer.hpp"
#include "selection/output/output_buffer.hpp"
#include "selection/output/svg_chart_writer.hpp"
#include "selection/output/text_writer.hpp"

namespace drav::cli {

namespace sel = drav::selection;

void WriteOut(std::string_view text, std::string_view written) {
  errno = 0;
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) throw WriteFailure(errno ? errno : EIO, written);
}

void FinishOutput(std::string_view written) {
  errno = 0;
  if (std::fflush(stdout) != 0) throw WriteFailure(errno ? errno : EIO, written);
}

void WriteTable(const sel::OutputTable& layout, OutputFormat format, std::optional<int> digits, unsigned threads) {
  sel::OutputBuffer out([](std::string_view text) { WriteOut(text); }, threads);
  switch (format) {
    case OutputFormat::Text: sel::WriteText(layout, digits, out); break;
    case OutputFormat::Csv: sel::WriteDelimited(layout, ',', out); break;
    case OutputFormat::Tsv: sel::WriteDelimited(layout, '\t', out); break;
    case OutputFormat::Markdown: sel::WriteMarkdown(layout, digits, out); break;
    case OutputFormat::Latex: sel::WriteLatex(layout, digits, out); break;
    case OutputFormat::Json: sel::WriteJson(layout, out); break;
    case OutputFormat::Svg: sel::WriteSvg(layout, out); break;
  }
  FinishOutput();
}

}  // namespace drav::cli
