#include "selection/output/latex_writer.hpp"

#include "base/utf8.hpp"
#include "selection/output/readable_cell.hpp"
#include "selection/output/row_blocks.hpp"

namespace drav::selection {
namespace {

// Greek letters as math symbols, which every LaTeX has; in text they would
// need a Greek font encoding. Capitals that look like Latin ones have no
// symbol of their own. Indexed from U+0391; empty where no letter is.
constexpr std::string_view kGreek[] = {
    "A", "B", "\\Gamma", "\\Delta", "E", "Z", "H", "\\Theta", "I", "K", "\\Lambda", "M", "N", "\\Xi", "O",
    "\\Pi", "P", "", "\\Sigma", "T", "\\Upsilon", "\\Phi", "X", "\\Psi", "\\Omega", "", "", "", "", "", "", "",
    "\\alpha", "\\beta", "\\gamma", "\\delta", "\\epsilon", "\\zeta", "\\eta", "\\theta", "\\iota",
    "\\kappa", "\\lambda", "\\mu", "\\nu", "\\xi", "o", "\\pi", "\\rho", "\\varsigma", "\\sigma",
    "\\tau", "\\upsilon", "\\phi", "\\chi", "\\psi", "\\omega"};

std::string_view GreekSymbol(char32_t c) {
  if (c == 0xB5) return "\\mu";  // the micro sign
  if (c < 0x391 || c > 0x3C9) return {};
  return kGreek[c - 0x391];
}

void AppendEscaped(std::string& out, std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const char c = text[i];
    if (static_cast<unsigned char>(c) >= 0x80) {
      // Other letters, such as the accented ones of Latin-1 and Latin
      // Extended-A, stay UTF-8: the T1 font encoding prints them.
      const std::size_t length = utf8::CharLength(text, i);
      const std::string_view symbol = GreekSymbol(utf8::Decode(text, i));
      if (symbol.empty()) {
        out.append(text.substr(i, length));
      } else if (symbol.front() == '\\') {
        out.append("\\ensuremath{").append(symbol).append("}");
      } else {
        out.append(symbol);
      }
      i += length;
      continue;
    }
    ++i;
    switch (c) {
      case '\\': out += "\\textbackslash{}"; break;
      case '{': out += "\\{"; break;
      case '}': out += "\\}"; break;
      case '&': out += "\\&"; break;
      case '%': out += "\\%"; break;
      case '$': out += "\\$"; break;
      case '#': out += "\\#"; break;
      case '_': out += "\\_"; break;
      case '~': out += "\\textasciitilde{}"; break;
      case '^': out += "\\textasciicircum{}"; break;
      // In the default font encoding these print as other glyphs.
      case '<': out += "\\textless{}"; break;
      case '>': out += "\\textgreater{}"; break;
      case '|': out += "\\textbar{}"; break;
      case '`': out += "\\textasciigrave{}"; break;
      default:
        // A line end would end the row, and other control characters stop
        // LaTeX as invalid.
        out += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
  }
}

void AppendCell(std::string& out, const Cell& cell, const Column& column, std::optional<int> digits) {
  if (cell.kind == CellKind::Text) {
    AppendEscaped(out, cell.text);
    return;
  }
  std::string text = ReadableCell(cell, column, digits);
  if (text == "Inf") {
    text = "$\\infty$";
  } else if (text == "*") {
    text = "$\\ast$";
  } else if (!text.empty() && text[0] == '>') {
    text = "$>$" + text.substr(1);  // a capped number: a relation, not a glyph of the text font
  } else if (!text.empty() && text[0] == '-') {
    text = "$-$" + text.substr(1);  // a minus sign, not a hyphen
  }
  out += text;
}

}  // namespace

void WriteLatex(const OutputTable& table, std::optional<int> digits, OutputBuffer& out) {
  std::string& text = out.Text();
  text += "\\begin{tabular}{";
  for (const Column& column : table.columns) {
    text += table.rows > 0 && column.cell(0).kind == CellKind::Text ? 'l' : 'r';
  }
  text += "}\n\\toprule\n";
  for (std::size_t c = 0; c < table.columns.size(); ++c) {
    if (c > 0) text += " & ";
    const Column& column = table.columns[c];
    if (column.latexTitle.empty()) {
      AppendEscaped(text, column.title);
    } else {
      text += column.latexTitle;
    }
  }
  text += " \\\\\n\\midrule\n";
  for (std::size_t g = 0; g < table.groups.size(); ++g) {
    if (g > 0) text += "\\midrule\n";
    WriteRowBlocks(table.groups[g].begin, table.groups[g].end, out,
              [&table, digits](std::size_t begin, std::size_t end, std::string& rows) {
                for (std::size_t row = begin; row < end; ++row) {
                  for (std::size_t c = 0; c < table.columns.size(); ++c) {
                    if (c > 0) rows += " & ";
                    AppendCell(rows, table.columns[c].cell(row), table.columns[c], digits);
                  }
                  rows += " \\\\\n";
                }
              });
  }
  text += "\\bottomrule\n\\end{tabular}\n";
  out.Flush();
}

}  // namespace drav::selection
