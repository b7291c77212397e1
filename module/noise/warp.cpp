// Unit noise at a point that signed noise displaces.
#include "module/noise/warp.h"

#include "module/noise/point.h"
#include "module/shell/host_render.h"

namespace sorvanix {

float AxisWarpNoise(float x, float y, float z, float time, float amount) noexcept {
  const double a = hostSignedNoise(Point(0, 0, z), time);
  const double b = hostSignedNoise(Point(0, y, 0), time);
  const double c = hostSignedNoise(Point(x, 0, 0), time);
  return hostUnitNoiseAt(Point(x + c * amount, y + b * amount, z + a * amount), time);
}

float OffsetWarpNoise3(float x, float y, float z, float time, float amount) noexcept {
  const double a = hostSignedNoise(Point(x + 17.0, y + 8.0, z - 4.0), time);
  const double b = hostSignedNoise(Point(x + 13.0, y - 1.0, z + 4.0), time);
  const double c = hostSignedNoise(Point(x - 2.0, y + 7.0, z + 8.0), time);
  return hostUnitNoiseAt(Point(x + c * amount, y + b * amount, z + a * amount), time);
}

float OffsetWarpNoise2(float x, float y, float time, float amount) noexcept {
  const double a = hostSignedNoise(Point(x + 13.0, y - 1.0, 4), time);
  const double b = hostSignedNoise(Point(x - 2.0, y + 7.0, 8), time);
  return hostUnitNoiseAt(Point(x + b * amount, y + a * amount, 0), time);
}

}  // namespace sorvanix
