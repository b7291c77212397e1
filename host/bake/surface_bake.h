// What bakes of planes and meshes have in common: the colour of one texel on a surface.
#pragma once

#include <sorvanix/records.h>

#include <cstdint>
#include <optional>
#include <string>

#include "host/images/image.h"
#include "host/render/channel_source.h"
#include "host/render/shading_record.h"

namespace sorvanix::host {

/// Whether the green of a normal map grows upwards in the picture or downwards.
enum class NormalConvention { OpenGl, DirectX };

struct SurfaceBakeSettings {
  int width = 512;   ///< 1 .. kLargestBake
  int height = 512;  ///< 1 .. kLargestBake
  int samples = 1;   ///< along each side of a texel: 1 .. kMostSamples
  float time = 0;    ///< in seconds
  bool filtering = true;
  /// Bakes the normals that a source in the bump channel bends, instead of its colours. A normal is
  /// stored as 0.5 + 0.5 n in the tangent space of the coordinates: (0.5, 0.5, 1) is unbent.
  std::optional<NormalConvention> normalMap = std::nullopt;
};

/// How a bake went.
struct SurfaceBake {
  bool tookPart = true;        ///< false: the source refused the render, and there is no picture
  std::optional<Image> image;  ///< nothing when it was cancelled
};

/// The mean of samples squared, in the middles of their shares of the texel (x, y); `colourAt`
/// takes a place in texels.
template <class ColourAt>
Vec3 MeanOfSamples(int samples, int x, int y, ColourAt&& colourAt) {
  Vec3 sum;
  for (int j = 0; j < samples; ++j) {
    for (int i = 0; i < samples; ++i) {
      sum += colourAt(x + (i + 0.5) / samples, y + (j + 0.5) / samples);
    }
  }
  return sum / (static_cast<double>(samples) * samples);
}

inline void SetTexel(Image& image, int x, int y, const Vec3& colour) {
  const Vector narrow = colour.Narrow();
  float* const texel = image.rgb.data() + image.IndexOf(x, y);
  texel[0] = narrow.x;
  texel[1] = narrow.y;
  texel[2] = narrow.z;
}

/// The bent normal of a record as a colour of a normal map.
Vec3 EncodeNormal(const ShadingRecord& record, NormalConvention convention) noexcept;

/// The code of a unit vector along the normal of another code, which may be a mean of several.
Vec3 Renormalised(const Vec3& code) noexcept;

/// Samples the source once at the record's surface: the colour, or the encoded normal.
Vec3 SampleTexel(ShadingRecord& record, ChannelSource& source,
                 const std::optional<NormalConvention>& normalMap) noexcept;

}  // namespace sorvanix::host
