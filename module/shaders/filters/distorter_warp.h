// The displacement of a Distorter: from the colours of its driving input to a moved footprint, and
// the read of the other input there.
#pragma once

#include "module/shaders/filters/distorter.h"
#include "module/shaders/filters/input_stage.h"

namespace sorvanix {

/// The slot of a Distorter. Its inputs are `input` and `distortInput`, in this order.
struct DistorterSlot : InputSlot<2> {
  float tapStep;  ///< how far a bump tap moves the surface point
  float unused;   ///< always 1, never read
};
static_assert(sizeof(DistorterSlot) == SlotStrideDistorter);

inline constexpr std::size_t kImageInput = 0;
inline constexpr std::size_t kDriveInput = 1;

/// What one call of Output works on. The two blocks are the inputs' own slots where they are aware.
struct DistorterReading {
  const DistorterBlock& block;
  const DistorterSlot& first;  ///< the slot of the first CPU, which holds all steps
  ChannelSample& sample;       ///< moved for the time of the read of `input`
  FootprintBlock& driveBlock;
  FootprintBlock& imageBlock;
};

/// The colour of `input` at the displaced place. `driveBlock` and `imageBlock` hold the footprint;
/// driveBlock.uvwPoint says where `distortInput` is read.
Vector DistortAndRead(const DistorterReading& reading) noexcept;

}  // namespace sorvanix
