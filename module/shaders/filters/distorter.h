// Distorter: reads one input at a place that the colours of another move.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// How the driving colour becomes a displacement. Documents store the numbers.
enum DistorterWarp : std::int32_t {
  DistorterDirect = 0,   ///< the colour: black rests
  DistorterCentred = 1,  ///< the colour less a half: mid-grey rests
  DistorterGradient = 2  ///< along the slope of the colour's mean
};

/// The parameter block. Values are as they come; only the dialog limits them.
struct DistorterBlock {
  ChannelLink* input;
  ChannelLink* distortInput;
  std::int32_t warpType;  ///< a DistorterWarp; any other number moves nothing
  float strength;
  float scaleX;
  float scaleY;
  float scaleZ;
  float gradientStep;  ///< how far the slope of DistorterGradient is probed
  std::int32_t tile;   ///< nonzero: a coordinate outside 0..1 wraps, for an unaware input
  std::int32_t previewObject;
  std::int32_t previewBusy;
  std::int32_t changed;
  std::int32_t previewAuto;
  std::int32_t nested;  ///< set by an enclosing filter
  HostDocument* previewScene;
  std::int32_t previewChannel;
  float sampleStep;  ///< multiplies the distances between the samples of a bump
};

extern const ShaderTable kDistorterTable;

void FillDistorterRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
