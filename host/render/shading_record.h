// What a render thread tells shaders about the surface: the contract's RenderContext, and behind it
// what the shading services need to answer.
//
// One record for each thread, filled anew for every sample. A shader gets the address of the
// context; the services come back from it to the whole record.
#pragma once

#include <sorvanix/records.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

#include "host/render/lights.h"
#include "host/render/mesh_surface.h"
#include "host/render/ray.h"
#include "host/render/screen_view.h"
#include "host/render/uv_frame.h"

namespace sorvanix::host {

/// What is the same for all samples and threads of a render.
struct RenderFrame {
  std::int32_t threadCount = 1;
  std::int32_t pictureSize[2] = {0, 0};  ///< in pixels
  const ScreenView* view = nullptr;      ///< null: there is no camera
  std::span<const LightRecord> lights;
  const Occluder* occluder = nullptr;  ///< null: nothing throws a shadow
  float time = 0;                      ///< in seconds
  bool filtering = true;               ///< false: shaders act as if samples had no size
};

/// The surface at one sample, before any texture lies on it.
struct SurfaceSample {
  const MeshSurface* surface = nullptr;  ///< never null
  SurfacePoint at;
  Vec3 eye;        ///< where the ray began
  Vec3 direction;  ///< the ray's unit vector
  Footprint footprint;
  std::int32_t identity = 1;             ///< of the element, never 0
  const ObjectRecord* object = nullptr;  ///< null: unknown
};

struct ShadingRecord {
  RenderContext context = {};  // first: services get its address and want the record

  std::int32_t threadIndex = 0;
  const RenderFrame* frame = nullptr;
  SurfaceSample sample;  // as it was found: a shader may move the points of the context for a while
  RayRecord ray = {};
  UvwRecord polygon = {};
  UvFrame uv;
  std::size_t uvwSet = 0;

  // The four points of the last texture set-up, and the same points in world space.
  std::array<Vector, 4> preparedPoint = {};
  std::array<Vec3, 4> preparedWorld = {};
  bool isPrepared = false;

  static ShadingRecord* From(RenderContext* context) noexcept {
    return reinterpret_cast<ShadingRecord*>(context);
  }
  static const ShadingRecord* From(const RenderContext* context) noexcept {
    return reinterpret_cast<const ShadingRecord*>(context);
  }
};
static_assert(std::is_standard_layout_v<ShadingRecord> && offsetof(ShadingRecord, context) == 0);

/// A record for each thread of a frame, which must outlive them.
std::vector<ShadingRecord> MakeRecords(const RenderFrame& frame);

/// Takes up a new sample of the record's frame: fills every field of the context that does not
/// depend on a texture. The surface has no tag, and coordinates of 0.
void BeginSample(ShadingRecord& record, const SurfaceSample& sample) noexcept;

/// How a tag's coordinates lie at the sample. A surface without the set of its own that the tag
/// wants has coordinates of 0, so that solid shaders still show; nothing when a projection lacks a
/// camera.
std::optional<UvFrame> FrameOfTag(const ShadingRecord& record, const TextureTag& tag,
                                  std::size_t uvwSet);

/// Lays a texture on the sample's surface: tag, coordinates, tangents, polygon. Also undoes what a
/// shader changed of these.
void LayTexture(ShadingRecord& record, const TextureTag* tag, const UvFrame& uv,
                std::size_t uvwSet) noexcept;

/// The four points of the sample: the hit and three corners of its footprint.
std::array<Vec3, 4> SamplePoints(const SurfaceSample& sample) noexcept;

/// A sample of one channel at the record's surface, by its present bumpNormal.
ChannelSample SampleAt(ShadingRecord& record) noexcept;

}  // namespace sorvanix::host
