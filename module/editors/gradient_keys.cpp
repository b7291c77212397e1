// The keys of a ramp, and what they do.
#include "module/editors/gradient_keys.h"

#include <sorvanix/ids.h>

#include "module/editors/gradient_handles.h"
#include "module/editors/gradient_scale.h"
#include "module/kit/ramp_edit.h"

namespace sorvanix {

namespace {

constexpr std::int32_t kCommand = QualifierControl | QualifierCommand;

// Moves the selected handle by a pixel, -1 or 1. A span without width sends its bias to an end.
void Nudge(Ramp& ramp, std::int32_t direction) {
  const RampHandle held = SelectedHandle(ramp);
  RampKnot& knot = ramp.knots[held.knot];
  if (held.kind == HandleKind::Knot) {
    const auto moved = static_cast<float>(Clamp01(knot.position + direction * kRampPerPixel));
    MoveKnot(ramp, held.knot, moved, PixelOfPosition(moved));
  } else if (held && held.knot + 1 < ramp.count) {
    const double span = double{ramp.knots[held.knot + 1].position} - knot.position;
    knot.bias = static_cast<float>(Clamp01(knot.bias + direction / (span * kPixelsPerRamp)));
  }
}

// Selects the next handle of the same kind, -1 to the left or 1 to the right. The last knot has no
// bias handle.
void SelectBeside(Ramp& ramp, std::int32_t direction) {
  RampHandle handle = SelectedHandle(ramp);
  handle.knot += direction;
  const std::int32_t handles = handle.kind == HandleKind::Bias ? ramp.count - 1 : ramp.count;
  if (handle.knot >= 0 && handle.knot < handles) SelectHandle(ramp, handle);
}

// From a knot to the bias on its right; from the last one to the bias on its left.
void SelectBias(Ramp& ramp) {
  const RampHandle held = SelectedHandle(ramp);
  if (held.kind != HandleKind::Knot || ramp.count < 2) return;
  const std::int32_t lastBias = ramp.count - 2;
  SelectHandle(ramp, {HandleKind::Bias, held.knot < lastBias ? held.knot : lastBias});
}

void SelectKnotOfBias(Ramp& ramp) {
  const RampHandle held = SelectedHandle(ramp);
  if (held.kind == HandleKind::Bias) SelectHandle(ramp, {HandleKind::Knot, held.knot});
}

void Nothing(Ramp&) {}

// A key with at least one bit of each nonzero mask.
struct KeyRow {
  std::int32_t key;
  std::int32_t mask, secondMask;
  void (*action)(Ramp&);
};

// The first row that fits counts: a nudge wins over a selection. Keys that do nothing are reserved
// for copy, paste and revert, and kept from the host.
constexpr KeyRow kKeys[] = {
    {KeyLeft, QualifierShift, 0, [](Ramp& ramp) { Nudge(ramp, -1); }},
    {KeyRight, QualifierShift, 0, [](Ramp& ramp) { Nudge(ramp, 1); }},
    {KeyLeft, kCommand, 0, [](Ramp& ramp) { SelectBeside(ramp, -1); }},
    {KeyRight, kCommand, 0, [](Ramp& ramp) { SelectBeside(ramp, 1); }},
    {KeyUp, kCommand, 0, SelectBias},
    {KeyDown, kCommand, 0, SelectKnotOfBias},
    {'D', kCommand, 0, RepeatKnots},
    {'I', kCommand, 0, ReverseKnots},
    {'C', kCommand, QualifierShift, Nothing},
    {'V', kCommand, QualifierShift, Nothing},
    {'R', kCommand, 0, Nothing},
};

bool Fits(const KeyRow& row, std::int32_t key, std::int32_t qualifier) {
  return row.key == key && (qualifier & row.mask) != 0 &&
         (row.secondMask == 0 || (qualifier & row.secondMask) != 0);
}

}  // namespace

bool ApplyRampKey(Ramp& ramp, std::int32_t key, std::int32_t qualifier) {
  for (const KeyRow& row : kKeys) {
    if (!Fits(row, key, qualifier)) continue;
    row.action(ramp);
    return true;
  }
  return false;
}

}  // namespace sorvanix
