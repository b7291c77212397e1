// The seven ways to brush a surface.
#include "module/shaders/surface/lumas_brushing.h"

#include <cmath>
#include <iterator>

#include "module/kit/matrix.h"
#include "module/kit/vector.h"
#include "module/shaders/surface/disc_pattern.h"
#include "module/shell/host_render.h"

namespace sorvanix {

namespace {

constexpr Vector kAxisX = {1, 0, 0};
constexpr Vector kAxisY = {0, 1, 0};
constexpr Vector kAxisZ = {0, 0, 1};

// A point of the surface as the modes see it.
struct Place {
  const LumasBlock& block;
  const Matrix& slotToWorld;
  const Matrix& tagToWorld;
  const Matrix& worldToTag;
  Vector hit;     // in world space
  Vector q;       // the hit in the frame of the slot
  Vector normal;  // in the frame of the tag, unit length

  // A direction of the tag's frame as a unit vector in world space.
  Vector ToWorld(const Vector& direction) const noexcept {
    return Normalized(Rotate(direction, tagToWorld));
  }
};

// A brushing, and where the noise of its scratches is to be read.
struct Stroke {
  Vector direction;
  Vector noisePoint;
  float noiseTime;
};

Vector Stretched(const Vector& v, double x, double y, double z) noexcept {
  return {static_cast<float>(v.x * x), static_cast<float>(v.y * y), static_cast<float>(v.z * z)};
}

// A frame on the surface: a tangent, the normal, and across both. The tangent is perpendicular to
// `usual`, or to `steep` where the normal nearly runs along `usual`.
struct Frame {
  Vector tangent, normal, across;

  static Frame On(const Vector& normal, double alongUsual, const Vector& usual,
                  const Vector& steep) noexcept {
    constexpr double kNearlyAlong = 0.707;
    const Vector& axis = std::fabs(alongUsual) >= kNearlyAlong ? steep : usual;
    const Vector tangent = Normalized(Cross(axis, normal));
    return {tangent, normal, Cross(normal, tangent)};
  }
  // The axes are perpendicular unit vectors, so the inverse is the transpose.
  Vector Into(const Vector& p) const noexcept {
    return {Dot(p, tangent), Dot(p, normal), Dot(p, across)};
  }
  Vector OutOf(const Vector& v) const noexcept {
    return Rotate(v, {{0, 0, 0}, tangent, normal, across});
  }
};

// --- straight brushing: scratches are long along it, and short across ---

struct ScratchFactors {
  double x, other;
};
ScratchFactors StraightScratches(const LumasBlock& block, double shortening) noexcept {
  const double alongBrushing = block.scratchScaleV * shortening;
  const double acrossBrushing = block.scratchScaleU;
  if (block.anisotropyY < block.anisotropyX) return {alongBrushing, acrossBrushing};
  return {acrossBrushing, alongBrushing};
}
constexpr double kScratchesPerUnit = 500;

Stroke TagAxis(const Place& place) noexcept {
  const ScratchFactors f = StraightScratches(place.block, 0.001);
  const double n = kScratchesPerUnit;
  return {Normalized(place.tagToWorld.v2), Stretched(place.q, f.x * n, f.other * n, n), 0};
}

Stroke Tangent(const Place& place) noexcept {
  const Frame frame = Frame::On(place.normal, place.normal.y, kAxisY, kAxisX);
  const ScratchFactors f = StraightScratches(place.block, 0.05);
  const double n = kScratchesPerUnit;
  return {place.ToWorld(frame.tangent), Stretched(frame.Into(place.q), f.x * n, n, f.other * n), 0};
}

// --- round brushing: the distance to the centre, as time, makes the rings ---

Stroke AroundAxis(const Place& place) noexcept {
  const Vector around = Normalized(Cross(kAxisY, Normalized(place.q)));
  const Vector direction = Normalized(Cross(place.normal, around));
  const double u = place.block.scratchScaleU;
  const double n = 5 * u * place.block.scratchScaleV;
  return {Normalized(Rotate(direction, place.slotToWorld)), Stretched(place.q, n, n, n),
          static_cast<float>(Length(place.q) * u * 50)};
}

Stroke Radial(const Place& place, const Vector& outwards) noexcept {
  const double u = place.block.scratchScaleU;
  const double n = u * place.block.scratchScaleV * 100 * 0.01;
  return {place.ToWorld(Normalized(outwards)), Stretched(place.q, n, n, n),
          static_cast<float>(Length(outwards) * u * 100)};
}

Stroke RadialSurface(const Place& place) noexcept {
  const Vector alongNormal = Scale(Dot(place.q, place.normal), place.normal);
  return Radial(place, Sub(place.q, alongNormal));
}

Stroke RadialPlanar(const Place& place) noexcept {
  return Radial(place, {place.q.x, place.q.y, 0});
}

// --- discs: each is brushed away from its own centre ---

Vector DiscPoint(const Place& place) noexcept {
  const double scale = place.block.anisotropyScale;
  const auto divide = [scale](double v) { return v / scale; };
  return Transform(ByComponent(divide, place.hit), place.worldToTag);
}

Disc DiscOf(const LumasBlock& block, const Vector& p) noexcept {
  return DiscAt(p, block.scratchScaleU * 0.5f, block.scratchScaleV * 0.5f);
}

// A direction in the plane of the discs as one of the xz plane.
Vector LaidDown(const Disc& disc) noexcept { return {disc.fromCentre.x, 0, disc.fromCentre.y}; }

Stroke DiscsSurface(const Place& place) noexcept {
  const Frame frame = Frame::On(place.normal, place.normal.z, kAxisZ, kAxisX);
  const Vector p = frame.Into(DiscPoint(place));
  const Disc disc = DiscOf(place.block, {p.x, p.z, p.y});
  return {place.ToWorld(frame.OutOf(LaidDown(disc))), disc.noisePoint, disc.noiseTime};
}

// The tag's turn is applied twice: deliberate, materials are made for it.
Stroke DiscsPlanar(const Place& place) noexcept {
  const Disc disc = DiscOf(place.block, DiscPoint(place));
  return {place.ToWorld(Rotate(LaidDown(disc), place.tagToWorld)), disc.noisePoint, disc.noiseTime};
}

// In the order of AnisotropyMode.
constexpr Stroke (*kModes[])(const Place&) noexcept = {
    TagAxis, Tangent, AroundAxis, RadialSurface, DiscsSurface, RadialPlanar, DiscsPlanar};
static_assert(std::size(kModes) == AnisoDiscsPlanar + 1);

double ScratchAt(const LumasBlock& block, const Stroke& stroke) noexcept {
  constexpr float kOctaves = 3;
  constexpr std::int32_t kSigned = 0;
  if (block.scratchActive == 0) return 0;
  return double{block.scratchAmplitude} *
         hostTurbulence(stroke.noisePoint, stroke.noiseTime, kOctaves, kSigned);
}

}  // namespace

std::optional<Brushing> BrushingAt(const LumasBlock& block, const LumasSlot& slot,
                                   const RenderContext& render) noexcept {
  const std::int32_t mode = block.anisotropyMode;
  if (mode < 0 || mode >= static_cast<std::int32_t>(std::size(kModes))) return std::nullopt;
  const TextureTag* tag = render.textureTag;
  const Matrix& tagToWorld = tag == nullptr ? kIdentityMatrix : tag->matrix1;
  const Matrix& worldToTag = tag == nullptr ? kIdentityMatrix : tag->matrix2;
  const Place place = {block,
                       slot.head.texMatrix,
                       tagToWorld,
                       worldToTag,
                       render.hitPoint,
                       Transform(render.hitPoint, slot.head.texInverse),
                       Normalized(Rotate(slot.surfaceNormal, worldToTag))};
  const Stroke stroke = kModes[mode](place);
  return Brushing{stroke.direction, ScratchAt(block, stroke)};
}

}  // namespace sorvanix
