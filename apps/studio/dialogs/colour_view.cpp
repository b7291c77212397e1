#include "apps/studio/dialogs/colour_view.h"

#include <QColorDialog>
#include <QToolButton>
#include <algorithm>

#include "apps/studio/dialogs/gadget_kinds.h"

namespace sorvanix::studio {

namespace {

float Limited(float component) {
  if (!(component > 0)) return 0;
  return std::min(component, 1.0F);
}

class ColourView : public GadgetView {
 public:
  explicit ColourView(const ShownGadget& gadget) : GadgetView(new QToolButton, gadget) {
    Button()->setIconSize({72, 16});
    Button()->setFocusPolicy(Qt::StrongFocus);
    connect(Button(), &QToolButton::clicked, this, [this] {
      if (const auto chosen = Shown().Dialog().Service()->ChooseColour(Colour(Shown().State()))) {
        Shown().Set(*chosen);
      }
    });
  }

 private:
  QToolButton* Button() const { return static_cast<QToolButton*>(Widget()); }
  static Vector Colour(const host::Gadget& gadget) {
    const auto* colour = std::get_if<Vector>(&gadget.value);
    return colour != nullptr ? *colour : Vector{};
  }
  void Show(const host::Gadget& gadget) override {
    QPixmap swatch(Button()->iconSize());
    swatch.fill(ColourOf(Colour(gadget)));
    Button()->setIcon(swatch);
  }
};

}  // namespace

QColor ColourOf(const Vector& colour) {
  return QColor::fromRgbF(Limited(colour.x), Limited(colour.y), Limited(colour.z));
}

std::optional<Vector> AskColour(const Vector& shown, QWidget* parent) {
  const QColor before = ColourOf(shown);
  const QColor after =
      QColorDialog::getColor(before, parent, QString(), QColorDialog::DontUseNativeDialog);
  if (!after.isValid() || after.rgb() == before.rgb()) return std::nullopt;
  return Vector{after.redF(), after.greenF(), after.blueF()};
}

GadgetView* MakeColourView(const ShownGadget& gadget) { return new ColourView(gadget); }

}  // namespace sorvanix::studio
