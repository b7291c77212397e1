// A scene made ready for a render: what the renderer reads on all its threads, and never writes.
#pragma once

#include <sorvanix/records.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "host/render/mesh_surface.h"
#include "host/render/screen_view.h"
#include "host/render/vec3.h"
#include "host/scene/scene.h"

namespace sorvanix::host {

/// A material on an object.
struct RenderTag {
  TextureTag record = {};
  std::size_t material = 0;  ///< of RenderScene::materials
  std::size_t uvwSet = 0;
};

struct RenderObject {
  MeshSurface surface;
  ObjectRecord record = {};
  std::vector<RenderTag> tags;     ///< the uppermost first; those without a material left out
  std::int32_t firstIdentity = 1;  ///< of its polygon 0; polygons count on from there

  std::int32_t IdentityOf(std::int32_t polygon) const noexcept { return firstIdentity + polygon; }
};

struct RenderScene {
  ScreenView view;
  Vec3 background;
  std::vector<LightRecord> lights;
  std::vector<RenderObject> objects;
  std::vector<std::shared_ptr<Material>> materials;  ///< those on objects, each once

  /// Of an updated scene. It refers to the scene's objects, which must stay; nothing else of the
  /// scene is looked at later. Identities are unique in the scene and above 0.
  static RenderScene Prepare(Scene& scene, std::int32_t width, std::int32_t height);
};

/// The contract's record of a texture tag.
TextureTag ToRecord(const TextureTagNode& tag) noexcept;

}  // namespace sorvanix::host
