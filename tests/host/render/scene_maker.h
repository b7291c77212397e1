// Small scenes for tests of the renderer.
#pragma once

#include <memory>
#include <utility>

#include "host/bake/parallel_tiles.h"
#include "host/channels/channel_link.h"
#include "host/render/renderer.h"
#include "host/scene/scene.h"

namespace sorvanix::host {

inline Object& AddObject(Scene& scene, ObjectContent content, const Transform& transform = {}) {
  auto object = std::make_unique<Object>();
  object->content = std::move(content);
  object->transform = transform;
  return scene.root.Add(std::move(object));
}

/// A wall through a place, towards the viewer at -z.
inline Object& AddWall(Scene& scene, const Vector& position = {}, float size = 2000) {
  Primitive plane = DefaultPrimitive(PrimitiveShape::Plane);
  plane.width = plane.height = plane.depth = size;
  // The plane lies in x and z and faces up: pitch it upright.
  return AddObject(scene, plane, {.position = position, .rotation = {0, 90, 0}});
}

inline Object& AddLight(Scene& scene, LightKind kind, const Transform& transform = {}) {
  LightContent light;
  light.kind = kind;
  return AddObject(scene, light, transform);
}

/// A material without channels on an object, above those that it has.
inline Material& AddMaterial(Scene& scene, Object& object) {
  scene.materials.push_back(std::make_shared<Material>());
  object.textureTags.push_back(std::make_unique<TextureTagNode>(object));
  object.textureTags.back()->material = scene.materials.back();
  return *scene.materials.back();
}

inline MaterialChannel& Enable(Material& material, int channel, const Vector& colour = {1, 1, 1}) {
  MaterialChannel& enabled = material.channels[static_cast<std::size_t>(channel)];
  enabled.on = true;
  enabled.colour = colour;
  return enabled;
}

/// A material that shines in a colour of its own.
inline Material& AddGlow(Scene& scene, Object& object, const Vector& colour) {
  Material& material = AddMaterial(scene, object);
  Enable(material, ChannelLuminance, colour);
  return material;
}

inline Image Render(Scene& scene, RenderSettings settings = {.width = 9, .height = 9, .samples = 1},
                    int threads = 1) {
  scene.Update();
  return *RenderPicture(scene, settings, {.threads = threads})->image;
}

inline Vector At(const Image& image, int x, int y) {
  const float* pixel = image.rgb.data() + image.IndexOf(x, y);
  return {pixel[0], pixel[1], pixel[2]};
}

/// The colour in the middle of a picture of odd width and height: of the ray straight on.
inline Vector Middle(const Image& image) { return At(image, image.width / 2, image.height / 2); }

}  // namespace sorvanix::host
