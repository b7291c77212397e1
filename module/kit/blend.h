// Mixing two colours under a blend mode, an opacity and a mask.
#pragma once

#include <sorvanix/types.h>

#include <cstdint>

namespace sorvanix {

/// How BlendColors makes its target colour from the base and the blend colour. Documents store the
/// numbers: the list only grows.
enum BlendMode : std::int32_t {
  BlendNormal = 0,       ///< the blend colour
  BlendDarken = 1,       ///< the blend colour as a whole where its mean is below the base's
  BlendLighten = 2,      ///< the blend colour as a whole where its mean is above the base's
  BlendHue = 3,          ///< the base with the hue of the blend colour
  BlendSaturation = 4,   ///< the base with the saturation of the blend colour
  BlendColor = 5,        ///< the base's value with hue and saturation of the blend colour
  BlendLuminance = 6,    ///< the base with the lightness of the blend colour
  BlendMultiply = 7,     ///< the product
  BlendScreen = 8,       ///< the product of the inverted colours, inverted
  BlendOverlay = 9,      ///< multiply or screen, doubled, as the base is dark or light
  BlendHardLight = 10,   ///< multiply or screen, doubled, as the blend colour is dark or light
  BlendSoftLight = 11,   ///< overlay with the base's part drawn towards a half
  BlendDifference = 12,  ///< the distance between the colours
  BlendDodge = 13,       ///< the base with its lightness screened with that of the blend colour
  BlendBurn = 14,        ///< the base darkened by the lightness of the blend colour
  BlendExclusion = 15,   ///< screen less multiply
  BlendAdd = 16,         ///< the sum, limited to 0..1
  BlendSubtract = 17,    ///< the difference, limited to 0..1
  BlendThreshold = 18    ///< a smooth step of the base's red around the mean of the blend colour
};

/// Mixes `blend` over `base`. The strength is `opacity`, times the mean of `mask` when `useMask` is
/// not zero; strengths outside 0..1 extrapolate. Modes whose formulas need it limit both colours to
/// 0..1 first, base included; the others take colours as they are. A mode that is not in the list
/// acts as BlendNormal. A pure function.
Vector BlendColors(Vector base, Vector blend, Vector mask, float opacity, std::int32_t mode,
                   std::int32_t useMask);

}  // namespace sorvanix
