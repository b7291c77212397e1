// The user area that edits a ramp: a colour strip with a pointer below it for each knot and a
// diamond above it for the bias of each span.
//
// A press on a pointer or a diamond drags it, one on the strip adds a knot there, a second press
// opens the colour chooser, the wheel and the keys move the selected handle. A pointer that is
// dragged off the area is torn off, and comes back with the mouse.
#pragma once

#include "module/editors/gradient_mouse.h"
#include "module/editors/gradient_ramp.h"
#include "module/editors/user_area.h"

namespace sorvanix {

/// What became of a key.
enum class KeyAnswer : std::uint8_t {
  NotTaken,  ///< it is the host's
  Taken,     ///< without a change: reserved, or with nothing to move or select
  Changed
};

class GradientArea final : public UserArea {
 public:
  using UserArea::Attach;

  /// Points the area at the ramp of a block, which outlives it. What the user does goes there at
  /// once.
  void Attach(RampKnot* knots, std::int32_t* order, std::int32_t* interpolation,
              std::int32_t* count, std::int32_t* selected) noexcept {
    ramp_ = {knots, order, interpolation, count, selected};
  }

  /// Draws the area anew, after the ramp was changed.
  void Refresh() noexcept;

  /// The selected knot's position as it is, or the selected bias limited to 0..1; 0 where nothing
  /// is selected.
  float SelectedValue() const noexcept;
  /// Moves the selected handle. A position is not limited; a knot that passes a neighbour changes
  /// places with it.
  void SetSelectedValue(float value) noexcept;

  /// The same of the selected knot's position, also while its bias is what is selected; setting it
  /// selects the knot.
  float SelectedPosition() const noexcept;
  void SetSelectedPosition(float position) noexcept;

  /// A key that was pressed anywhere in the dialog.
  KeyAnswer Key(std::int32_t key, std::int32_t qualifier) noexcept;

 protected:
  bool GetMinSize(std::int32_t* width, std::int32_t* height) noexcept override;
  bool Init() noexcept override;
  void Draw() noexcept override;
  bool Input(const AreaInputEvent& event) noexcept override;

 private:
  // Runs a change of the ramp. What it changed is stored and shown; false when that is nothing.
  template <class Change>
  bool Edit(Change change) noexcept;

  bool Pick(const AreaInputEvent& press) noexcept;
  void DragUntilReleased() noexcept;
  void ChooseColour() noexcept;
  void TurnWheel(std::int32_t delta) noexcept;

  RampInBlock ramp_;
  GradientMouse mouse_;
  OwnedBitmap bitmap_;
  bool painted_ = false;  // the bitmap shows the ramp as it is
};

}  // namespace sorvanix
