// 2D Noise: a colour from the noise catalogue over a surface's texture coordinates.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The parameter block: 29 words. Values are as they come; only the dialog limits them.
struct Noise2DBlock {
  std::int32_t previewObject;
  std::int32_t noiseType;  ///< catalogue number, 0 to 29
  float octaves;
  float scale;   ///< frequency over both axes; dialogs show the reciprocal
  float scaleU;  ///< frequency along u
  float scaleV;  ///< frequency along v
  float detail;  ///< strength of the catalogue's anti-aliasing
  float speed;   ///< animation time per second
  float contrast;
  float brightness;
  float lowClip;
  float highClip;
  float cycles;
  Vector colorLow;
  Vector colorHigh;
  std::int32_t absolute;
  std::int32_t previewTile;
  std::int32_t reserved21;
  std::int32_t previewDirty;
  std::int32_t previewAuto;
  std::int32_t nested;  ///< set by an enclosing filter, word 24
  std::int32_t reserved25[2];
  std::int32_t previewState;
  float bumpDetail;  ///< multiplies the bump step
};

extern const ShaderTable kNoise2DTable;

void Fill2DNoiseRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
