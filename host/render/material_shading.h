// The colour of a ray: the surface it meets, lit and textured, and what shines through it or is
// mirrored in it.
//
// T. Whitted, "An improved illumination model for shaded display", 1980. Transparency goes straight
// on without refraction; surfaces throw whole shadows, however transparent they are.
#pragma once

#include "host/render/ray.h"
#include "host/render/render_materials.h"
#include "host/render/render_scene.h"
#include "host/render/shading_record.h"
#include "host/render/tracer.h"

namespace sorvanix::host {

/// How many surfaces a ray may meet one after the other.
inline constexpr int kDeepestRay = 8;

class MaterialShading {
 public:
  MaterialShading(const RenderScene& scene, const Tracer& tracer, const RenderMaterials& materials)
      : scene_(scene), tracer_(tracer), materials_(materials) {}

  /// The colour that comes along a ray. The record is the calling thread's own.
  Vec3 ColourAlong(const Ray& ray, ShadingRecord& record) const { return Follow(ray, record, {}); }

 private:
  /// What one surface sends back along a ray, and which shares come from elsewhere.
  struct Surface {
    Vec3 own;
    Vec3 through;  ///< share of what is behind
    Vec3 mirror;   ///< share of what is mirrored
    Vec3 mirrorNormal;
  };

  /// What a ray comes from: the eye, or a surface that it does not meet again.
  struct Departure {
    int depth = 0;  ///< surfaces met so far
    double nearest = 0;
    std::int32_t identity = 0;
  };

  Vec3 Follow(const Ray& ray, ShadingRecord& record, const Departure& from) const;
  Surface Shade(ShadingRecord& record, const RenderObject& object) const;

  const RenderScene& scene_;
  const Tracer& tracer_;
  const RenderMaterials& materials_;
};

}  // namespace sorvanix::host
