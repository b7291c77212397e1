// The list of all shaders, in the order in which they are registered.
#pragma once

#include <span>

#include "module/shell/shader_table.h"

namespace sorvanix {

/// One shader of the plug-in.
struct RegistryRow {
  std::int32_t pluginId;
  std::int32_t nameStringId;  ///< resource text of the title, or kLiteralTitle
  const char* literalTitle;   ///< the title itself where no resource text holds it
  void (*fill)(ShaderRecord* record) noexcept;  ///< null while the shader is still to be written
  const ShaderTable* table;                     ///< null together with fill
};

inline constexpr std::int32_t kLiteralTitle = 0;

/// All rows. The ids are final: a row is never removed, renumbered or moved.
std::span<const RegistryRow> ShaderRegistry() noexcept;

}  // namespace sorvanix
