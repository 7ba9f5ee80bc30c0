// Paints the program's pictures, so that they can be made again from
// source: "Dravtitle.png" (250 by 70), the title over the main window,
// "Drav256.png" (256 by 256), the splash picture and the desktop icon, the
// icon's smaller sizes for the desktop, icons/drav-N.png, and the same icon
// as a scalable drawing for the desktop, drav.svg.
//
//   build/tools/paint-pictures resources/
#include <QFile>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QTextStream>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

const QColor kWine(0x80, 0x00, 0x02);
const QColor kDeepWine(0x3D, 0x00, 0x02);

// Akaike weights of a made-up set, falling off as exp(-d/2): the bars of
// both pictures.
constexpr double kDifferences[] = {0, 1.2, 2.6, 4.4, 7.0};

double Weight(int i) {
  double sum = 0;
  for (double d : kDifferences) sum += std::exp(-d / 2);
  return std::exp(-kDifferences[i] / 2) / sum;
}

// One bar of the weights: its box, the corner radius, and the colours at
// its top and bottom. The PNG painter and the SVG writer both draw from
// these, so the two icons cannot drift apart.
struct Bar {
  QRectF box;
  double radius;
  QColor top;
  QColor bottom;
};

std::vector<Bar> Bars(const QRectF& box, double gapRatio) {
  const int n = static_cast<int>(std::size(kDifferences));
  const double slot = box.width() / n;
  const double width = slot * (1 - gapRatio);
  std::vector<Bar> bars;
  for (int i = 0; i < n; ++i) {
    const double h = box.height() * Weight(i) / Weight(0);
    bars.push_back({QRectF(box.left() + i * slot + (slot - width) / 2, box.bottom() - h, width, h),
                    width * 0.18, i == 0 ? kWine.lighter(135) : QColor(0xC9, 0x9A, 0x9B),
                    i == 0 ? kWine : QColor(0xA8, 0x6E, 0x70)});
  }
  return bars;
}

void DrawBars(QPainter& p, const QRectF& box, double gapRatio) {
  for (const Bar& bar : Bars(box, gapRatio)) {
    QLinearGradient fill(bar.box.topLeft(), bar.box.bottomLeft());
    fill.setColorAt(0, bar.top);
    fill.setColorAt(1, bar.bottom);
    p.setPen(Qt::NoPen);
    p.setBrush(fill);
    p.drawRoundedRect(bar.box, bar.radius, bar.radius);
  }
}

QImage Title() {
  QImage image(250, 70, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  DrawBars(p, QRectF(14, 14, 52, 46), 0.25);
  QFont font(QStringLiteral("DejaVu Serif"));
  font.setPixelSize(46);
  font.setBold(true);
  p.setFont(font);
  p.setPen(kDeepWine);
  p.drawText(QRectF(78, 2, 170, 62), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Drav"));
  p.setPen(QPen(kWine, 2));
  p.drawLine(QPointF(14, 63), QPointF(236, 63));
  return image;
}

// The icon's parts, shared by the PNG and the SVG.
const QRectF kTile(8, 8, 240, 240);
constexpr double kTileRadius = 44;
const QColor kPaperTop(0xFF, 0xFB, 0xF7);
const QColor kPaperBottom(0xF3, 0xE6, 0xE2);
const QRectF kIconBars(40, 52, 176, 136);
constexpr double kIconGap = 0.28;
const QPointF kBaseFrom(36, 196);
const QPointF kBaseTo(220, 196);
const QRectF kNameBox(8, 198, 240, 42);

QFont IconFont() {
  QFont font(QStringLiteral("DejaVu Serif"));
  font.setPixelSize(34);
  font.setBold(true);
  return font;
}

QImage Icon() {
  QImage image(256, 256, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  QPainterPath tile;
  tile.addRoundedRect(kTile, kTileRadius, kTileRadius);
  QLinearGradient paper(0, kTile.top(), 0, kTile.bottom());
  paper.setColorAt(0, kPaperTop);
  paper.setColorAt(1, kPaperBottom);
  p.fillPath(tile, paper);
  p.setPen(QPen(kWine, 6));
  p.drawPath(tile);
  DrawBars(p, kIconBars, kIconGap);
  p.setPen(QPen(kDeepWine, 5, Qt::SolidLine, Qt::RoundCap));
  p.drawLine(kBaseFrom, kBaseTo);
  p.setFont(IconFont());
  p.setPen(kDeepWine);
  p.drawText(kNameBox, Qt::AlignCenter, QStringLiteral("Drav"));
  return image;
}

QString Num(double v) { return QString::number(v, 'g', 6); }

QString PathData(const QPainterPath& path) {
  QString d;
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPainterPath::Element e = path.elementAt(i);
    if (e.isMoveTo()) {
      d += (i == 0 ? QStringLiteral("M") : QStringLiteral("ZM")) + Num(e.x) + ' ' + Num(e.y);
    } else if (e.isLineTo()) {
      d += 'L' + Num(e.x) + ' ' + Num(e.y);
    } else if (e.isCurveTo() && i + 2 < path.elementCount()) {
      const QPainterPath::Element c2 = path.elementAt(i + 1);
      const QPainterPath::Element end = path.elementAt(i + 2);
      d += 'C' + Num(e.x) + ' ' + Num(e.y) + ' ' + Num(c2.x) + ' ' + Num(c2.y) + ' ' + Num(end.x) +
           ' ' + Num(end.y);
      i += 2;
    }
  }
  return d + 'Z';
}

QString Gradient(const QString& id, double x, double y1, double y2, const QColor& top,
                 const QColor& bottom) {
  return QStringLiteral(
             "  <linearGradient id=\"%1\" gradientUnits=\"userSpaceOnUse\" x1=\"%2\" y1=\"%3\" "
             "x2=\"%2\" y2=\"%4\">\n"
             "    <stop offset=\"0\" stop-color=\"%5\"/>\n"
             "    <stop offset=\"1\" stop-color=\"%6\"/>\n"
             "  </linearGradient>\n")
      .arg(id, Num(x), Num(y1), Num(y2), top.name(), bottom.name());
}

// The name goes in as the outlines of the same font where drawText places
// it, so the drawing does not hang on the fonts of the machine showing it.
QString IconSvg() {
  const QFont font = IconFont();
  const QFontMetricsF metrics(font);
  const QString name = QStringLiteral("Drav");
  QPainterPath letters;
  letters.addText(
      QPointF(kNameBox.left() + (kNameBox.width() - metrics.horizontalAdvance(name)) / 2,
              kNameBox.top() + (kNameBox.height() - metrics.height()) / 2 + metrics.ascent()),
      font, name);
  const std::vector<Bar> bars = Bars(kIconBars, kIconGap);

  QString svg;
  QTextStream out(&svg);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      << "<!-- Drav's icon, written by tools/paint_pictures.cpp with Drav256.png. -->\n"
      << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"256\" height=\"256\" "
         "viewBox=\"0 0 256 256\">\n"
      << "<defs>\n"
      << Gradient(QStringLiteral("paper"), 0, kTile.top(), kTile.bottom(), kPaperTop, kPaperBottom);
  for (size_t i = 0; i < bars.size(); ++i) {
    out << Gradient(QStringLiteral("bar%1").arg(i), bars[i].box.left(), bars[i].box.top(),
                    bars[i].box.bottom(), bars[i].top, bars[i].bottom);
  }
  out << "</defs>\n"
      << QStringLiteral("<rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" rx=\"%5\" "
                        "fill=\"url(#paper)\" stroke=\"%6\" stroke-width=\"6\"/>\n")
             .arg(Num(kTile.x()), Num(kTile.y()), Num(kTile.width()), Num(kTile.height()),
                  Num(kTileRadius), kWine.name());
  for (size_t i = 0; i < bars.size(); ++i) {
    const QRectF& r = bars[i].box;
    out << QStringLiteral("<rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" rx=\"%5\" "
                          "fill=\"url(#bar%6)\"/>\n")
               .arg(Num(r.x()), Num(r.y()), Num(r.width()), Num(r.height()), Num(bars[i].radius))
               .arg(i);
  }
  out << QStringLiteral("<line x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%4\" stroke=\"%5\" "
                        "stroke-width=\"5\" stroke-linecap=\"round\"/>\n")
             .arg(Num(kBaseFrom.x()), Num(kBaseFrom.y()), Num(kBaseTo.x()), Num(kBaseTo.y()),
                  kDeepWine.name())
      << QStringLiteral("<path fill=\"%1\" fill-rule=\"%2\" d=\"%3\"/>\n")
             .arg(kDeepWine.name(),
                  letters.fillRule() == Qt::WindingFill ? QStringLiteral("nonzero")
                                                        : QStringLiteral("evenodd"),
                  PathData(letters))
      << "</svg>\n";
  return svg;
}

bool WriteText(const QString& fileName, const QString& text) {
  QFile file(fileName);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
  const QByteArray bytes = text.toUtf8();
  return file.write(bytes) == bytes.size() && file.flush();
}

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(".");
  const QImage icon = Icon();
  bool ok = Title().save(folder + QStringLiteral("/Dravtitle.png")) && icon.save(folder + QStringLiteral("/Drav256.png"));
  for (int size : {16, 24, 32, 48, 64, 128}) {
    const QImage small = icon.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    ok = ok && small.save(folder + QStringLiteral("/icons/drav-%1.png").arg(size));
  }
  ok = ok && WriteText(folder + QStringLiteral("/drav.svg"), IconSvg());
  if (!ok) std::fprintf(stderr, "paint-pictures: cannot write into %s\n", argv[1]);
  return ok ? 0 : 1;
}
