// Falloff: a colour ramp over the angle between a surface's normal and a fixed direction.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The frame in which the normal meets the direction. Documents store the numbers.
enum FalloffSpace : std::int32_t {
  FalloffWorld = 0,  ///< also 2, and every number that has no name here
  FalloffTexture = 1,
  FalloffCamera = 3
};

/// The parameter block.
struct FalloffBlock {
  Ramp ramp;
  std::int32_t space;          ///< a FalloffSpace
  Vector direction;            ///< of any length
  std::int32_t useBumpNormal;  ///< 0 takes the render's baseNormal instead
  std::int32_t previewBusy;
  std::int32_t previewAuto;
  std::int32_t changed;
  std::int32_t previewObject;
  std::int32_t nested;  ///< set by an enclosing filter, word 312; it changes nothing
  std::int32_t previewChannel;
};

extern const ShaderTable kFalloffTable;

void FillFalloffRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
