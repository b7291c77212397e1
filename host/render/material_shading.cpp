#include "host/render/material_shading.h"

#include "host/render/material_layer.h"

namespace sorvanix::host {

namespace {

/// A ray that goes on from a polygon does not meet it again, nor its neighbours within this share
/// of the largest coordinate: sixteen times what floats tell apart, at every size of scene.
constexpr double kLeaveSurface = 2e-6;

bool IsOutsideTile(const TextureTag& tag, const Vec3& uvw) {
  const bool tiles = (tag.flags & 1) != 0;
  return !tiles && !(uvw.x >= 0 && uvw.x <= 1 && uvw.y >= 0 && uvw.y <= 1);
}

}  // namespace

Vec3 MaterialShading::Follow(const Ray& ray, ShadingRecord& record, const Departure& from) const {
  if (from.depth == kDeepestRay) return scene_.background;
  const auto hit = tracer_.Intersect(ray.origin, ray.direction, from.nearest, from.identity);
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
  const Departure next = {
      .depth = from.depth + 1,
      .nearest = kLeaveSurface * object.surface.LargestCoordinate(hit->triangle),
      .identity = object.IdentityOf(at.polygon)};
  Vec3 colour = surface.own;
  if (!IsBlack(surface.mirror)) {
    colour +=
        surface.mirror *
        Follow(Mirror(ray, at.point, footprint, surface.mirrorNormal, at.faceNormal), record, next);
  }
  if (!IsBlack(surface.through)) {
    colour += surface.through * Follow(PassOn(ray, at.point, footprint), record, next);
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
