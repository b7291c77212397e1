// How far apart the samples of a noise's bump lie, by noise type and octave count.
#pragma once

#include <cstdint>

namespace sorvanix {

/// The distance in noise units between a point and its bump neighbours: smaller for types and
/// octave counts with finer detail. A type off the catalogue has a step of 0.3.
float NoiseBumpStep(std::int32_t noiseType, float octaves) noexcept;

}  // namespace sorvanix
