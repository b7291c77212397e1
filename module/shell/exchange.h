// Messages to a shader by table: set, get and describe parameters, report the slots.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// Answers the messages of ids.h that every shader understands. The result is always 1, also for
/// unknown messages and without a block; without one only MessageReportSlots does anything.
std::int32_t AnswerMessage(const ShaderTable& table, ShaderInstance* instance, std::int32_t id,
                           HostContainer* payload) noexcept;

}  // namespace sorvanix
