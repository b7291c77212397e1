// Proximal: grey by how near a surface comes to points of the scene: objects, their vertices or
// faces, or particles.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The parameter block. Values are as they come; only the dialog limits them.
struct ProximalBlock {
  float minimum;           ///< where the falloff starts, in hundreds of scene units
  float maximum;           ///< where it ends, as a factor on the reach of each point
  HostString* objectName;  ///< of the objects whose points are sought
  std::int32_t matchFlag;  ///< without effect
  std::int32_t useChildren;
  float strength;
  std::int32_t falloff;  ///< a ProximalFalloff
  std::int32_t useGeometry;
  std::int32_t useFaces;
  std::int32_t combine;  ///< a ProximalCombine
  std::int32_t dialogWord;
  std::int32_t nested;  ///< set by an enclosing filter
  std::int32_t previewChannel;
};

extern const ShaderTable kProximalTable;

void FillProximalRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
