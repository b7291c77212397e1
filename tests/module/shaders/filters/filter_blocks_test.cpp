// The order of the words in the filters' parameter blocks, on builds of either width: the links,
// then words of four bytes. Documents do not hold blocks, but dialogs and enclosing filters know
// where a field stands.
#include <cstddef>

#include "module/shaders/filters/bright_contrast.h"
#include "module/shaders/filters/colorizer.h"
#include "module/shaders/filters/distorter.h"
#include "module/shaders/filters/fusion.h"
#include "module/shaders/filters/hue.h"
#include "module/shaders/filters/posterizer.h"

namespace sorvanix {
namespace {

constexpr std::size_t Word(std::size_t links, std::size_t number) {
  return links * sizeof(void*) + number * 4;
}

#define EXPECT_WORD(Block, links, number, member) \
  static_assert(offsetof(Block, member) == Word(links, number))
#define EXPECT_LINK(Block, number, member) \
  static_assert(offsetof(Block, member) == (number) * sizeof(void*))

EXPECT_LINK(BrightContrastBlock, 0, input);
EXPECT_WORD(BrightContrastBlock, 1, 0, brightness);
EXPECT_WORD(BrightContrastBlock, 1, 1, contrast);
EXPECT_WORD(BrightContrastBlock, 1, 2, levelLow);
EXPECT_WORD(BrightContrastBlock, 1, 3, levelHigh);
EXPECT_WORD(BrightContrastBlock, 1, 4, previewObject);
EXPECT_WORD(BrightContrastBlock, 1, 5, previewBusy);
EXPECT_WORD(BrightContrastBlock, 1, 6, changed);
EXPECT_WORD(BrightContrastBlock, 1, 7, previewAuto);
EXPECT_WORD(BrightContrastBlock, 1, 8, reserved9);
EXPECT_WORD(BrightContrastBlock, 1, 9, nested);

constexpr std::size_t kRampWords = sizeof(Ramp) / 4;
static_assert(sizeof(Ramp) % 4 == 0);
EXPECT_LINK(ColorizerBlock, 0, input);
EXPECT_WORD(ColorizerBlock, 1, 0, ramp);
EXPECT_WORD(ColorizerBlock, 1, kRampWords, source);
EXPECT_WORD(ColorizerBlock, 1, kRampWords + 1, previewObject);
EXPECT_WORD(ColorizerBlock, 1, kRampWords + 2, previewBusy);
EXPECT_WORD(ColorizerBlock, 1, kRampWords + 3, changed);
EXPECT_WORD(ColorizerBlock, 1, kRampWords + 4, previewAuto);
EXPECT_WORD(ColorizerBlock, 1, kRampWords + 5, nested);

EXPECT_LINK(HueBlock, 0, input);
EXPECT_WORD(HueBlock, 1, 0, hueShift);
EXPECT_WORD(HueBlock, 1, 1, saturationShift);
EXPECT_WORD(HueBlock, 1, 2, lightnessShift);
EXPECT_WORD(HueBlock, 1, 3, colorize);
EXPECT_WORD(HueBlock, 1, 4, colorHue);
EXPECT_WORD(HueBlock, 1, 5, colorSaturation);
EXPECT_WORD(HueBlock, 1, 6, colorLightness);
EXPECT_WORD(HueBlock, 1, 7, previewObject);
EXPECT_WORD(HueBlock, 1, 8, previewBusy);
EXPECT_WORD(HueBlock, 1, 9, changed);
EXPECT_WORD(HueBlock, 1, 10, previewAuto);
EXPECT_WORD(HueBlock, 1, 11, nested);

EXPECT_LINK(PosterizerBlock, 0, input);
EXPECT_WORD(PosterizerBlock, 1, 0, levels);
EXPECT_WORD(PosterizerBlock, 1, 1, softness);
EXPECT_WORD(PosterizerBlock, 1, 2, previewObject);
EXPECT_WORD(PosterizerBlock, 1, 3, previewBusy);
EXPECT_WORD(PosterizerBlock, 1, 4, changed);
EXPECT_WORD(PosterizerBlock, 1, 5, previewAuto);
EXPECT_WORD(PosterizerBlock, 1, 6, nested);

EXPECT_LINK(DistorterBlock, 0, input);
EXPECT_LINK(DistorterBlock, 1, distortInput);
EXPECT_WORD(DistorterBlock, 2, 0, warpType);
EXPECT_WORD(DistorterBlock, 2, 1, strength);
EXPECT_WORD(DistorterBlock, 2, 2, scaleX);
EXPECT_WORD(DistorterBlock, 2, 3, scaleY);
EXPECT_WORD(DistorterBlock, 2, 4, scaleZ);
EXPECT_WORD(DistorterBlock, 2, 5, gradientStep);
EXPECT_WORD(DistorterBlock, 2, 6, tile);
EXPECT_WORD(DistorterBlock, 2, 7, previewObject);
EXPECT_WORD(DistorterBlock, 2, 8, previewBusy);
EXPECT_WORD(DistorterBlock, 2, 9, changed);
EXPECT_WORD(DistorterBlock, 2, 10, previewAuto);
EXPECT_WORD(DistorterBlock, 2, 11, nested);

EXPECT_LINK(FusionBlock, 0, baseInput);
EXPECT_LINK(FusionBlock, 1, blendInput);
EXPECT_LINK(FusionBlock, 2, maskInput);
EXPECT_WORD(FusionBlock, 3, 0, mode);
EXPECT_WORD(FusionBlock, 3, 1, opacity);
EXPECT_WORD(FusionBlock, 3, 2, invertMask);
EXPECT_WORD(FusionBlock, 3, 3, useMask);
EXPECT_WORD(FusionBlock, 3, 4, invertOutput);
EXPECT_WORD(FusionBlock, 3, 5, previewObject);
EXPECT_WORD(FusionBlock, 3, 6, previewBusy);
EXPECT_WORD(FusionBlock, 3, 7, changed);
EXPECT_WORD(FusionBlock, 3, 8, previewAuto);
EXPECT_WORD(FusionBlock, 3, 9, nested);

}  // namespace
}  // namespace sorvanix
