// Where 3D Noise is read: the hit and the corners of the sample, in noise units.
#pragma once

#include <sorvanix/footprint.h>
#include <sorvanix/records.h>

#include "module/shaders/generators/noise_3d.h"

namespace sorvanix {

/// A sample as the noise sees it.
struct NoisePlace {
  Vector point;
  float width;  ///< of the filter
};

/// The sample without a render: `uvw` on a unit square.
NoisePlace PlaceOnSquare(const Noise3DBlock& block, const ChannelSample& sample) noexcept;

/// The sample on the surface of its render. `own` is the calling CPU's slot, null without slots;
/// `nested` tells that an enclosing filter wrote the points there.
NoisePlace PlaceOnSurface(const Noise3DBlock& block, const ChannelSample& sample,
                          const FootprintBlock* own, bool nested) noexcept;

}  // namespace sorvanix
