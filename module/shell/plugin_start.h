// What the module does when the host starts it, and when the last attach is undone.
#pragma once

#include <cstdint>

namespace sorvanix {

/// Opens the resources, refuses hosts that are too old, registers every shader, then builds the
/// noise state that all shaders share. 1 when all shaders stand, else 0.
std::int32_t PluginStart() noexcept;

/// Frees the host's fractal weights. All else stays until the module is unloaded.
void PluginEnd() noexcept;

}  // namespace sorvanix
