// Numbers, as fields and as sliders.
#include <QSlider>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "apps/studio/dialogs/gadget_kinds.h"
#include "apps/studio/dialogs/number_field.h"

namespace sorvanix::studio {

namespace {

QString UnitOf(const host::Gadget& gadget, const host::LayoutElement& element) {
  switch (gadget.format) {
    case FormatPercent:
      return QStringLiteral(" %");
    case FormatDegrees:
      return QStringLiteral("\u00b0");
    case FormatMeters:
      return QStringLiteral(" m");
    default:  // some shaders hold degrees
      return element.unit == "degrees" ? QStringLiteral("\u00b0") : QString();
  }
}

class NumberView : public GadgetView {
 public:
  explicit NumberView(const ShownGadget& gadget) : GadgetView(new NumberField, gadget) {
    connect(Field(), &NumberField::Typed, this, [this](double number) {
      Shown().Set(Shown().State().TypedNumber(number));
      Update();  // also when the limits left the value as it was
    });
    connect(Field(), &NumberField::Stepped, this,
            [this](int steps) { Shown().Set(Shown().State().Stepped(steps)); });
  }

 private:
  NumberField* Field() const { return static_cast<NumberField*>(Widget()); }
  void Show(const host::Gadget& gadget) override {
    Field()->ShowNumber(gadget.ShownNumber(), UnitOf(gadget, Shown().Element()));
  }
};

// A wheel that turns over it on its way elsewhere changes nothing.
class SliderBar : public QSlider {
 public:
  SliderBar() : QSlider(Qt::Horizontal) { setFocusPolicy(Qt::StrongFocus); }

 protected:
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus()) return QSlider::wheelEvent(event);
    event->ignore();
  }
};

// The places of a slider are the gadget's steps, as many as can be told apart. A click that moves
// nothing leaves a value between two of them as it is.
class SliderView : public GadgetView {
 public:
  explicit SliderView(const ShownGadget& gadget) : GadgetView(new SliderBar, gadget) {
    Slider()->setMinimumWidth(96);
    connect(Slider(), &QSlider::valueChanged, this, [this](int place) {
      isDragged_ = Slider()->isSliderDown();
      Shown().Set(Shown().State().TypedNumber(NumberAt(place)), isDragged_);
    });
    connect(Slider(), &QSlider::sliderReleased, this, [this] {
      if (!std::exchange(isDragged_, false)) return;
      Shown().Set(Shown().State().TypedNumber(NumberAt(Slider()->value())));
    });
  }

 private:
  static constexpr double kMostPlaces = 1000;

  QSlider* Slider() const { return static_cast<QSlider*>(Widget()); }

  static int PlacesOf(const host::Gadget& gadget) {
    const double places = std::round((gadget.maximum - gadget.minimum) / gadget.step);
    return static_cast<int>(places >= 1 ? std::min(places, kMostPlaces) : kMostPlaces);
  }
  double NumberAt(int place) const {
    const host::Gadget& gadget = Shown().State();
    const double share = static_cast<double>(place) / PlacesOf(gadget);
    return (gadget.minimum + share * (gadget.maximum - gadget.minimum)) * gadget.Scale();
  }

  void Show(const host::Gadget& gadget) override {
    const bool isBounded = std::isfinite(gadget.maximum - gadget.minimum);
    const int places = PlacesOf(gadget);
    const double share = (gadget.ShownNumber() / gadget.Scale() - gadget.minimum) /
                         (gadget.maximum - gadget.minimum);
    const double place = isBounded && share > 0 ? std::round(std::min(share, 1.0) * places) : 0;
    const QSignalBlocker quiet(Slider());
    Slider()->setRange(0, isBounded ? places : 0);
    Slider()->setPageStep(std::max(places / 10, 1));
    Slider()->setValue(static_cast<int>(place));
  }

  bool isDragged_ = false;
};

}  // namespace

GadgetView* MakeNumberView(const ShownGadget& gadget) { return new NumberView(gadget); }
GadgetView* MakeSliderView(const ShownGadget& gadget) { return new SliderView(gadget); }

}  // namespace sorvanix::studio
