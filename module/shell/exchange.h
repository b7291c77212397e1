// Messages to a shader by table: set, get and describe parameters, report the slots, forward.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// Answers the messages of ids.h. The result is 1, also for unknown messages and without a block;
/// without one only MessageReportSlots does anything. A filter answers MessageForward with what its
/// last input answers.
std::int32_t AnswerMessage(const ShaderTable& table, ShaderInstance* instance, std::int32_t id,
                           HostContainer* payload) noexcept;

}  // namespace sorvanix
