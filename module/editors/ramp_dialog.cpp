// Between the gradient area, its value gadget and the shell.
#include "module/editors/ramp_dialog.h"

#include "module/shell/block.h"
#include "module/shell/host_container.h"

namespace sorvanix {

void RampDialog::AttachAreas() noexcept {
  Ramp& ramp = MemberAt<Ramp>(session().block(), table().shader->ramp.offset);
  area_.Attach(ramp.knots, ramp.order, &ramp.interpolation, &ramp.count, &ramp.selected);
  area_.Attach(dialog(), gadgets_.area);
}

void RampDialog::DetachAreas() noexcept { area_.Detach(); }

void RampDialog::Init() noexcept {
  ShaderDialog::Init();
  ShowValue();
  area_.Refresh();
}

bool RampDialog::Command(std::int32_t id, const HostContainer* message) noexcept {
  if (id == gadgets_.area) {
    ShowValue();
    RampChanged(IsDragging(message));
    return true;
  }
  if (id == gadgets_.value) {
    if (hostContainerFind(message, DialogValue) < 0) return false;
    TakeValue(hostContainerGetFloat(message, DialogValue, 0));
    RampChanged(IsDragging(message));
    return true;
  }
  const bool known = ShaderDialog::Command(id, message);
  if (id == gadgets_.interpolation) area_.Refresh();
  return known;
}

bool RampDialog::Key(std::int32_t key, std::int32_t qualifier) noexcept {
  const KeyAnswer answer = area_.Key(key, qualifier);
  if (answer == KeyAnswer::Changed) {
    ShowValue();
    RampChanged(false);
  }
  return answer != KeyAnswer::NotTaken;
}

void RampDialog::ShowValue() noexcept {
  const float value = EditsPosition() ? area_.SelectedPosition() : area_.SelectedValue();
  hostDialogSetFloat(dialog(), gadgets_.value, value, 0, 1, 0.001f, FormatPercent);
}

void RampDialog::TakeValue(float value) noexcept {
  if (EditsPosition()) {
    area_.SetSelectedPosition(value);
  } else {
    area_.SetSelectedValue(value);
  }
}

// No preview begins while the mouse still drags.
void RampDialog::RampChanged(bool dragging) noexcept {
  MarkDirty();
  if (!dragging) Changed(true);
}

}  // namespace sorvanix
