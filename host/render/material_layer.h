// One material at one point of a surface: what its channels make of the light there.
#pragma once

#include "host/render/render_materials.h"
#include "host/render/shading_record.h"

namespace sorvanix::host {

struct MaterialLayer {
  double cover = 1;  ///< by the alpha channel; the rest is not there
  Vec3 own;          ///< light that it sends to the eye by itself
  Vec3 through;      ///< share of what is behind
  Vec3 mirror;       ///< share of what is mirrored
  Vec3 normal;       ///< bent by the bump channel; towards the eye
};

/// Shades the record's surface with a texture that was laid on it. The bump channel comes first:
/// all others see the normal it bent. On the back of a face the material is lit as on its front;
/// its shaders still see the normal of the front.
MaterialLayer ShadeLayer(const RenderMaterial& material, ShadingRecord& record) noexcept;

}  // namespace sorvanix::host
