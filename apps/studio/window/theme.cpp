#include "apps/studio/window/theme.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QSettings>
#include <QStyleOption>

namespace sorvanix::studio {

namespace {

constexpr const char* kKey = "appearance";

struct Greys {
  const char *window, *base, *alternate, *button;
  const char *text, *faint, *disabled;
  const char *highlight, *onHighlight;
  const char *light, *midlight, *mid, *dark, *shadow;  // edges, from the side of the light
};
constexpr Greys kLight = {.window = "#ececed",
                          .base = "#fbfbfc",
                          .alternate = "#f3f3f4",
                          .button = "#f4f4f5",
                          .text = "#1d1f22",
                          .faint = "#6d7178",
                          .disabled = "#a0a4aa",
                          .highlight = "#2f6fb7",
                          .onHighlight = "#ffffff",
                          .light = "#ffffff",
                          .midlight = "#f6f6f7",
                          .mid = "#c4c6c9",
                          .dark = "#b4b7bb",
                          .shadow = "#7c8086"};
constexpr Greys kDark = {.window = "#2a2c2f",
                         .base = "#1f2123",
                         .alternate = "#25272a",
                         .button = "#383b3f",
                         .text = "#e3e5e8",
                         .faint = "#989da5",
                         .disabled = "#6b6f76",
                         .highlight = "#3d7cc4",
                         .onHighlight = "#ffffff",
                         .light = "#3a3d41",
                         .midlight = "#34373a",
                         .mid = "#232528",
                         .dark = "#1a1b1d",
                         .shadow = "#111213"};

QPalette PaletteOf(const Greys& greys) {
  QPalette palette{QColor(greys.button), QColor(greys.window)};
  const auto set = [&palette](QPalette::ColorRole role, const char* colour) {
    palette.setColor(role, QColor(colour));
  };
  set(QPalette::Window, greys.window);
  set(QPalette::Base, greys.base);
  set(QPalette::AlternateBase, greys.alternate);
  set(QPalette::Button, greys.button);
  set(QPalette::ToolTipBase, greys.base);
  set(QPalette::Highlight, greys.highlight);
  set(QPalette::HighlightedText, greys.onHighlight);
  set(QPalette::Link, greys.highlight);
  set(QPalette::Light, greys.light);
  set(QPalette::Midlight, greys.midlight);
  set(QPalette::Mid, greys.mid);
  set(QPalette::Dark, greys.dark);
  set(QPalette::Shadow, greys.shadow);
  set(QPalette::PlaceholderText, greys.faint);
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    set(role, greys.text);
    palette.setColor(QPalette::Disabled, role, QColor(greys.disabled));
  }
  return palette;
}

// Fusion takes its colours from the palette on every desktop. But its check boxes vanish in dark
// windows, where their edge is darker than the ground.
class Style : public QProxyStyle {
 public:
  Style() : QProxyStyle("Fusion") {}

  // Fusion lights the edges of tool bars with white, whatever the palette says.
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    if (element != CE_ToolBar) QProxyStyle::drawControl(element, option, painter, widget);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element != PE_IndicatorItemViewItemCheck && element != PE_IndicatorCheckBox) {
      return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    const QRectF box = QRectF(option->rect).adjusted(1.5, 1.5, -1.5, -1.5);
    const QPalette& palette = option->palette;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(palette.color(QPalette::PlaceholderText));
    painter->setBrush(palette.base());
    painter->drawRoundedRect(box, 2, 2);
    if ((option->state & State_On) != 0) {
      painter->setPen(QPen(palette.color(QPalette::Text), 1.8));
      const auto at = [&box](double x, double y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
      };
      painter->setBrush(Qt::NoBrush);
      painter->drawPolyline(QPolygonF({at(0.22, 0.52), at(0.43, 0.74), at(0.8, 0.26)}));
    }
    painter->restore();
  }
};

bool IsDesktopDark() {
  return QApplication::style()->standardPalette().color(QPalette::Window).lightnessF() < 0.5F;
}

}  // namespace

std::optional<Appearance> AppearanceNamed(const QString& name) {
  if (name == "light") return Appearance::Light;
  if (name == "dark") return Appearance::Dark;
  return name == "system" ? std::optional(Appearance::System) : std::nullopt;
}

Appearance ChosenAppearance() {
  return AppearanceNamed(QSettings().value(kKey).toString()).value_or(Appearance::System);
}

void ChooseAppearance(Appearance appearance) {
  constexpr const char* kNames[] = {"system", "light", "dark"};
  QSettings().setValue(kKey, kNames[static_cast<int>(appearance)]);
  Show(appearance);
}

void Show(Appearance appearance) {
  static const bool isDesktopDark = IsDesktopDark();  // before any palette of ours
  QApplication::setStyle(new Style);
  const bool isDark =
      appearance == Appearance::Dark || (appearance == Appearance::System && isDesktopDark);
  QApplication::setPalette(PaletteOf(isDark ? kDark : kLight));
}

}  // namespace sorvanix::studio
