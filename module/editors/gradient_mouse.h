// What the mouse does to a ramp: from a press in the gradient area to the release.
#pragma once

#include "module/editors/gradient_handles.h"

namespace sorvanix {

/// A press of the left button, in pixels of the area.
struct GradientPress {
  std::int32_t x = 0, y = 0;
  bool twice = false;          ///< the second press in a row
  std::int32_t qualifier = 0;  ///< QualifierAlt and nothing else copies a knot
};

/// The handle in hand. One drag runs at a time; a press begins the next one.
class GradientMouse {
 public:
  /// Takes the handle under the mouse and selects it. A knot may be copied first, and beside the
  /// handles a knot is added. None where there is nothing to take: beside the strip, in a full
  /// ramp, and, for a second press, beside the handles.
  RampHandle Press(Ramp& ramp, const GradientPress& press);

  /// Moves the handle in hand with the mouse. A knot that leaves the area is torn off, unless it is
  /// one of the last two, and put back when the mouse returns; a bias that does gets its old value.
  void Move(Ramp& ramp, std::int32_t x, std::int32_t y);

 private:
  void MoveHeldKnot(Ramp& ramp, std::int32_t knot, std::int32_t x, std::int32_t y);
  void MoveHeldBias(Ramp& ramp, std::int32_t knot, std::int32_t x, std::int32_t y);

  std::int32_t grabX_ = 0, grabY_ = 0;  // from the mouse to the handle's centre
  float grabBias_ = 0.5f;               // the bias before the drag
  bool tornOff_ = false;
  RampKnot tornKnot_;
};

}  // namespace sorvanix
