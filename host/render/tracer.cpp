#include "host/render/tracer.h"

#include <embree3/rtcore.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace sorvanix::host {

namespace {

constexpr const char* kConfiguration = "isa=avx2,threads=1,set_affinity=0";

struct ReleaseDevice {
  void operator()(RTCDevice device) const noexcept { rtcReleaseDevice(device); }
};
struct ReleaseScene {
  void operator()(RTCScene scene) const noexcept { rtcReleaseScene(scene); }
};
using DevicePointer = std::unique_ptr<RTCDeviceTy, ReleaseDevice>;
using ScenePointer = std::unique_ptr<RTCSceneTy, ReleaseScene>;

/// A question to Embree, with what its filter needs.
struct Question {
  RTCIntersectContext context;  // first: Embree hands its address to the filter
  const RenderScene* scene;
  std::int32_t identity;
};

/// Passes over hits on the element that the ray started from.
void SkipIdentity(const RTCFilterFunctionNArguments* arguments) {
  const auto* question = reinterpret_cast<const Question*>(arguments->context);
  const unsigned object = RTCHitN_geomID(arguments->hit, 1, 0);
  const unsigned triangle = RTCHitN_primID(arguments->hit, 1, 0);
  const RenderObject& hit = question->scene->objects[object];
  const std::int32_t polygon = hit.surface.Triangles()[triangle].polygon;
  if (hit.IdentityOf(polygon) == question->identity) arguments->valid[0] = 0;
}

Question Ask(const RenderScene& scene, std::int32_t identity) {
  Question question = {.context = {}, .scene = &scene, .identity = identity};
  rtcInitIntersectContext(&question.context);
  if (identity != 0) question.context.filter = SkipIdentity;
  return question;
}

RTCRay ToRay(const Vec3& origin, const Vec3& direction, double nearest, double farthest) {
  const Vector o = origin.Narrow(), d = direction.Narrow();
  RTCRay ray = {};
  ray.org_x = o.x;
  ray.org_y = o.y;
  ray.org_z = o.z;
  ray.dir_x = d.x;
  ray.dir_y = d.y;
  ray.dir_z = d.z;
  ray.tnear = static_cast<float>(nearest);
  ray.tfar = static_cast<float>(farthest);
  ray.mask = 0xffffffffu;
  return ray;
}

/// Embree takes no rays beyond this, and none that are not numbers.
bool IsValid(const RTCRay& ray) {
  const auto isWithin = [](float value) { return std::abs(value) <= 1e18f; };
  return isWithin(ray.org_x) && isWithin(ray.org_y) && isWithin(ray.org_z) && isWithin(ray.dir_x) &&
         isWithin(ray.dir_y) && isWithin(ray.dir_z) && !std::isnan(ray.tfar);
}

/// Adds a surface under the given id; false when there is no memory.
bool AddSurface(RTCDevice device, RTCScene scene, const MeshSurface& surface, unsigned id) {
  const auto& points = surface.Points();
  const auto& triangles = surface.Triangles();
  RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
  if (geometry == nullptr) return false;
  void* vertices = rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                           sizeof(Vector), points.size());
  void* indices = rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                          3 * sizeof(std::uint32_t), triangles.size());
  const bool hasMemory = vertices != nullptr && indices != nullptr;
  if (hasMemory) {
    std::copy(points.begin(), points.end(), static_cast<Vector*>(vertices));
    auto* index = static_cast<std::uint32_t*>(indices);
    for (const SurfaceTriangle& triangle : triangles) {
      index = std::copy(std::begin(triangle.point), std::end(triangle.point), index);
    }
    rtcCommitGeometry(geometry);
    rtcAttachGeometryByID(scene, geometry, id);
  }
  rtcReleaseGeometry(geometry);
  return hasMemory;
}

}  // namespace

struct Tracer::State {
  const RenderScene* scene;
  DevicePointer device;
  ScenePointer embree;
};

Tracer::Tracer(std::unique_ptr<State> state) : state_(std::move(state)) {}
Tracer::Tracer(Tracer&&) noexcept = default;
Tracer::~Tracer() = default;

tl::expected<Tracer, std::string> Tracer::Create(const RenderScene& scene) {
  DevicePointer device(rtcNewDevice(kConfiguration));
  if (device == nullptr)
    return tl::unexpected(std::string("the ray caster does not run on this machine"));
  ScenePointer embree(rtcNewScene(device.get()));
  // Robust: rays do not slip through between neighbouring triangles.
  rtcSetSceneFlags(
      embree.get(),
      static_cast<RTCSceneFlags>(RTC_SCENE_FLAG_ROBUST | RTC_SCENE_FLAG_CONTEXT_FILTER_FUNCTION));
  bool hasMemory = true;
  for (std::size_t i = 0; i < scene.objects.size(); ++i) {
    const MeshSurface& surface = scene.objects[i].surface;
    if (surface.Triangles().empty()) continue;
    hasMemory =
        hasMemory && AddSurface(device.get(), embree.get(), surface, static_cast<unsigned>(i));
  }
  rtcCommitScene(embree.get());
  if (!hasMemory || rtcGetDeviceError(device.get()) != RTC_ERROR_NONE) {
    return tl::unexpected(std::string("the scene is too large for the ray caster"));
  }
  return Tracer(std::make_unique<State>(State{&scene, std::move(device), std::move(embree)}));
}

std::optional<RayHit> Tracer::Intersect(const Vec3& origin, const Vec3& direction, double nearest,
                                        std::int32_t identity) const noexcept {
  Question question = Ask(*state_->scene, identity);
  RTCRayHit query = {};
  query.ray = ToRay(origin, direction, nearest, std::numeric_limits<double>::infinity());
  query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
  if (!IsValid(query.ray)) return std::nullopt;
  rtcIntersect1(state_->embree.get(), &question.context, &query);
  if (query.hit.geomID == RTC_INVALID_GEOMETRY_ID) return std::nullopt;
  return RayHit{.object = query.hit.geomID,
                .triangle = query.hit.primID,
                .b = query.hit.u,
                .c = query.hit.v,
                .distance = query.ray.tfar};
}

bool Tracer::Blocks(const Vec3& origin, const Vec3& direction, double distance,
                    std::int32_t identity) const noexcept {
  Question question = Ask(*state_->scene, identity);
  RTCRay ray = ToRay(origin, direction, 0, distance);
  if (!IsValid(ray)) return false;
  rtcOccluded1(state_->embree.get(), &question.context, &ray);
  return ray.tfar < 0;  // Embree's mark of a hit
}

}  // namespace sorvanix::host
