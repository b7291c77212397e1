// Scenes: a camera, a tree of objects, and materials that lie on the objects through tags.
//
// Space is left-handed: x to the right, y up, z away from the viewer; a camera looks and a light
// shines along its own z axis. Preview objects are about 100 units in radius. After a change call
// Scene::Update(), which brings matrices and meshes up to date; a render reads only.
#pragma once

#include <sorvanix/host_scene.h>
#include <sorvanix/ids.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/scene/kept_members.h"
#include "host/scene/material.h"
#include "host/scene/mesh.h"
#include "host/scene/primitives.h"
#include "host/scene/transform.h"
#include "host/services/containers.h"
#include "host/services/handle.h"
#include "host/services/strings.h"

namespace sorvanix::host {

class Object;
class Scene;

/// The version of scene files that this program writes.
inline constexpr std::int32_t kSceneVersion = 1;

/// What hangs on an object and has a handle: its points, its polygons, its particles, its textures.
class Tag : public Handled<Tag, HostTag> {
 public:
  Tag(std::int32_t tagType, Object& owner) : type(tagType), object(&owner) {}
  virtual ~Tag() = default;
  Tag(const Tag&) = delete;
  Tag& operator=(const Tag&) = delete;

  std::int32_t type;  ///< TagTypePoints, ...
  Object* object;
};

/// How texture coordinates come about; the numbers are those of TextureTag::projection.
enum class Projection : std::int8_t {
  Sphere = 0,
  Cylinder = 1,
  Flat = 2,
  Cube = 3,
  Frontal = 4,
  Spatial = 5,
  Uvw = 6,
  ShrinkWrap = 7
};

/// Lays a material on an object. The last of several tags of one object lies on top.
class TextureTagNode : public Tag {
 public:
  explicit TextureTagNode(Object& owner) : Tag(TagTypeTexture, owner) {}

  std::weak_ptr<Material> material;  ///< empty: the object shows no material
  Projection projection = Projection::Uvw;
  std::int32_t uvwSet = 0;  ///< for Projection::Uvw; a set that the mesh lacks is no texture
  float offsetU = 0, offsetV = 0;
  float lengthU = 1, lengthV = 1;
  bool tile = true;
  bool mirrored = false;  ///< every second repetition of a bitmap is turned round
  /// Where the projection stands in the object's space; scale is half its size in units, so that
  /// the default reaches from -100 to 100. Tag coordinates of -1 to 1 are the projection's inside.
  Transform placement = {.scale = {100, 100, 100}};
  mutable std::unique_ptr<Container> settings;  ///< made for the module when it asks
  KeptMembers kept;
};

/// A null: only a place, for its children.
struct NullContent {};

/// A mesh from a file.
struct MeshContent {
  std::string file;                         ///< as written in the scene file
  std::shared_ptr<const PolygonMesh> mesh;  ///< never null after reading; may have no polygons
};

struct ParticleItem {
  Vector position = {0, 0, 0};  ///< in the object's space
  bool visible = true;
  bool alive = true;
  KeptMembers kept = {};
};

struct ParticleContent {
  std::vector<ParticleItem> particles;
};

enum class LightKind { Omni, Spot, Distant, Rectangle, Disc, Ambient };

/// A light at the origin of its object, shining along its z axis.
struct LightContent {
  LightKind kind = LightKind::Omni;
  Vector colour = {1, 1, 1};
  float intensity = 1;
  float contrast = 0;
  std::int32_t falloff = FalloffNone;
  float range = 500;
  float innerAngle = 20, outerAngle = 30;  ///< spot: degrees from the axis to the side
  float width = 100, height = 100;         ///< rectangle and disc: whole size along x and y
  bool shadows = true;
  bool diffuse = true, specular = true;
};

using ObjectContent =
    std::variant<NullContent, Primitive, MeshContent, ParticleContent, LightContent>;

/// One node of the tree. Objects stay where they are in memory: the module holds their handles.
class Object : public Handled<Object, HostObject> {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  /// Adds a child behind the others and answers it.
  Object& Add(std::unique_ptr<Object> child);
  /// Derives what is told below for this object; its parents must be up to date.
  void Update();

  Text name;
  ObjectContent content;
  Transform transform;
  bool visible = true;      ///< to the camera and to rays, with its children still shown
  std::string unknownKind;  ///< of a later program, by its name; the content is then that of a null
  KeptMembers kept;
  std::vector<std::unique_ptr<TextureTagNode>> textureTags;
  std::vector<std::unique_ptr<Object>> children;
  Object* parent = nullptr;
  Object* next = nullptr;  ///< the following sibling

  // What Update derives.
  Matrix world = kIdentityMatrix;              ///< object to world
  std::shared_ptr<const PolygonMesh> mesh;     ///< of primitives and meshes; else null
  Primitive builtFrom;                         ///< what the mesh of a primitive was made from
  std::vector<ParticleRecord> particles;       ///< of particle sets, in world space
  std::vector<std::unique_ptr<Tag>> dataTags;  ///< points and polygons of meshes, particles
};

struct Camera {
  Transform transform = {.position = {0, 0, -500}};  ///< scale is not used
  float fieldOfView = 36;                            ///< horizontal, in degrees, above 0, below 180
  std::int32_t width = 640, height = 480;            ///< of a picture, when nobody says otherwise
  KeptMembers kept;

  Matrix ToWorld() const noexcept;
};

class Scene : public Handled<Scene, HostDocument> {
 public:
  /// Brings world matrices, meshes of primitives, world particles and data tags up to date.
  /// Throws std::bad_alloc.
  void Update();

  /// Makes a material the scene's own.
  void Add(std::shared_ptr<Material> material);
  /// Lets a material of the scene go, off all objects; null when it is none of the scene's.
  std::shared_ptr<Material> Remove(const Material& material);

  /// Takes all objects and materials of another scene, behind its own. Throws std::bad_alloc, with
  /// part of them taken.
  void TakeOver(Scene& other);

  /// The first object of this name, parents before children; null when there is none.
  Object* FindObject(std::string_view name) noexcept;
  std::shared_ptr<Material> FindMaterial(std::string_view name) const noexcept;

  std::filesystem::path file;                       ///< where it was read from; empty for none
  std::vector<std::filesystem::path> imageFolders;  ///< searched for bitmaps after the scene's own
  std::int64_t version = kSceneVersion;  ///< of the format; later than ours with things unknown
  KeptMembers kept;
  Camera camera;
  Vector background = {0, 0, 0};  ///< the colour of rays that hit nothing
  Object root;                    ///< has no name and no content: its children are the scene's
  std::vector<std::shared_ptr<Material>> materials;
  TextureTagNode* activeTag = nullptr;  ///< the one the user selected
};

/// The object that follows in the order parents, children, siblings within the tree below `root`;
/// null behind the last. Begin with `root` itself, which is not visited again:
///     for (Object* o = Following(scene.root, scene.root); o; o = Following(*o, scene.root)) ...
Object* Following(const Object& object, const Object& root) noexcept;

/// The number by which shaders know the object's kind.
std::int32_t TypeOf(const Object& object) noexcept;

/// The light of an object with LightContent, in world space, as the contract tells lights.
LightRecord ToLightRecord(const Object& object) noexcept;

/// All lights of an updated scene, in the order of the tree.
std::vector<LightRecord> Lights(const Scene& scene);

/// The places of a texture tag's coordinates in world space: object.world times the placement.
Matrix TagToWorld(const TextureTagNode& tag) noexcept;

}  // namespace sorvanix::host
