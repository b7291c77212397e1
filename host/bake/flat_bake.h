// A flat bake: a shader's colours over the unit square of texture coordinates, without a scene.
#pragma once

#include <sorvanix/records.h>

#include <functional>
#include <optional>

#include "host/bake/parallel_tiles.h"
#include "host/images/image.h"

namespace sorvanix::host {

/// The longest side of a picture.
inline constexpr int kLargestBake = 65536;
/// The most samples along one side of a pixel.
inline constexpr int kMostSamples = 64;

struct FlatBakeSettings {
  int width = 512;   // 1 .. kLargestBake
  int height = 512;  // 1 .. kLargestBake
  /// Each pixel is the mean of this many samples squared. One sample lies in the pixel's upper left
  /// corner, as in the flat preview of a dialog, so that the two show the same; several lie in the
  /// middles of their shares of the pixel, and each is that much smaller.
  int samples = 1;  // 1 .. kMostSamples
  float time = 0;   // in seconds
};

/// The colour of one sample. Called on several threads at once.
using SampleFunction = std::function<Vector(ChannelSample& sample)>;

/// The picture, whose values depend on nothing but the samples and the settings; nothing when the
/// task was cancelled. Row 0, v = 0, is at the top. Throws std::bad_alloc.
std::optional<Image> BakeFlat(const SampleFunction& colourAt, const FlatBakeSettings& settings,
                              const TaskOptions& options);

}  // namespace sorvanix::host
