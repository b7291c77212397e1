// Lumas: a complete illumination model as a shader: one diffuse term and three highlights over all
// lights of the scene, for a channel that replaces the host's own shading.
#pragma once

#include <sorvanix/footprint.h>

#include "module/shell/shader_table.h"

namespace sorvanix {

inline constexpr std::size_t kLumasLayers = 3;

/// One of the three highlights. Fields marked derived follow from the others: see lumas_derive.h.
struct SpecularLayer {
  std::int32_t useAnisotropy;  ///< nonzero: brushed, where the block's anisotropyActive is set
  Vector colour;
  float colourStrength;
  Vector tint;  ///< derived: the colour times its strength
  float intensity;
  float size;
  float contrast;
  float spareReal;          ///< kept and exchanged, without effect
  Vector rimColour;         ///< kept, without effect
  float rimColourStrength;  ///< kept, without effect
  float edgeIntensity;
  float edgeWidth;       ///< how far the rim reaches in from the outline, 0 to 1
  std::int32_t active;   ///< derived: the layer contributes
  float exponent;        ///< derived: of the host's highlight
  float contrastLow;     ///< derived: what the contrast makes 0
  float contrastHigh;    ///< derived: what it makes 1
  std::int32_t useEdge;  ///< derived: the rim differs from the middle
  float roughness;       ///< derived: of the brushed highlight
};

/// How the direction of brushing is found at a point.
enum AnisotropyMode : std::int32_t {
  AnisoTagAxis = 0,        ///< the y axis of the texture tag
  AnisoTangent = 1,        ///< a tangent built from the normal in the tag's frame
  AnisoAroundAxis = 2,     ///< around the tag's y axis, as turned on a lathe
  AnisoRadialSurface = 3,  ///< away from the tag's origin, along the surface
  AnisoDiscsSurface = 4,   ///< polished discs laid on the surface
  AnisoRadialPlanar = 5,   ///< away from the tag's z axis, in its xy plane
  AnisoDiscsPlanar = 6     ///< polished discs in the tag's plane
};

/// The parameter block.
struct LumasBlock {
  std::int32_t dialogWords[3];  ///< working storage of the dialog
  std::int32_t previewChannel;
  std::int32_t moreDialogWords[3];
  std::int32_t previewObject;  ///< the first word that Copy takes
  std::int32_t previewBusy;
  std::int32_t previewAuto;
  std::int32_t changed;
  std::int32_t nested;  ///< set by an enclosing filter, word 11
  std::int32_t activePage;
  std::int32_t diffuseOn;
  std::int32_t layerOn[kLumasLayers];
  std::int32_t anisotropyOn;
  SpecularLayer layers[kLumasLayers];
  Vector diffuseColour;
  float diffuseStrength;
  Vector diffuseTint;      ///< derived: the colour times its strength
  std::int32_t orenNayar;  ///< an Illumination; any other acts as the host's
  float sigma;             ///< roughness of the Oren-Nayar term
  float diffuseLevel;
  float diffuseContrast;
  std::int32_t diffuseActive;  ///< derived: the term contributes
  float diffuseLow;            ///< derived: what the contrast makes 0
  float diffuseHigh;           ///< derived: what it makes 1
  std::int32_t anisotropyMode;
  float anisotropyScale;          ///< size of the discs
  float anisotropyX;              ///< stretch of highlights along the brushing
  float anisotropyY;              ///< stretch across it
  std::int32_t anisotropyActive;  ///< derived
  std::int32_t spareLong;         ///< exchanged, without effect; never saved
  float scratchAmplitude;
  float scratchScaleU;         ///< frequency; dialogs show the reciprocal
  float scratchScaleV;         ///< frequency; dialogs show the reciprocal
  float scratchFade;           ///< how soon distance hides the scratches
  std::int32_t scratchActive;  ///< derived: scratches show on some layer
  std::int32_t scratchOnLayer[kLumasLayers];
  float orenA;   ///< derived, as orenB: the constants of the Oren-Nayar term
  float orenB;   ///< derived
  float sigma2;  ///< derived: sigma squared
};

/// The record of one CPU.
struct LumasSlot {
  FootprintBlock head;
  float footprintSize;   ///< of the sample, in the tag's frame
  Vector viewVector;     ///< from the hit to the eye
  Vector surfaceNormal;  ///< the normal that shading uses
  Vector faceNormal;
  std::int32_t reserved[2];
};
static_assert(sizeof(LumasSlot) == SlotStrideDistorter);

extern const ShaderTable kLumasTable;

void FillLumasRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
