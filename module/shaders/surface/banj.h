// Banj: the light that shines through a thin surface from its far side.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// How the far side is lit. Documents store the numbers; any other shades black.
enum BanjIllumination : std::int32_t {
  BanjHostForm = 0,  ///< as the host lights a surface that is turned round
  BanjOrenNayarForm = 1
};

/// The parameter block: 18 words.
struct BanjBlock {
  std::int32_t previewObject;
  std::int32_t orenNayar;  ///< a BanjIllumination
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
