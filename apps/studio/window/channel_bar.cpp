#include "apps/studio/window/channel_bar.h"

#include <QColorDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>

#include "apps/studio/window/panel_parts.h"

namespace sorvanix::studio {

namespace {

constexpr double kMostStrength = 1000;  // percent
constexpr QSize kSwatch(36, 16);

QColor Shown(const Vector& colour) {
  const auto limited = [](float value) { return value > 0 ? std::min(value, 1.0F) : 0.0F; };
  return QColor::fromRgbF(limited(colour.x), limited(colour.y), limited(colour.z));
}

QIcon Swatch(const QColor& colour) {
  QPixmap pixmap(kSwatch * 2);
  pixmap.setDevicePixelRatio(2);
  pixmap.fill(colour);
  QPainter painter(&pixmap);
  painter.setPen(QColor(128, 128, 128));
  painter.drawRect(QRectF(QPointF(), kSwatch).adjusted(0.5, 0.5, -0.5, -0.5));
  painter.end();
  return QIcon(pixmap);
}

}  // namespace

ChannelBar::ChannelBar(Workshop& workshop, QWidget* parent) : QWidget(parent), workshop_(workshop) {
  strength_.setRange(-kMostStrength, kMostStrength);
  strength_.setDecimals(0);
  strength_.setSingleStep(5);
  strength_.setSuffix(tr(" %"));
  strength_.setKeyboardTracking(false);  // one step of the history for one number typed
  strength_.setToolTip(tr("What the channel is multiplied by; of the bump, how far it bends"));
  colour_.setIconSize(kSwatch);
  colour_.setToolTip(tr("The colour that the channel is multiplied by"));
  colour_.setAccessibleName(tr("Colour of the channel"));
  auto* strengthLabel = new QLabel(tr("Stren&gth"));
  strengthLabel->setBuddy(&strength_);
  auto* colourLabel = new QLabel(tr("&Colour"));
  colourLabel->setBuddy(&colour_);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, kPanelSpacing, 0, 0);
  layout->setSpacing(kPanelMargin);
  layout->addWidget(strengthLabel);
  layout->addWidget(&strength_);
  layout->addSpacing(2 * kPanelMargin);
  layout->addWidget(colourLabel);
  layout->addWidget(&colour_);
  layout->addStretch();

  connect(&strength_, &QDoubleSpinBox::valueChanged, this, [this](double percent) {
    workshop_.commands.SetStrength(workshop_.selection.Place().channel,
                                   static_cast<float>(percent / 100));
  });
  connect(&colour_, &QToolButton::clicked, this, &ChannelBar::ChooseColour);
  connect(&workshop.selection, &Selection::MaterialSelected, this, &ChannelBar::ShowChannel);
  connect(&workshop.selection, &Selection::PlaceSelected, this, &ChannelBar::ShowChannel);
  connect(&workshop.document, &Document::MaterialChanged, this, &ChannelBar::ShowChannel);
  ShowChannel();
}

void ChannelBar::ShowChannel() {
  const Json* material = workshop_.selection.MaterialJson();
  const std::string& channel = workshop_.selection.Place().channel;
  setEnabled(material != nullptr && IsChannelOn(*material, channel));
  if (material == nullptr) return;
  const QSignalBlocker block(strength_);
  strength_.setValue(static_cast<double>(StrengthOf(*material, channel)) * 100);
  colour_.setIcon(Swatch(Shown(ColourOf(*material, channel))));
}

void ChannelBar::ChooseColour() {
  const std::string channel = workshop_.selection.Place().channel;
  const Vector former = ColourOf(*workshop_.selection.MaterialJson(), channel);
  const QColor chosen = QColorDialog::getColor(Shown(former), this, tr("Colour of the Channel"));
  // The chooser knows 8 bits: a colour that nobody touched keeps all of its own.
  if (!chosen.isValid() || chosen.rgb() == Shown(former).rgb()) return;
  workshop_.commands.SetColour(channel, {chosen.redF(), chosen.greenF(), chosen.blueF()});
}

}  // namespace sorvanix::studio
