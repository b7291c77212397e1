// One search over neighbouring cells, for two and three dimensions and both sources of points.
#include "module/noise/cellular.h"

#include <cmath>

#include "module/noise/lattice.h"
#include "module/noise/point.h"
#include "module/noise/shaping.h"
#include "module/shell/host_render.h"

namespace sorvanix {

namespace {

/// Where a feature point lies in its cell: 0 to 1 along each axis.
struct Feature {
  double x, y, z;
};

/// A feature coordinate from the host's noise at a point that stands for the cell. The noise keeps
/// to the middle of its range, so 0.3 to 0.7 is spread over the whole cell. The scale differs from
/// 1 / (0.7 - 0.3) in its last bit.
double HostFeature(double x, double y, double z, float time) noexcept {
  const double noise = hostUnitNoiseAt(Point(x, y, z), time);
  return Clamp01((noise - 0.3f) * 2.5000002f);
}

/// Visits the cells around a point, x outermost, and keeps the two nearest feature points.
/// `featureOf(cx, cy, cz)` tells the feature of the cell with that centre. With one layer the
/// search is planar: z and the cells' cz are 0, and so is the z of the feature points.
template <int kLayers, class FeatureOf>
CellularPoints Search(double x, double y, double z, double jitter,
                      const FeatureOf& featureOf) noexcept {
  constexpr int kReach = kLayers / 2;
  const double baseX = std::floor(x) + 0.5;
  const double baseY = std::floor(y) + 0.5;
  const double baseZ = kLayers == 1 ? 0 : std::floor(z) + 0.5;

  CellularPoints nearest;
  nearest.f1 = nearest.f2 = 1000.0f;
  for (int i = -1; i <= 1; ++i) {
    for (int j = -1; j <= 1; ++j) {
      for (int k = -kReach; k <= kReach; ++k) {
        const double cx = i + baseX, cy = j + baseY, cz = k + baseZ;
        const Feature feature = featureOf(cx, cy, cz);
        const double px = (feature.x - 0.5) * jitter + cx;
        const double py = (feature.y - 0.5) * jitter + cy;
        const double pz = kLayers == 1 ? 0 : (feature.z - 0.5) * jitter + cz;
        const double dx = px - x, dy = py - y, dz = pz - z;
        // Narrowed before it is compared, so that equal distances are equal.
        const float distance = static_cast<float>(dx * dx + dy * dy + dz * dz);
        if (distance < nearest.f1) {
          nearest.f2 = nearest.f1;
          nearest.p2 = nearest.p1;
          nearest.f1 = distance;
          nearest.p1 = Point(px, py, pz);
        } else if (distance < nearest.f2) {
          nearest.f2 = distance;
          nearest.p2 = Point(px, py, pz);
        }
      }
    }
  }
  nearest.f1 = std::sqrt(nearest.f1);
  nearest.f2 = std::sqrt(nearest.f2);
  return nearest;
}

float Edge(const CellularPoints& points) noexcept {
  return static_cast<float>(static_cast<double>(points.f2) - points.f1);
}

/// The shift keeps the value from being drawn at the very point that placed the feature.
float Value(const CellularPoints& points) noexcept {
  return hostUnitNoise(Point(points.p1.x + 10.0, points.p1.y, points.p1.z));
}

}  // namespace

CellularPoints CellularSearch2(float x, float y, float time, float jitter) noexcept {
  return Search<1>(x, y, 0, jitter, [time](double cx, double cy, double) noexcept -> Feature {
    const double column = std::floor(cx), row = std::floor(cy);
    const double featureY = HostFeature(column + 20, row - 10, 0, time);
    const double featureX = HostFeature(column, row, 0, time);
    return {featureX, featureY, 0};
  });
}

CellularPoints CellularSearch3(float x, float y, float z, float time, float jitter) noexcept {
  return Search<3>(x, y, z, jitter, [time](double cx, double cy, double cz) noexcept -> Feature {
    const double column = std::floor(cx), row = std::floor(cy), layer = std::floor(cz);
    const double featureZ = HostFeature(column - 18, row - 16, layer + 23, time);
    const double featureY = HostFeature(column + 20, row - 10, layer + 20, time);
    const double featureX = HostFeature(column, row, layer, time);
    return {featureX, featureY, featureZ};
  });
}

CellularPoints CellularSearchHash2(float x, float y, float jitter) noexcept {
  return Search<1>(x, y, 0, jitter, [](double cx, double cy, double) noexcept -> Feature {
    const double featureY = HashCell2(static_cast<float>(cx + 20), static_cast<float>(cy - 10));
    const double featureX = HashCell2(static_cast<float>(cx), static_cast<float>(cy));
    return {featureX, featureY, 0};
  });
}

float CellularNearest2(float x, float y, float time, float jitter) noexcept {
  return CellularSearch2(x, y, time, jitter).f1;
}

float CellularNearest3(float x, float y, float z, float time, float jitter) noexcept {
  return CellularSearch3(x, y, z, time, jitter).f1;
}

float CellularSecond2(float x, float y, float time, float jitter) noexcept {
  return CellularSearch2(x, y, time, jitter).f2;
}

float CellularSecond3(float x, float y, float z, float time, float jitter) noexcept {
  return CellularSearch3(x, y, z, time, jitter).f2;
}

float CellularEdge2(float x, float y, float time, float jitter) noexcept {
  return Edge(CellularSearch2(x, y, time, jitter));
}

float CellularEdge3(float x, float y, float z, float time, float jitter) noexcept {
  return Edge(CellularSearch3(x, y, z, time, jitter));
}

float CellularValue2(float x, float y, float time, float jitter) noexcept {
  return Value(CellularSearch2(x, y, time, jitter));
}

float CellularValue3(float x, float y, float z, float time, float jitter) noexcept {
  return Value(CellularSearch3(x, y, z, time, jitter));
}

}  // namespace sorvanix
