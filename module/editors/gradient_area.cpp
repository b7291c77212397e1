// The gradient area between the host's messages, the ramp of the block and its picture.
#include "module/editors/gradient_area.h"

#include <cstring>

#include "module/editors/gradient_keys.h"
#include "module/editors/gradient_picture.h"
#include "module/editors/gradient_scale.h"

namespace sorvanix {

template <class Change>
bool GradientArea::Edit(Change change) noexcept {
  const Ramp before = ramp_.Load();
  Ramp after = before;
  change(after);
  if (std::memcmp(&before, &after, sizeof before) == 0) return false;
  ramp_.Store(after);
  Refresh();
  return true;
}

void GradientArea::Refresh() noexcept {
  painted_ = false;
  Redraw();
}

// --- the selected handle ---

float GradientArea::SelectedValue() const noexcept {
  const Ramp ramp = ramp_.Load();
  return HandleValue(ramp, SelectedHandle(ramp));
}

void GradientArea::SetSelectedValue(float value) noexcept {
  Edit([value](Ramp& ramp) { SetHandleValue(ramp, SelectedHandle(ramp), value); });
}

float GradientArea::SelectedPosition() const noexcept {
  const Ramp ramp = ramp_.Load();
  return HandleValue(ramp, KnotOf(SelectedHandle(ramp)));
}

void GradientArea::SetSelectedPosition(float position) noexcept {
  Edit([position](Ramp& ramp) {
    const RampHandle knot = KnotOf(SelectedHandle(ramp));
    SelectHandle(ramp, knot);
    SetHandleValue(ramp, knot, position);
  });
}

KeyAnswer GradientArea::Key(std::int32_t key, std::int32_t qualifier) noexcept {
  bool taken = false;
  const bool changed = Edit([&](Ramp& ramp) { taken = ApplyRampKey(ramp, key, qualifier); });
  if (!taken) return KeyAnswer::NotTaken;
  return changed ? KeyAnswer::Changed : KeyAnswer::Taken;
}

// --- the host's messages ---

bool GradientArea::GetMinSize(std::int32_t* width, std::int32_t* height) noexcept {
  *width = kGradientWidth;
  *height = kGradientHeight;
  return true;
}

bool GradientArea::Init() noexcept {
  if (!bitmap_.Make(kGradientWidth, kGradientHeight)) return false;
  Refresh();
  return true;
}

// Painting waits for the host to ask: an editor that is never shown costs nothing.
void GradientArea::Draw() noexcept {
  if (!painted_) PaintGradient(ramp_.Load(), bitmap_.get());
  painted_ = true;
  hostAreaDrawBitmap(get(), bitmap_.get(), 0, 0);
}

bool GradientArea::Input(const AreaInputEvent& event) noexcept {
  if (event.IsWheel()) {
    TurnWheel(event.wheel);
    return true;
  }
  if (!event.IsLeftPress()) return false;
  if (Pick(event)) DragUntilReleased();
  return true;
}

// True when a drag may follow.
bool GradientArea::Pick(const AreaInputEvent& press) noexcept {
  RampHandle held;
  Edit([&](Ramp& ramp) {
    held = mouse_.Press(ramp, {PixelAt(press.x), PixelAt(press.y), press.twice, press.qualifier});
  });
  if (!press.twice || held.kind == HandleKind::Bias) return bool(held);
  ChooseColour();
  return false;
}

void GradientArea::DragUntilReleased() noexcept {
  std::int32_t x = 0, y = 0, qualifier = 0;
  while (hostAreaPollMouse(get(), &x, &y, &qualifier) != 0) {
    Edit([&](Ramp& ramp) { mouse_.Move(ramp, x, y); });
    hostAreaSendAction(get(), true);
  }
  hostAreaSendAction(get(), false);
}

void GradientArea::ChooseColour() noexcept {
  Edit([](Ramp& ramp) {
    if (const RampHandle handle = SelectedHandle(ramp)) {
      hostChooseColour(&ramp.knots[handle.knot].colour);
    }
  });
  hostAreaSendAction(get(), false);
}

void GradientArea::TurnWheel(std::int32_t delta) noexcept {
  constexpr double kValuePerStep = 8.333333e-05;  // a notch of 120 moves by a hundredth
  Edit([delta](Ramp& ramp) {
    const RampHandle handle = SelectedHandle(ramp);
    const double value = HandleValue(ramp, handle) + delta * kValuePerStep;
    SetHandleValue(ramp, handle, static_cast<float>(Clamp01(value)));
  });
  hostAreaSendAction(get(), false);
}

}  // namespace sorvanix
