// Fresnel: a colour ramp from the outline of a surface to where it faces the eye.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// What the two sides of a surface show. Documents store the numbers.
enum FresnelSideMode : std::int32_t {
  FresnelFrontOnBlack = 0,  ///< the ramp in front, black behind
  FresnelFrontOnWhite = 1,
  FresnelWhite = 2,        ///< also 5, and every number that has no name here
  FresnelBackOnBlack = 3,  ///< the ramp behind, black in front
  FresnelBackOnWhite = 4,
  FresnelBothSides = 6
};

/// The parameter block.
struct FresnelBlock {
  Ramp ramp;
  std::int32_t useBumpNormal;  ///< 0 takes the sample's normal instead
  std::int32_t previewBusy;
  std::int32_t previewAuto;
  std::int32_t changed;
  std::int32_t previewObject;
  std::int32_t nested;    ///< cleared by Copy; no filter sets it
  std::int32_t sideMode;  ///< a FresnelSideMode
  std::int32_t previewChannel;
};

extern const ShaderTable kFresnelTable;

void FillFresnelRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
