#include "host/render/lights.h"

#include <algorithm>
#include <array>
#include <limits>

namespace sorvanix::host {

namespace {

constexpr std::array<double, 4> kAreaFractions = {-0.75, -0.25, 0.25, 0.75};
constexpr double kAreaPoints = 16;

bool IsArea(const LightRecord& light) {
  return light.type == LightRectangle || light.type == LightDisc;
}

/// The share of a light's colour that is left at a distance. Nearer than a shadow ray's start the
/// distance has no meaning, and the inverse square would have no bound.
double FalloffAt(const LightRecord& light, double distance) {
  const double d = std::max(distance, kShadowOffset);
  switch (light.falloff) {
    case FalloffLinear:
      return light.range > 0 ? std::max(0.0, 1 - d / light.range) : 0;
    case FalloffInverseSquare:
      return (light.range / d) * (light.range / d);
    default:
      return 1;
  }
}

/// 1 inside a spot's inner cone, 0 outside its outer one, and a smooth step of the angle between.
double ConeShare(const LightRecord& light, const Vec3& toLight) {
  const double cosine = std::clamp(-Dot(toLight, Normalised(Vec3(light.direction))), -1.0, 1.0);
  const double angle = std::acos(cosine);
  if (angle <= light.innerAngle) return 1;
  if (angle >= light.outerAngle) return 0;
  const double t = (light.outerAngle - angle) / (double{light.outerAngle} - light.innerAngle);
  return t * t * (3 - 2 * t);
}

bool InShadow(const LitPoint& at, const Vec3& toLight, double distance) {
  const bool isInFront = Dot(at.normal, toLight) >= 0;
  Vec3 start = at.point + at.normal * (isInFront ? kShadowOffset : -kShadowOffset);
  if (isInFront && Dot(at.normal, at.lift) > 0) start += at.lift;
  return at.shadows->Blocks(start, toLight, distance, at.identity);
}

/// Whose light counts: shadows of what does not are never asked for.
enum class Side { Both, Front };

/// A light of any kind but ambient, standing at `position`.
ArrivingLight SampleFrom(const LightRecord& light, const Vec3& position, const LitPoint& at,
                         Side side) {
  ArrivingLight arriving;
  double distance = std::numeric_limits<double>::infinity();
  double share = 1;
  if (light.type == LightDistant) {
    arriving.direction = -Normalised(Vec3(light.direction));
  } else {
    const Vec3 way = position - at.point;
    distance = Length(way);
    arriving.direction = Normalised(way, at.normal);
    share = FalloffAt(light, distance);
    if (light.type == LightSpot) share *= ConeShare(light, arriving.direction);
  }
  arriving.colour = Vec3(light.colour) * share;
  arriving.arrives = !IsBlack(arriving.colour);
  const bool counts = side == Side::Both || Dot(at.normal, arriving.direction) > 0;
  if (arriving.arrives && counts && at.shadows != nullptr && light.castShadows != 0 &&
      InShadow(at, arriving.direction, distance)) {
    arriving.colour = {};
  }
  return arriving;
}

/// Calls `add` with the light from each of the points that stand for an area light.
template <class Add>
void ForEachAreaPoint(const LightRecord& light, const LitPoint& at, Add&& add) {
  for (const double w : kAreaFractions) {
    for (const double u : kAreaFractions) {
      const Vec3 position = Vec3(light.position) + Vec3(light.areaU) * u + Vec3(light.areaW) * w;
      const ArrivingLight arriving = SampleFrom(light, position, at, Side::Front);
      if (arriving.arrives) add(arriving);
    }
  }
}

double Sharpened(double cosine, const LightRecord& light) {
  return light.contrast == 0 ? cosine : std::pow(cosine, std::exp(-double{light.contrast}));
}

/// The mirror cosine raised to the exponent. Limited to 1, so that no exponent gives infinity.
double Highlight(const Vec3& normal, double cosine, const Vec3& toLight, const Vec3& view,
                 double exponent) {
  const Vec3 mirrored = normal * (2 * cosine) - toLight;
  return std::pow(std::clamp(Dot(mirrored, view), 0.0, 1.0), exponent);
}

}  // namespace

ArrivingLight SampleLight(const LightRecord& light, const LitPoint& at) noexcept {
  if (light.ambient != 0) return {true, Vec3(light.colour), at.normal};
  return SampleFrom(light, Vec3(light.position), at, Side::Both);
}

void Illuminate(std::span<const LightRecord> lights, const LitPoint& at, const Vec3& view,
                double exponent, LightSum& sum) noexcept {
  if (!(exponent >= 0)) exponent = 0;  // NaN too
  const bool highlights = !IsBlack(view);
  const auto add = [&](const LightRecord& light, const ArrivingLight& arriving, double share) {
    const double cosine = Dot(at.normal, arriving.direction);
    if (!(cosine > 0)) return;
    if (light.noDiffuse == 0) sum.diffuse += arriving.colour * (share * Sharpened(cosine, light));
    if (light.noSpecular != 0 || !highlights) return;
    sum.specular += arriving.colour *
                    (share * Highlight(at.normal, cosine, arriving.direction, view, exponent));
  };
  for (const LightRecord& light : lights) {
    if (light.ambient != 0) {
      sum.diffuse += Vec3(light.colour);
    } else if (IsArea(light)) {
      ForEachAreaPoint(
          light, at, [&](const ArrivingLight& arriving) { add(light, arriving, 1 / kAreaPoints); });
    } else {
      const ArrivingLight arriving = SampleFrom(light, Vec3(light.position), at, Side::Front);
      if (arriving.arrives) add(light, arriving, 1);
    }
  }
}

Vec3 AreaLightDiffuse(const LightRecord& light, const LitPoint& at) noexcept {
  Vec3 sum;
  ForEachAreaPoint(light, at, [&](const ArrivingLight& arriving) {
    const double cosine = Dot(at.normal, arriving.direction);
    if (cosine > 0) sum += arriving.colour * Sharpened(cosine, light);
  });
  return sum / kAreaPoints;
}

}  // namespace sorvanix::host
