// The hit in texture, object, world, camera and screen space.
#include "module/shaders/generators/gradient_point.h"

#include "module/kit/vector.h"
#include "module/shaders/sample_points.h"

namespace sorvanix {

namespace {

// Only this space is told of taps. Elsewhere the gradient stays even under a filter's bump:
// deliberate.
GradientHit HitInTexture(const RenderContext& render, const FootprintBlock* own,
                         bool fromSlot) noexcept {
  if (render.textureTag == nullptr) return {render.hitPoint};
  if (fromSlot) return {own->footprint[0], own->tap};
  return {Transform(render.localHitPoint, HitToTag(*render.textureTag))};
}

// Pixels and depth; the zero vector without a camera.
Vector HitOnScreen(const RenderContext& render) noexcept {
  const Matrix* camera = hostCameraMatrix(&render);
  if (camera == nullptr) return {};
  return hostProjectToScreen(&render, Transform(render.hitPoint, Invert(*camera)));
}

// From the first pixel's centre to the last one's.
Vector HitInPicture(const RenderContext& render, const PictureSize& size) noexcept {
  const Vector pixel = HitOnScreen(render);
  return {static_cast<float>(pixel.x / (double(size.width) - 1)),
          static_cast<float>(pixel.y / (double(size.height) - 1)), 0};
}

}  // namespace

GradientHit HitInSpace(const GradientBlock& block, const RenderContext& render,
                       const FootprintBlock* own, bool fromSlot) noexcept {
  const auto displaced = [own](const Vector& point) -> GradientHit {
    return {own == nullptr ? point : Add(point, own->pointOffset)};
  };
  switch (block.space) {
    case GradientTexture:
      return HitInTexture(render, own, fromSlot);
    case GradientObject:
      return {Transform(render.hitPoint, WorldToObject(render))};
    case GradientCamera:
      return displaced(Transform(render.hitPoint, WorldToCamera(render)));
    case GradientScreen:
      return displaced(HitOnScreen(render));
    case GradientUnitScreen: {
      const PictureSize size = hostPictureSize(&render);
      // A picture of one pixel a side has no extent to measure by.
      if (size.width <= 1 || size.height <= 1) return {{0.5f, 0.5f, 0}};
      return displaced(HitInPicture(render, size));
    }
    default:
      return displaced(render.hitPoint);
  }
}

}  // namespace sorvanix
