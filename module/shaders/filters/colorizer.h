// Colorizer: reduces an input to one number and shows a colour ramp at that number.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// What a colour is reduced to. Documents store the numbers.
enum ColorizerSource : std::int32_t {
  ColorizerMean = 0,  ///< also for every other number
  ColorizerHue = 1,   ///< as a fraction of a turn; a grey has none and shows the ramp's beginning
  ColorizerSaturation = 2,
  ColorizerLightness = 3,
  ColorizerRed = 4,
  ColorizerGreen = 5,
  ColorizerBlue = 6
};

/// The parameter block. Unlike in other blocks with a ramp, a field stands in front of it.
struct ColorizerBlock {
  ChannelLink* input;
  Ramp ramp;
  std::int32_t source;  ///< a ColorizerSource
  std::int32_t previewObject;
  std::int32_t previewBusy;
  std::int32_t changed;
  std::int32_t previewAuto;
  std::int32_t nested;  ///< set by an enclosing filter
  HostDocument* previewScene;
  std::int32_t previewChannel;
};

extern const ShaderTable kColorizerTable;

void FillColorizerRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
