// The saved form of a shader by table: a version marker, then typed values in file order.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// Stores the marker and every value that the current version writes. 0 without a block.
std::int32_t WriteBlock(const ShaderTable& table, const ShaderInstance* instance,
                        HostStream* writer) noexcept;

/// Restores the values that the file's marker promises; fields that an older file lacks keep what
/// they have. A newer marker than the current one is read as the current one. 1 also where nothing
/// is read because the file is too old; 0 without a block, and for a marker that the shader
/// refuses.
std::int32_t ReadBlock(const ShaderTable& table, ShaderInstance* instance,
                       HostStream* reader) noexcept;

/// Reads what follows the marker in a file with that marker.
void ReadItems(const ShaderTable& table, void* block, std::int32_t marker,
               HostStream* reader) noexcept;

}  // namespace sorvanix
