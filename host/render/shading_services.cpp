#include "host/render/shading_services.h"

#include <cstddef>

#include "host/render/projection.h"
#include "host/render/shading_record.h"
#include "host/render/spline.h"

namespace sorvanix::host {

namespace {

/// Places are projected at this many of a caller's units for one of the tag: a caller scales its
/// own tags by 0.01, and 100 units of the scene fill a tag.
constexpr double kUnitsInTag = 10000;

/// Footprints under a tag are in the tag's space times this.
constexpr double kFootprintScale = 100;

/// The record of a running render; null when there is none.
const ShadingRecord* Running(const RenderContext* render) {
  const ShadingRecord* record = ShadingRecord::From(render);
  return record == nullptr || record->frame == nullptr ? nullptr : record;
}

LitPoint PointToLight(const ShadingRecord& record, const Vec3& point, const Vec3& normal,
                      bool shadows, std::int32_t identity) {
  return {point, normal, shadows ? record.frame->occluder : nullptr, identity};
}

/// The context's own point, which a shader may have moved, and its own switches.
LitPoint PresentPoint(const ShadingRecord& record, const Vec3& normal) {
  const RenderContext& context = record.context;
  return PointToLight(record, Vec3(context.hitPoint), normal, context.lightParamB != 0,
                      context.lightParamA);
}

void AddTo(Vector* sum, const Vec3& share) {
  if (sum != nullptr) *sum = (Vec3(*sum) + share).Narrow();
}

std::int32_t CpuCount(const RenderContext* render) noexcept {
  const ShadingRecord* record = Running(render);
  return record == nullptr ? 1 : record->frame->threadCount;
}

std::int32_t CpuIndex(const RenderContext* render) noexcept {
  return render == nullptr ? 0 : ShadingRecord::From(render)->threadIndex;
}

const void* Query(const RenderContext* render, std::int32_t code) noexcept {
  const ShadingRecord* record = Running(render);
  if (record == nullptr) return nullptr;
  if (code == QueryPictureSize) return record->frame->pictureSize;
  if (code == QueryCameraMatrix && record->frame->view != nullptr) {
    return &record->frame->view->CameraToWorld();
  }
  return nullptr;
}

// Without a camera the point stays as it is.
void ProjectToScreen(const RenderContext* render, const Vector* point, Vector* screen) noexcept {
  if (point == nullptr || screen == nullptr) return;
  const ShadingRecord* record = Running(render);
  const bool hasView = record != nullptr && record->frame->view != nullptr;
  *screen = hasView ? record->frame->view->ToPixels(Vec3(*point)).Narrow() : *point;
}

void IlluminateEntry(const RenderContext* render, Vector* diffuse, Vector* specular,
                     float exponent) noexcept {
  const ShadingRecord* record = Running(render);
  if (record == nullptr || render->lightsEnabled == 0) return;
  const Vec3 view =
      render->ray == nullptr
          ? Vec3()
          : -Vec3(render->ray->direction[0], render->ray->direction[1], render->ray->direction[2]);
  LightSum sum;
  Illuminate(record->frame->lights, PresentPoint(*record, Vec3(render->bumpNormal)), view, exponent,
             sum);
  AddTo(diffuse, sum.diffuse);
  AddTo(specular, sum.specular);
}

std::int32_t LightCount(const RenderContext* render) noexcept {
  const ShadingRecord* record = Running(render);
  return record == nullptr ? 0 : static_cast<std::int32_t>(record->frame->lights.size());
}

const LightRecord* LightAt(const RenderContext* render, std::int32_t index) noexcept {
  if (index < 0 || index >= LightCount(render)) return nullptr;
  return &Running(render)->frame->lights[static_cast<std::size_t>(index)];
}

std::int32_t LightSampleEntry(const RenderContext* render, const LightRecord* light, Vector* colour,
                              Vector* direction, const Vector* point, const Vector* normal,
                              std::int32_t shadows, std::int32_t identity) noexcept {
  const ShadingRecord* record = Running(render);
  if (record == nullptr || light == nullptr || point == nullptr || normal == nullptr) return 0;
  const ArrivingLight arriving = SampleLight(
      *light, PointToLight(*record, Vec3(*point), Vec3(*normal), shadows != 0, identity));
  if (colour != nullptr) *colour = arriving.colour.Narrow();
  if (direction != nullptr) *direction = arriving.direction.Narrow();
  return arriving.arrives ? 1 : 0;
}

// Lights the far side of the surface, the one that the ray does not meet: what a shader of
// translucency asks for.
void AreaLightEntry(const RenderContext* render, const LightRecord* light, float value,
                    const Vector* ray, float /*side*/, const Vector* point, Vector* sum) noexcept {
  const ShadingRecord* record = Running(render);
  if (record == nullptr || light == nullptr || ray == nullptr || point == nullptr) return;
  Vec3 normal(render->bumpNormal);
  if (Dot(Vec3(*ray), normal) < 0) normal = -normal;
  LitPoint at = PresentPoint(*record, normal);
  at.point = Vec3(*point);
  AddTo(sum, AreaLightDiffuse(*light, at) * value);
}

/// How far a point lies from the hit. Callers move the first point of a footprint, which is the hit
/// in world space or, under a tag, in the space of footprints: the nearer of the two is meant.
Vec3 OffsetFromHit(const ShadingRecord& record, const TextureTag* tag, const Vec3& point) {
  const Vec3 fromHit = point - record.sample.at.point;
  if (tag == nullptr) return fromHit;
  const Vec3 fromFootprint =
      point - MapPoint(tag->matrix2, record.sample.at.point) * kFootprintScale;
  return Length(fromFootprint) < Length(fromHit) ? fromFootprint : fromHit;
}

void PointToUvw(const RenderContext* render, const TextureTag* tag, std::int32_t /*identity*/,
                const Vector* point, const Vector* /*normal*/, Vector* uvw) noexcept {
  const ShadingRecord* record = Running(render);
  if (record == nullptr || point == nullptr || uvw == nullptr) return;
  const Vec3 offset = OffsetFromHit(*record, tag, Vec3(*point));
  std::optional<Vec3> projected;
  if (tag != nullptr && ProjectionOf(*tag) != Projection::Uvw) {
    const Vec3 place = record->sample.at.point + offset;
    projected = ProjectPlace(
        *tag,
        {.inTag = MapPoint(tag->matrix2, place), .inWorld = place, .view = record->frame->view});
  }
  *uvw = projected.value_or(record->uv.UvwAt(offset)).Narrow();
}

void SurfaceAxesEntry(const RenderContext* render, const TextureTag* /*tag*/,
                      const Vector* /*point*/, const Vector* /*normal*/, Vector* axisU,
                      Vector* axisV) noexcept {
  const ShadingRecord* record = Running(render);
  if (record == nullptr) return;
  if (axisU != nullptr) *axisU = record->uv.tangentU.Narrow();
  if (axisV != nullptr) *axisV = record->uv.tangentV.Narrow();
}

// Sets are counted from 1; a set that the mesh lacks is the first one.
void SetUpTexture(RenderContext* render, const Vector points[4], std::int32_t uvwIndex) noexcept {
  if (Running(render) == nullptr || points == nullptr) return;
  ShadingRecord& record = *ShadingRecord::From(render);
  for (std::size_t i = 0; i < 4; ++i) record.preparedPoint[i] = points[i];
  record.preparedWorld = SamplePoints(record.sample);
  record.isPrepared = true;
  const auto wanted = static_cast<std::size_t>(uvwIndex < 1 ? 0 : uvwIndex - 1);
  const MeshSurface& surface = *record.sample.surface;
  record.polygon =
      surface.Polygon(record.sample.at.polygon, surface.Mesh().HasUvw(wanted) ? wanted : 0);
}

bool Same(const Vector& a, const Vector& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

/// Where a point of a caller is in the world: the place of the prepared point that it is, else the
/// point itself.
Vec3 WorldPlace(const ShadingRecord& record, const Vector& point) {
  for (std::size_t i = 0; record.isPrepared && i < 4; ++i) {
    if (Same(point, record.preparedPoint[i])) return record.preparedWorld[i];
  }
  return Vec3(point);
}

/// The same for a point that went through a tag and back, which rounding has moved: the nearest of
/// the prepared points.
Vec3 NearestWorldPlace(const ShadingRecord& record, const Vec3& point) {
  if (!record.isPrepared) return point;
  std::size_t nearest = 0;
  for (std::size_t i = 1; i < 4; ++i) {
    if (Length(point - Vec3(record.preparedPoint[i])) <
        Length(point - Vec3(record.preparedPoint[nearest]))) {
      nearest = i;
    }
  }
  return record.preparedWorld[nearest];
}

std::int32_t ProjectTexture(const TextureTag* tag, const RenderContext* render, const Vector* point,
                            const UvwRecord* uvwRecord, Vector* uvw) noexcept {
  const ShadingRecord* record = Running(render);
  if (tag == nullptr || record == nullptr || point == nullptr || uvw == nullptr) return 0;
  ProjectedPlace place = {
      .inTag = Vec3(*point) / kUnitsInTag, .view = record->frame->view, .polygon = uvwRecord};
  if (ProjectionOf(*tag) == Projection::Uvw) {
    place.inWorld = WorldPlace(*record, *point);
  } else if (ProjectionOf(*tag) == Projection::Frontal) {
    place.inWorld = NearestWorldPlace(*record, MapPoint(tag->matrix1, Vec3(*point)));
  }
  const std::optional<Vec3> projected = ProjectPlace(*tag, place);
  *uvw = projected.value_or(Vec3()).Narrow();
  return projected ? 1 : 0;
}

}  // namespace

void InstallShadingServices(RenderTable& table) noexcept {
  table.cpuCount = CpuCount;
  table.cpuIndex = CpuIndex;
  table.query = Query;
  table.projectToScreen = ProjectToScreen;
  table.illuminate = IlluminateEntry;
  table.lightCount = LightCount;
  table.lightAt = LightAt;
  table.lightSample = LightSampleEntry;
  table.areaLight = AreaLightEntry;
  table.splineLookup = SplineLookup;
  table.pointToUvw = PointToUvw;
  table.surfaceAxes = SurfaceAxesEntry;
  table.setUpTexture = SetUpTexture;
  table.projectTexture = ProjectTexture;
}

}  // namespace sorvanix::host
