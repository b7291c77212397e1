// Host noise read at a point that other host noise displaces (domain warping).
//
// K. Perlin, An Image Synthesizer, SIGGRAPH 1985; F. K. Musgrave in D. S. Ebert et al., Texturing
// and Modeling: A Procedural Approach. Results as hostUnitNoiseAt.
#pragma once

namespace sorvanix {

/// Each axis is displaced by a noise of that axis alone, which draws straight streaks along it.
float AxisWarpNoise(float x, float y, float z, float time, float amount) noexcept;

/// Each axis is displaced by a noise of the whole point, read at an offset of its own.
float OffsetWarpNoise3(float x, float y, float z, float time, float amount) noexcept;

/// The same in the plane z = 0.
float OffsetWarpNoise2(float x, float y, float time, float amount) noexcept;

}  // namespace sorvanix
