// One gadget of a dialog: showing its member, and taking what the user set.
#pragma once

#include "module/editors/gadget_table.h"
#include "module/shell/host_dialog.h"

namespace sorvanix {

/// What a gadget shows for a frequency of 0 or below, and the frequency for a size of 0: a number
/// large enough for "as good as endless", with bits that documents hold.
inline constexpr float kEndless = 9e18f;

/// The row of a member, or of the vector that it is part of; null for a member without one.
const Field* FieldOf(const ShaderTable& table, std::uint32_t member) noexcept;

/// Shows the member's value, with the limits that the gadget then keeps.
void ShowGadget(HostDialog* dialog, const Gadget& gadget, const Field& field, void* block) noexcept;

/// Stores the value of a command into the member. False when nothing was stored: the message
/// carries no value, or the member's own where the gadget compares.
bool TakeGadget(const Gadget& gadget, const Field& field, const HostContainer* message,
                void* block) noexcept;

}  // namespace sorvanix
