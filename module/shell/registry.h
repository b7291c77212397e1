// The list of all shaders, in the order in which they are registered.
#pragma once

#include <cstdint>
#include <span>

#include "module/shell/shader_table.h"

namespace sorvanix {

/// What an enclosing filter does with a shader that it reads.
enum class Nesting : std::uint8_t {
  None,    ///< reads it as it is
  Marked,  ///< sets its `nested`, and reads it as it is
  Aware    ///< sets its `nested`, and writes the footprint of each read into its slots
};

/// One shader of the plug-in.
struct RegistryRow {
  std::int32_t pluginId;
  Nesting nesting;
  std::int32_t nameStringId;  ///< resource text of the title, or kLiteralTitle
  const char* literalTitle;   ///< the title itself where no resource text holds it
  void (*fill)(ShaderRecord* record) noexcept;
  const ShaderTable* table;
};

inline constexpr std::int32_t kLiteralTitle = 0;

/// All rows. The ids are final: a row is never removed, renumbered or moved.
std::span<const RegistryRow> ShaderRegistry() noexcept;

}  // namespace sorvanix
