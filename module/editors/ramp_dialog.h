// The dialog of a shader with a ramp: the shell, the gradient area, and the value of its handle.
#pragma once

#include "module/editors/gradient_area.h"
#include "module/editors/shader_dialog.h"

namespace sorvanix {

/// What the value gadget shows.
enum class RampValue : std::uint8_t {
  OfHandle,   ///< a position or a bias, whatever is selected
  OfPosition  ///< always the position of the selected knot
};

/// The gadgets of a ramp.
struct RampGadgets {
  std::int32_t area;           ///< the gradient area
  std::int32_t value;          ///< of the selected handle, in percent
  std::int32_t interpolation;  ///< in the gadget table as any other; its changes show in the area
  RampValue shown = RampValue::OfHandle;
};

/// The ids that no gadget table names.
template <RampGadgets gadgets>
inline constexpr std::int32_t kIdsOfRamp[] = {gadgets.area, gadgets.value};

/// These dialogs take every number for a preview object; one without a scene shows nothing.
inline constexpr Limits kAnyPreviewObject = {.step = 1};

/// Its keys are those of the gradient area: neither revert nor reset nor random.
class RampDialog : public ShaderDialog {
 public:
  RampDialog(EditSession& session, const RampGadgets& gadgets) noexcept
      : ShaderDialog(session), gadgets_(gadgets) {}

 protected:
  ~RampDialog() = default;

  void AttachAreas() noexcept override;
  void DetachAreas() noexcept override;
  void Init() noexcept override;
  bool Command(std::int32_t id, const HostContainer* message) noexcept override;
  bool Key(std::int32_t key, std::int32_t qualifier) noexcept override;

 private:
  bool EditsPosition() const noexcept { return gadgets_.shown == RampValue::OfPosition; }
  void ShowValue() noexcept;
  void TakeValue(float value) noexcept;
  void RampChanged(bool dragging) noexcept;

  const RampGadgets gadgets_;
  GradientArea area_;
};

/// The dialog of a shader whose tables say all.
template <RampGadgets gadgets>
class PlainRampDialog final : public RampDialog {
 public:
  explicit PlainRampDialog(EditSession& session) noexcept : RampDialog(session, gadgets) {}
};

}  // namespace sorvanix
