// The maps from world space into the spaces that solid shaders read their point in.
#pragma once

#include "module/kit/matrix.h"
#include "module/shell/host_render.h"

namespace sorvanix {

/// World to the space of the object that was hit; changes nothing when the object is unknown or its
/// matrix cannot be inverted.
inline Matrix WorldToObject(const RenderContext& render) noexcept {
  return render.object == nullptr ? kIdentityMatrix : Invert(render.object->matrix);
}

/// World to camera space; changes nothing without a camera.
inline Matrix WorldToCamera(const RenderContext& render) noexcept {
  const Matrix* camera = hostCameraMatrix(&render);
  return camera == nullptr ? kIdentityMatrix : Invert(*camera);
}

/// `localHitPoint` to the space of the texture tag, in hundredths: a tag as large as a usual
/// object, 100 units, then has as many units as its object.
inline Matrix HitToTag(const TextureTag& tag) noexcept {
  return Multiply(ScaleMatrix({100, 100, 100}), tag.matrix2);
}

}  // namespace sorvanix
