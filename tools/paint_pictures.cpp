// Paints the program's pictures, so that they can be made again from
// source: "Dravtitle.png" (250 by 70), the title over the main window,
// "Drav256.png" (256 by 256), the splash picture and the desktop icon, and
// the icon's smaller sizes for the desktop, icons/drav-N.png.
//
//   build/tools/paint-pictures resources/
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <cstdio>

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

void DrawBars(QPainter& p, const QRectF& box, double gapRatio) {
  const int n = static_cast<int>(std::size(kDifferences));
  const double slot = box.width() / n;
  const double bar = slot * (1 - gapRatio);
  for (int i = 0; i < n; ++i) {
    const double h = box.height() * Weight(i) / Weight(0);
    const QRectF r(box.left() + i * slot + (slot - bar) / 2, box.bottom() - h, bar, h);
    QLinearGradient fill(r.topLeft(), r.bottomLeft());
    fill.setColorAt(0, i == 0 ? kWine.lighter(135) : QColor(0xC9, 0x9A, 0x9B));
    fill.setColorAt(1, i == 0 ? kWine : QColor(0xA8, 0x6E, 0x70));
    p.setPen(Qt::NoPen);
    p.setBrush(fill);
    p.drawRoundedRect(r, bar * 0.18, bar * 0.18);
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

QImage Icon() {
  QImage image(256, 256, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  QPainterPath tile;
  tile.addRoundedRect(QRectF(8, 8, 240, 240), 44, 44);
  QLinearGradient paper(0, 8, 0, 248);
  paper.setColorAt(0, QColor(0xFF, 0xFB, 0xF7));
  paper.setColorAt(1, QColor(0xF3, 0xE6, 0xE2));
  p.fillPath(tile, paper);
  p.setPen(QPen(kWine, 6));
  p.drawPath(tile);
  DrawBars(p, QRectF(40, 52, 176, 136), 0.28);
  p.setPen(QPen(kDeepWine, 5, Qt::SolidLine, Qt::RoundCap));
  p.drawLine(QPointF(36, 196), QPointF(220, 196));
  QFont font(QStringLiteral("DejaVu Serif"));
  font.setPixelSize(34);
  font.setBold(true);
  p.setFont(font);
  p.setPen(kDeepWine);
  p.drawText(QRectF(8, 198, 240, 42), Qt::AlignCenter, QStringLiteral("Drav"));
  return image;
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
  if (!ok) std::fprintf(stderr, "paint-pictures: cannot write into %s\n", argv[1]);
  return ok ? 0 : 1;
}
