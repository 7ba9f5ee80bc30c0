#include "selection/output/svg_chart_writer.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/number_text.hpp"
#include "base/text.hpp"
#include "base/utf8.hpp"

namespace drav::selection {
namespace {

// Sizes in pixels. Text widths are estimated, as a standalone file cannot
// measure its fonts: 0.62 em covers the average letter of the common sans
// faces with a little to spare.
constexpr double kFont = 12;
constexpr double kCharWidth = 0.62 * kFont;
constexpr double kRow = 20;
constexpr double kBar = 14;
constexpr double kPlot = 420;
constexpr double kMargin = 12;
constexpr std::size_t kLongestLabel = 60;  // characters of a name shown before an ellipsis

constexpr const char* kDark = "#2f5f98";
constexpr const char* kLight = "#a9c3e0";
constexpr const char* kRest = "#b8b8b8";
constexpr const char* kLine = "#c0392b";

void AppendCoordinate(std::string& out, double x) {
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text, std::round(x * 10) / 10, std::chars_format::fixed, 1);
  out.append(text, result.ptr);
}

// name="value", with the space before it.
void AppendAttribute(std::string& out, const char* name, const char* value) {
  out += ' ';
  out += name;
  out += "=\"";
  out += value;
  out += '"';
}

void AppendAttribute(std::string& out, const char* name, double value) {
  out += ' ';
  out += name;
  out += "=\"";
  AppendCoordinate(out, value);
  out += '"';
}

// Text as XML character data: the markup characters escaped, and the
// control characters that XML 1.0 forbids (and line ends) as spaces.
void AppendXmlText(std::string& out, std::string_view text) {
  for (char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
  }
}

std::string Label(std::string_view text) {
  std::string label = utf8::IsValid(text) ? std::string(text) : utf8::Sanitize(std::string(text));
  if (Len(label) > static_cast<std::int64_t>(kLongestLabel)) label = Left(label, kLongestLabel - 1) + "\u2026";
  return label;
}

std::optional<std::size_t> ColumnKeyed(const OutputTable& table, const std::string& key) {
  if (key.empty()) return std::nullopt;
  for (std::size_t c = 0; c < table.columns.size(); ++c) {
    if (table.columns[c].key == key && !table.columns[c].ofSet) return c;
  }
  return std::nullopt;
}

struct Bar {
  std::string label;
  double value = 0;
  double line = NAN;
  bool dark = false;
  bool rest = false;
};

class Chart {
 public:
  Chart(const OutputTable& table) : table_(table), plan_(*table.chart) {
    label_ = ColumnKeyed(table, plan_.label);
    bar_ = ColumnKeyed(table, plan_.bar);
    count_ = ColumnKeyed(table, plan_.count);
    line_ = ColumnKeyed(table, plan_.line);
    mark_ = ColumnKeyed(table, plan_.mark);
  }

  void Write(OutputBuffer& out) {
    std::vector<std::vector<Bar>> panels;
    std::size_t widest = 8;
    for (const RowGroup& group : table_.groups) {
      panels.push_back(Bars(group));
      for (const Bar& b : panels.back()) widest = std::max(widest, static_cast<std::size_t>(Len(b.label)));
    }
    labelWidth_ = static_cast<double>(widest) * kCharWidth + 8;
    const double plotLeft = kMargin + labelWidth_;
    const double width = plotLeft + kPlot + 56 + kMargin;
    const bool titled = !table_.byKey.empty();
    double height = kMargin + 22;  // the legend
    for (const auto& bars : panels) height += (titled ? 22 : 0) + bars.size() * kRow + 8;
    height += 40 + kMargin;  // the axis

    std::string& s = out.Text();
    s += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\"";
    AppendAttribute(s, "width", width);
    AppendAttribute(s, "height", height);
    s += " viewBox=\"0 0 ";
    AppendCoordinate(s, width);
    s += ' ';
    AppendCoordinate(s, height);
    s += "\" font-family=\"DejaVu Sans, Helvetica, Arial, sans-serif\" font-size=\"12\">\n";
    s += "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
    double y = kMargin;
    const bool rest = std::any_of(panels.begin(), panels.end(),
                                  [](const std::vector<Bar>& bars) { return !bars.empty() && bars.back().rest; });
    Legend(s, plotLeft, y, rest);
    y += 22;
    const double plotTop = y;
    double plotBottom = plotTop;
    for (const auto& bars : panels) plotBottom += (titled ? 22 : 0) + bars.size() * kRow + 8;
    // The grid first, so that the bars stand in front of it.
    Axis(s, plotLeft, plotTop, plotBottom);
    for (std::size_t p = 0; p < panels.size(); ++p) {
      if (titled) {
        Text(s, kMargin, y + 15, "start", "bold", table_.byKey + " = " + Label(table_.groups[p].value));
        y += 22;
      }
      Panel(s, panels[p], plotLeft, y);
      y += panels[p].size() * kRow + 8;
      out.FlushIfFull();
    }
    s += "</svg>\n";
    out.Flush();
  }

 private:
  std::vector<Bar> Bars(const RowGroup& group) const {
    std::vector<Bar> bars;
    const std::size_t rows = group.end - group.begin;
    const std::size_t shown = rows > kChartBars ? kChartBars - 1 : rows;
    for (std::size_t row = group.begin; row < group.begin + shown; ++row) {
      Bar b;
      b.label = label_ ? Label(table_.columns[*label_].cell(row).text) : std::to_string(row - group.begin + 1);
      if (count_) {
        b.label += " (";
        AppendShortest(b.label, table_.columns[*count_].cell(row).number);
        b.label += ')';
      }
      b.value = Value(bar_, row);
      b.line = line_ ? Value(line_, row) : NAN;
      b.dark = mark_ && table_.columns[*mark_].cell(row).flag;
      bars.push_back(std::move(b));
    }
    if (shown < rows) {
      Bar rest;
      rest.rest = true;
      rest.label = std::to_string(rows - shown) + " more " + plan_.restLabel;
      for (std::size_t row = group.begin + shown; row < group.end; ++row) {
        const double v = Value(bar_, row);
        rest.value = plan_.barsAddUp ? rest.value + v : std::max(rest.value, v);
      }
      if (!plan_.barsAddUp) rest.label += ", each at most";
      rest.line = line_ ? Value(line_, group.end - 1) : NAN;
      bars.push_back(std::move(rest));
    }
    return bars;
  }

  double Value(std::optional<std::size_t> column, std::size_t row) const {
    if (!column) return 0;
    const Cell cell = table_.columns[*column].cell(row);
    return cell.kind == CellKind::Number ? std::clamp(cell.number, 0.0, 1.0) : 0;
  }

  void Text(std::string& s, double x, double y, const char* anchor, const char* weight, std::string_view text) const {
    s += "<text";
    AppendAttribute(s, "x", x);
    AppendAttribute(s, "y", y);
    AppendAttribute(s, "text-anchor", anchor);
    if (*weight) AppendAttribute(s, "font-weight", weight);
    s += '>';
    AppendXmlText(s, text);
    s += "</text>\n";
  }

  void Rect(std::string& s, double x, double y, double w, double h, const char* fill) const {
    s += "<rect";
    AppendAttribute(s, "x", x);
    AppendAttribute(s, "y", y);
    AppendAttribute(s, "width", std::max(w, 0.0));
    AppendAttribute(s, "height", h);
    AppendAttribute(s, "fill", fill);
    s += "/>\n";
  }

  void Line(std::string& s, double x1, double y1, double x2, double y2, const char* stroke, int width) const {
    s += "<line";
    AppendAttribute(s, "x1", x1);
    AppendAttribute(s, "y1", y1);
    AppendAttribute(s, "x2", x2);
    AppendAttribute(s, "y2", y2);
    AppendAttribute(s, "stroke", stroke);
    if (width != 1) AppendAttribute(s, "stroke-width", std::to_string(width).c_str());
    s += "/>\n";
  }

  void Legend(std::string& s, double left, double y, bool rest) const {
    double x = left;
    const auto item = [&](const char* fill, const std::string& text) {
      Rect(s, x, y + 3, 12, 10, fill);
      Text(s, x + 16, y + 12, "start", "", text);
      x += 16 + static_cast<double>(Len(text)) * kCharWidth + 14;
    };
    if (mark_) {
      item(kDark, plan_.markTitle);
      item(kLight, "other " + plan_.restLabel);
    } else {
      item(kDark, plan_.barTitle);
    }
    if (rest) item(kRest, plan_.barsAddUp ? "the rest, summed" : "the rest, the largest");
    if (line_) {
      Line(s, x, y + 8, x + 14, y + 8, kLine, 2);
      Text(s, x + 18, y + 12, "start", "", plan_.lineTitle);
    }
  }

  void Panel(std::string& s, const std::vector<Bar>& bars, double left, double top) const {
    std::string points;
    for (std::size_t i = 0; i < bars.size(); ++i) {
      const Bar& b = bars[i];
      const double y = top + static_cast<double>(i) * kRow;
      Text(s, left - 6, y + 14, "end", "", b.label);
      Rect(s, left, y + (kRow - kBar) / 2, b.value * kPlot, kBar, b.rest ? kRest : b.dark || !mark_ ? kDark : kLight);
      Text(s, left + b.value * kPlot + 4, y + 14, "start", "", Rounded(b.value, 3));
      if (!std::isnan(b.line)) {
        if (!points.empty()) points += ' ';
        AppendCoordinate(points, left + b.line * kPlot);
        points += ',';
        AppendCoordinate(points, y + kRow / 2);
      }
    }
    if (points.empty()) return;
    s += "<polyline fill=\"none\" stroke=\"";
    s += kLine;
    s += "\" stroke-width=\"2\" points=\"";
    s += points;
    s += "\"/>\n";
  }

  void Axis(std::string& s, double left, double top, double bottom) const {
    for (int tick = 0; tick <= 4; ++tick) {
      const double x = left + tick * kPlot / 4;
      Line(s, x, top, x, bottom, tick == 0 ? "#444444" : "#dddddd", 1);
      Text(s, x, bottom + 14, "middle", "", Rounded(tick / 4.0, 2));
    }
    Text(s, left + kPlot / 2, bottom + 32, "middle", "", plan_.barTitle);
  }

  const OutputTable& table_;
  const ChartPlan& plan_;
  std::optional<std::size_t> label_, bar_, count_, line_, mark_;
  double labelWidth_ = 0;
};

}  // namespace

void WriteSvg(const OutputTable& table, OutputBuffer& out) { Chart(table).Write(out); }

}  // namespace drav::selection
