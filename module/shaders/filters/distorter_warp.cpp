// The displacement of a Distorter, and the read at the displaced place.
#include "module/shaders/filters/distorter_warp.h"

#include "module/kit/remap.h"
#include "module/kit/vector.h"

namespace sorvanix {

namespace {

// How far a probe of the gradient moves the surface point, and the coordinate of a shader, for one
// unit of `gradientStep`.
constexpr double kProbeLength = 0.2;
constexpr double kShaderProbe = 0.01;

Vector ReadDrive(const DistorterReading& r) noexcept {
  return ReadInput(r.block.distortInput, r.sample, r.driveBlock.uvwPoint, r.sample.texFlags);
}

// The mean of the drive with its footprint and its coordinate moved. Leaves both where they were.
double ProbeDrive(const DistorterReading& r, const Vector& pointMove,
                  const Vector& uvwMove) noexcept {
  FootprintBlock& drive = r.driveBlock;
  const auto points = std::to_array(drive.footprint);
  const Vector uvwPoint = drive.uvwPoint;
  for (Vector& point : drive.footprint) AddInPlace(point, pointMove);
  AddInPlace(drive.uvwPoint, uvwMove);
  const double mean = Mean(ReadDrive(r));
  std::copy(points.begin(), points.end(), drive.footprint);
  drive.uvwPoint = uvwPoint;
  return mean;
}

// The rise of the drive's mean from behind to ahead.
double Slope(const DistorterReading& r, const Vector& axis, const Vector& uvwMove) noexcept {
  const Vector pointMove = Scale(static_cast<float>(r.block.gradientStep * kProbeLength), axis);
  const double behind = ProbeDrive(r, Scale(-1, pointMove), Scale(-1, uvwMove));
  const double ahead = ProbeDrive(r, pointMove, uvwMove);
  return ahead - behind;
}

void WarpAlongGradient(const DistorterReading& r) noexcept {
  const RenderContext& render = *r.sample.render;
  const SurfaceAxes axes =
      hostSurfaceAxes(&render, render.textureTag, render.hitPoint, render.baseNormal);

  const double probe = r.block.gradientStep;
  const auto toShader = static_cast<float>(probe * kShaderProbe);
  Vector alongU = {toShader, 0, 0};
  Vector alongV = {0, toShader, 0};
  if (hostChannelPluginId(r.block.distortInput) <= 0) {
    // Deliberate: without a shader all three components move, also the other axis'.
    const BumpStep& step = r.first.inputs.step[kDriveInput];
    const auto pixelU = static_cast<float>(probe * step.u);
    const auto pixelV = static_cast<float>(probe * step.v);
    alongU = {pixelU, pixelU, pixelU};
    alongV = {pixelV, pixelV, pixelV};
  }
  const auto gu = static_cast<float>(Slope(r, axes.u, alongU));
  const auto gv = static_cast<float>(Slope(r, axes.v, alongV));
  // Deliberate: the strength acts here and once more when the offsets are scaled.
  const float strength = r.block.strength;
  r.driveBlock.uvwOffset = Scale(Vector{gu, gv, 0}, strength);
  r.driveBlock.pointOffset = Scale(Add(Scale(gu, axes.u), Scale(gv, axes.v)), strength);
}

void Warp(const DistorterReading& r) noexcept {
  switch (r.block.warpType) {
    case DistorterDirect:
      r.driveBlock.pointOffset = r.driveBlock.uvwOffset = ReadDrive(r);
      break;
    case DistorterCentred:
      r.driveBlock.pointOffset = r.driveBlock.uvwOffset = OffsetAll(-0.5f, ReadDrive(r));
      break;
    case DistorterGradient:
      WarpAlongGradient(r);
      break;
    default:
      break;
  }
}

// The third component of uvwOffset stays as it is.
void ScaleOffsets(const DistorterBlock& block, FootprintBlock& drive) noexcept {
  constexpr double kPointScale = 100;
  const auto scaled = [&block](float scale, float value) {
    return double{scale} * block.strength * value;
  };
  const Vector scales = {block.scaleX, block.scaleY, block.scaleZ};
  drive.pointOffset =
      ByComponent([&](float scale, float value) { return scaled(scale, value) * kPointScale; },
                  scales, drive.pointOffset);
  drive.uvwOffset.x = static_cast<float>(scaled(block.scaleX, drive.uvwOffset.x));
  drive.uvwOffset.y = static_cast<float>(scaled(block.scaleY, drive.uvwOffset.y));
}

// Brings a moved coordinate back into the unit square, or to within a step of its border.
float IntoTile(const DistorterBlock& block, double coordinate, double step) noexcept {
  const double inside = block.tile != 0 ? Fraction(coordinate) : Limit(step, 1 - step, coordinate);
  return static_cast<float>(inside);
}

void FillImageBlock(const DistorterReading& r) noexcept {
  const FootprintBlock& drive = r.driveBlock;
  FootprintBlock& image = r.imageBlock;
  for (std::size_t i = 0; i < std::size(image.footprint); ++i) {
    image.footprint[i] = Add(drive.footprint[i], drive.pointOffset);
  }
  image.pointOffset = drive.pointOffset;
  image.uvwPoint = Add(drive.uvwPoint, drive.uvwOffset);
  if (!r.first.inputs.Aware(kImageInput)) {
    const BumpStep& step = r.first.inputs.step[kImageInput];
    image.uvwPoint.x = IntoTile(r.block, image.uvwPoint.x, step.u);
    image.uvwPoint.y = IntoTile(r.block, image.uvwPoint.y, step.v);
  }
  image.tap = TapNone;  // the point has been moved already
}

}  // namespace

Vector DistortAndRead(const DistorterReading& r) noexcept {
  Warp(r);
  ScaleOffsets(r.block, r.driveBlock);
  FillImageBlock(r);

  // A shader that reads the render itself, and not a slot, sees the moved place too.
  RenderContext& render = *r.sample.render;
  const Vector uvw = r.sample.uvw;
  const Vector hitPoint = render.hitPoint;
  const Vector localHitPoint = render.localHitPoint;
  AddInPlace(render.hitPoint, r.driveBlock.pointOffset);
  AddInPlace(render.localHitPoint, r.driveBlock.pointOffset);
  AddInPlace(r.sample.uvw, r.driveBlock.uvwOffset);
  const Vector colour =
      ReadInput(r.block.input, r.sample, r.imageBlock.uvwPoint, r.sample.texFlags);
  r.sample.uvw = uvw;
  render.hitPoint = hitPoint;
  render.localHitPoint = localHitPoint;
  return colour;
}

}  // namespace sorvanix
