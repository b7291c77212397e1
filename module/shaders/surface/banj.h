// Banj: the light that shines through a thin surface from its far side.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The parameter block: 18 words.
struct BanjBlock {
  std::int32_t previewObject;
  std::int32_t orenNayar;  ///< how the far side is lit, an Illumination; any other is black
  float diffuseLevel;
  float shadowMix;  ///< 0: nothing blocks the light, 1: the host's shadows
  float sigma;      ///< roughness
  float diffuseContrast;
  float sigma2;  ///< these three follow from sigma
  float orenA;
  float orenB;
  Vector diffuseColour;
  std::int32_t changed;
  std::int32_t previewBusy;
  std::int32_t previewAuto;
  std::int32_t nested;  ///< set by an enclosing filter, word 15; it changes nothing
  std::int32_t reserved16;
  std::int32_t previewState;
};

extern const ShaderTable kBanjTable;

void FillBanjRecord(ShaderRecord* record) noexcept;

/// Recomputes what follows from sigma. Whoever changes sigma calls it.
void DeriveRoughness(BanjBlock& block) noexcept;

}  // namespace sorvanix
