#include "host/render/material_shading.h"

#include "host/render/material_layer.h"

namespace sorvanix::host {

namespace {

/// A ray that goes on from a surface does not meet that surface again.
constexpr double kLeaveSurface = 1e-3;

bool IsOutsideTile(const TextureTag& tag, const Vec3& uvw) {
  const bool tiles = (tag.flags & 1) != 0;
  return !tiles && !(uvw.x >= 0 && uvw.x <= 1 && uvw.y >= 0 && uvw.y <= 1);
}

}  // namespace

Vec3 MaterialShading::Follow(const Ray& ray, ShadingRecord& record, int depth,
                             double nearest) const {
  if (depth == kDeepestRay) return scene_.background;
  const auto hit = tracer_.Intersect(ray.origin, ray.direction, nearest);
  if (!hit) return scene_.background;

  const RenderObject& object = scene_.objects[hit->object];
  const SurfacePoint at = object.surface.At(hit->triangle, hit->b, hit->c);
  const Footprint footprint = FootprintAt(ray, Length(at.point - ray.origin), at.faceNormal);
  BeginSample(record, {.surface = &object.surface,
                       .at = at,
                       .eye = ray.origin,
                       .direction = ray.direction,
                       .footprint = footprint,
                       .identity = object.IdentityOf(at.polygon),
                       .object = &object.record});
  // The record is filled anew farther on: only what is in `surface` counts from here.
  const Surface surface = Shade(record, object);
  Vec3 colour = surface.own;
  if (!IsBlack(surface.mirror)) {
    colour += surface.mirror * Follow(Mirror(ray, at.point, footprint, surface.mirrorNormal),
                                      record, depth + 1, kLeaveSurface);
  }
  if (!IsBlack(surface.through)) {
    colour += surface.through *
              Follow(PassOn(ray, at.point, footprint), record, depth + 1, kLeaveSurface);
  }
  return colour;
}

MaterialShading::Surface MaterialShading::Shade(ShadingRecord& record,
                                                const RenderObject& object) const {
  Surface surface;
  double rest = 1;  // what the materials so far leave free
  bool isCovered = false;
  const auto add = [&](const RenderMaterial& material) {
    const MaterialLayer layer = ShadeLayer(material, record);
    const double share = rest * layer.cover;
    if (IsBlack(surface.mirror)) surface.mirrorNormal = layer.normal;
    surface.own += layer.own * share;
    surface.through += layer.through * share;
    surface.mirror += layer.mirror * share;
    rest -= share;
    isCovered = true;
  };
  for (const RenderTag& tag : object.tags) {
    const auto uv = FrameOfTag(record, tag.record, tag.uvwSet);
    if (!uv || IsOutsideTile(tag.record, uv->uvw)) continue;
    LayTexture(record, &tag.record, *uv, tag.uvwSet);
    add(materials_[tag.material]);
    if (!(rest > 0)) break;
  }
  if (!isCovered) add(RenderMaterials::Plain());
  if (rest > 0) surface.through += Vec3(rest, rest, rest);
  return surface;
}

}  // namespace sorvanix::host
