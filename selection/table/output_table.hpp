#pragma once
// A table as the writers see it: named columns whose cells are produced row
// by row from the results, so that no writer knows about ranking or
// averaging and no table is copied into cells first.
#include <cmath>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace drav::selection {

enum class CellKind {
  Empty,   // no value: the file did not give it
  Text,    // a name, as read
  Number,  // rounded in text, markdown and latex; shortest round-trip text elsewhere
  Count,   // a rank or a parameter count: never rounded
  Flag,    // a yes or no: true/false in csv and json, a star for people
};

struct Cell {
  CellKind kind = CellKind::Empty;
  std::string_view text;
  double number = 0;
  bool flag = false;
};

inline Cell TextCell(std::string_view text) { return {CellKind::Text, text, 0, false}; }
inline Cell NumberCell(double number) { return {CellKind::Number, {}, number, false}; }
inline Cell CountCell(double number) { return {CellKind::Count, {}, number, false}; }
// A number the results may lack (NaN): an empty cell then.
inline Cell GivenCell(double number) { return std::isnan(number) ? Cell{} : NumberCell(number); }
inline Cell FlagCell(bool flag) { return {CellKind::Flag, {}, 0, flag}; }

struct Column {
  std::string key;         // the name in csv, tsv and json
  std::string title;       // the heading in text and markdown
  std::string latexTitle;  // the heading in latex, as LaTeX; empty: the title, escaped
  int digits = 4;          // decimals in text, markdown and latex unless --digits says
  bool ofSet = false;      // the --by column: in json a field of the set, not of each row
  std::function<Cell(std::size_t row)> cell;
  // Above this, text, markdown and latex print ">" and it: an evidence
  // ratio of 10^40 says no more than one of 10^5, and would widen the table
  // by thirty columns. csv, tsv and json keep the number.
  double shownAtMost = HUGE_VAL;
};

// A run of rows that belong to one model set.
struct RowGroup {
  std::string_view value;  // the set's --by value
  std::size_t begin = 0;
  std::size_t end = 0;
};

// What a chart draws of a table: one bar per row, named by a text column,
// as long as a value from 0 to 1. Columns are named by their keys.
struct ChartPlan {
  std::string label;       // names each bar
  std::string bar;         // the bar's length, 0 to 1
  std::string count;       // a count shown after the name, such as how many models hold a term; may be empty
  std::string line;        // drawn as a line across the bars, such as the cumulative weight; may be empty
  std::string mark;        // a flag: its rows drawn in the dark colour, the others light; may be empty
  std::string barTitle;    // what the bars are, for the axis and the legend
  std::string lineTitle;
  std::string markTitle;   // the dark bars in the legend
  std::string restLabel;   // the bar that stands for the rows past the chart's limit: "models", "terms"
  // Weights add up, so the bar of the rows past the limit is their sum;
  // importances do not, so it is the largest of them.
  bool barsAddUp = true;
};

struct OutputTable {
  std::vector<Column> columns;
  std::size_t rows = 0;
  std::vector<RowGroup> groups;                           // cover the rows, in order
  std::string byKey;                                      // the --by column's name; empty for one set
  std::vector<std::pair<std::string, Cell>> setFields;    // json fields of every set, such as the criterion
  std::string rowsKey;  // json key of each set's list of rows; empty when each row is its set's object
  std::string note;     // a line under the table in text
  std::optional<ChartPlan> chart;  // none: the table has no chart
};

}  // namespace drav::selection
