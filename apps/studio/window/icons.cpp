#include "apps/studio/window/icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <algorithm>
#include <array>
#include <string_view>

namespace sorvanix::studio {

namespace {

// Strokes on a grid of 16 by 16: M x y moves the pen, L x y draws a line, Z closes the figure. In
// the order of Symbol.
constexpr std::array<std::string_view, 14> kStrokes = {
    "M 4 2 L 9 2 L 12 5 L 12 14 L 4 14 Z M 9 2 L 9 5 L 12 5",
    "M 2 13 L 2 4 L 6 4 L 7.5 6 L 13 6 L 13 8 M 2 13 L 4.5 8 L 15 8 L 12.5 13 Z",
    "M 3 3 L 11 3 L 13 5 L 13 13 L 3 13 Z M 5.5 3 L 5.5 6 L 10 6 L 10 3 M 5 13 L 5 9 L 11 9 L 11 "
    "13",
    "M 6 3 L 3 6 L 6 9 M 3 6 L 10 6 L 12.5 8 L 12.5 11 L 10 13 L 6 13",
    "M 10 3 L 13 6 L 10 9 M 13 6 L 6 6 L 3.5 8 L 3.5 11 L 6 13 L 10 13",
    "M 8 3 L 8 13 M 3 8 L 13 8",
    "M 3 3 L 10 3 L 10 10 L 3 10 Z M 12.5 6 L 13 6 L 13 13 L 6 13 L 6 12.5",
    "M 3 4.5 L 13 4.5 M 6.5 4.5 L 6.5 2.5 L 9.5 2.5 L 9.5 4.5 M 4.5 4.5 L 5 13.5 L 11 13.5 L 11.5 "
    "4.5",
    "M 3 13 L 3.5 10 L 11 2.5 L 13.5 5 L 6 12.5 Z M 9.5 4 L 12 6.5",
    "M 2 2 L 14 2 L 14 14 L 2 14 Z M 5.5 5.5 L 10.5 5.5 L 10.5 10.5 L 5.5 10.5 Z",
    "M 5 3 L 13 8 L 5 13 Z",
    "M 5.5 3 L 5.5 13 M 10.5 3 L 10.5 13",
    "M 8 10 L 8 2.5 M 5 5.5 L 8 2.5 L 11 5.5 M 3 9 L 3 13.5 L 13 13.5 L 13 9",
    "M 8 2 L 14 5 L 14 11 L 8 14 L 2 11 L 2 5 Z M 2 5 L 8 8 L 14 5 M 8 8 L 8 14"};

constexpr double kGrid = 16;

QPainterPath PathOf(std::string_view strokes) {
  QPainterPath path;
  const auto words =
      QString::fromUtf8(strokes.data(), static_cast<qsizetype>(strokes.size())).split(' ');
  for (qsizetype i = 0; i < words.size();) {
    const QString& pen = words[i++];
    if (pen == "Z") {
      path.closeSubpath();
      continue;
    }
    const QPointF point(words[i].toDouble(), words[i + 1].toDouble());
    i += 2;
    if (pen == "M") {
      path.moveTo(point);
    } else {
      path.lineTo(point);
    }
  }
  return path;
}

class SymbolEngine : public QIconEngine {
 public:
  explicit SymbolEngine(Symbol symbol) : symbol_(symbol) {}

  void paint(QPainter* painter, const QRect& area, QIcon::Mode mode, QIcon::State) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const double scale = std::min(area.width(), area.height()) / kGrid;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(area.topLeft());
    painter->scale(scale, scale);
    const QColor colour = QGuiApplication::palette().color(group, QPalette::ButtonText);
    constexpr double kWidth = 1.3;
    painter->setPen(QPen(colour, kWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (symbol_ == Symbol::Play) painter->setBrush(colour);
    painter->drawPath(PathOf(kStrokes[static_cast<std::size_t>(symbol_)]));
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect({}, size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new SymbolEngine(symbol_); }

 private:
  Symbol symbol_;
};

}  // namespace

QIcon IconOf(Symbol symbol) { return QIcon(new SymbolEngine(symbol)); }

}  // namespace sorvanix::studio
