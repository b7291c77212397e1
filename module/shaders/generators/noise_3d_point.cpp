// The four points of a sample by space, or in the frame of the object; and their extent.
#include "module/shaders/generators/noise_3d_point.h"

#include "module/kit/vector.h"
#include "module/shaders/generators/object_frame.h"
#include "module/shaders/sample_points.h"

namespace sorvanix {

namespace {

// Noise units across the unit square, and per unit of an object's frame.
constexpr float kUnitsPerSquare = 12.8f;
constexpr float kUnitsPerFrame = 0.02f;

Vector AxisScales(const Noise3DBlock& block) noexcept {
  return {block.scaleX, block.scaleY, block.scaleZ};
}

Vector Scales(const Noise3DBlock& block) noexcept {
  return Scale(block.globalScale, AxisScales(block));
}

float FilterWidth(const Vector& extent, const RenderContext& render) noexcept {
  if (render.filteringOn == 0) return 0;
  return static_cast<float>(SumOfMagnitudes(extent) * render.filterScale);
}

// --- the spaces ---

Vector InPicture(const Vector& inCamera) noexcept {
  if (inCamera.z == 0) return {};
  return {static_cast<float>(double{inCamera.x} / inCamera.z * 0.1),
          static_cast<float>(double{inCamera.y} / inCamera.z * 0.1), 0};
}

SamplePoints InTexture(const RenderContext& render, const FootprintBlock* own, bool nested,
                       const SamplePoints& world) noexcept {
  if (render.textureTag == nullptr) return world;
  if (nested) return {own->footprint[0], own->footprint[1], own->footprint[2], own->footprint[3]};
  return PointsInTag(render, *render.textureTag);
}

SamplePoints InSpace(std::int32_t space, const RenderContext& render, const FootprintBlock* own,
                     bool nested) noexcept {
  const SamplePoints world = WorldPoints(render);
  const auto inCamera = [&render, &world] {
    return EachPoint(world,
                     [map = WorldToCamera(render)](const Vector& p) { return Transform(p, map); });
  };
  switch (space) {
    case SpaceTexture:
      return InTexture(render, own, nested, world);
    case SpaceObject:
      return EachPoint(
          world, [map = WorldToObject(render)](const Vector& p) { return Transform(p, map); });
    case SpaceCamera:
      return inCamera();
    case SpaceScreen:
      return EachPoint(inCamera(), [](const Vector& p) { return Scale(0.1f, p); });
    case SpaceRaster:
      return EachPoint(inCamera(), InPicture);
    default:
      return world;
  }
}

NoisePlace PlaceInFrame(const Noise3DBlock& block, const ChannelSample& sample) noexcept {
  const RenderContext& render = *sample.render;
  const Vector inFrame = block.useSphereFrame != 0 ? PointOnSphere(sample.uvw)
                                                   : PointInObjectFrame(render.hitPoint, render);
  const Vector moved = Add(Scale(kUnitsPerFrame, inFrame), Scale(block.velocity, sample.time));
  const auto blur = static_cast<float>(Blur(sample) * kUnitsPerFrame);
  return {Product(moved, Scales(block)), FilterWidth({blur, blur, blur}, render)};
}

}  // namespace

NoisePlace PlaceOnSquare(const Noise3DBlock& block, const ChannelSample& sample) noexcept {
  // One factor after the other, unlike in a render: the product of the scales alone could overflow
  // where the point does not.
  const Vector point = Scale(block.globalScale, Scale(kUnitsPerSquare, sample.uvw));
  return {Product(point, AxisScales(block)), static_cast<float>(Blur(sample) * 10)};
}

NoisePlace PlaceOnSurface(const Noise3DBlock& block, const ChannelSample& sample,
                          const FootprintBlock* own, bool nested) noexcept {
  const RenderContext& render = *sample.render;
  if (block.useObjectFrame != 0 && HasObjectFrame(render)) return PlaceInFrame(block, sample);

  const Vector motion = Scale(block.velocity, sample.time);
  const Vector offset = own == nullptr ? Vector{} : own->pointOffset;
  const auto toNoise = [&, scales = Scales(block)](const Vector& p) {
    return Product(Add(Add(p, motion), offset), scales);
  };
  const SamplePoints points = EachPoint(InSpace(block.space, render, own, nested), toNoise);
  return {points[0], FilterWidth(HalfExtent(points, sample), render)};
}

}  // namespace sorvanix
