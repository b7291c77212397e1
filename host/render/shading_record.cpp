#include "host/render/shading_record.h"

#include <cmath>

#include "host/render/projection.h"

namespace sorvanix::host {

namespace {

/// The step over which projections are differentiated, in tag units: far below anything that shows,
/// far above the rounding of doubles.
constexpr double kProjectionStep = 1e-4;

double LongestAxis(const Matrix& m) {
  return std::max({Length(Vec3(m.v1)), Length(Vec3(m.v2)), Length(Vec3(m.v3))});
}

/// Half the extent of the sample along one coordinate.
double HalfExtent(const Vec3& gradient, const Footprint& footprint) {
  return 0.5 *
         (std::abs(Dot(gradient, footprint.side[0])) + std::abs(Dot(gradient, footprint.side[1])));
}

RayRecord ToRecord(const Vec3& origin, const Vec3& direction) {
  return {{origin.x, origin.y, origin.z}, {direction.x, direction.y, direction.z}};
}

}  // namespace

std::array<Vec3, 4> SamplePoints(const SurfaceSample& sample) noexcept {
  const Vec3 halfX = sample.footprint.side[0] * 0.5, halfY = sample.footprint.side[1] * 0.5;
  const Vec3& hit = sample.at.point;
  return {hit, hit - halfX - halfY, hit + halfX - halfY, hit - halfX + halfY};
}

std::vector<ShadingRecord> MakeRecords(const RenderFrame& frame) {
  std::vector<ShadingRecord> records(static_cast<std::size_t>(frame.threadCount));
  for (std::size_t i = 0; i < records.size(); ++i) {
    records[i].threadIndex = static_cast<std::int32_t>(i);
    records[i].frame = &frame;
  }
  return records;
}

void BeginSample(ShadingRecord& record, const SurfaceSample& sample) noexcept {
  record.sample = sample;
  record.ray = ToRecord(sample.eye, sample.direction);
  const auto points = SamplePoints(sample);
  const RenderFrame& frame = *record.frame;
  RenderContext& context = record.context;
  context = {};
  context.hitPoint = points[0].Narrow();
  context.bumpNormal = sample.at.normal.Narrow();
  context.ray = &record.ray;
  context.faceNormal = sample.at.faceNormal.Narrow();
  context.baseNormal = sample.at.normal.Narrow();
  context.viewPoint = (sample.at.point - sample.eye).Narrow();
  context.lightParamA = sample.identity;
  context.side = Dot(sample.direction, sample.at.faceNormal) > 0 ? -1.0f : 1.0f;
  context.lightCount = static_cast<std::int32_t>(frame.lights.size());
  context.lightParamB = 1;
  context.lightsEnabled = 1;
  context.filteringOn = frame.filtering ? 1 : 0;
  context.footprintA = points[1].Narrow();
  context.footprintB = points[2].Narrow();
  context.footprintC = points[3].Narrow();
  context.object = sample.object;
  context.uvwRecord = &record.polygon;
  context.filterScale = 1;
  const SurfaceAxes axes = AnyAxes(sample.at.faceNormal);
  LayTexture(record, nullptr, {.tangentU = axes.first, .tangentV = axes.second}, 0);
}

std::optional<UvFrame> FrameOfTag(const ShadingRecord& record, const TextureTag& tag,
                                  std::size_t uvwSet) {
  const SurfaceSample& sample = record.sample;
  if (ProjectionOf(tag) != Projection::Uvw) {
    const auto uvwAt = [&](const Vec3& point) {
      return ProjectPlace(
          tag,
          {.inTag = MapPoint(tag.matrix2, point), .inWorld = point, .view = record.frame->view});
    };
    return FrameByDifferences(uvwAt, sample.at.point, sample.at.faceNormal,
                              kProjectionStep * LongestAxis(tag.matrix1));
  }
  if (!sample.surface->Mesh().HasUvw(uvwSet)) {
    return FrameFromGradients({}, {}, {}, sample.at.faceNormal);
  }
  const UvFrame frame = sample.surface->UvFrameAt(sample.at, uvwSet);
  const double perU = tag.lengthU == 0 ? 0 : 1 / double{tag.lengthU};
  const double perV = tag.lengthV == 0 ? 0 : 1 / double{tag.lengthV};
  return FrameFromGradients(PlaceInTile(tag, frame.uvw), frame.gradientU * perU,
                            frame.gradientV * perV, sample.at.faceNormal);
}

void LayTexture(ShadingRecord& record, const TextureTag* tag, const UvFrame& uv,
                std::size_t uvwSet) noexcept {
  record.uv = uv;
  record.uvwSet = uvwSet;
  record.isPrepared = false;
  record.polygon = record.sample.surface->Polygon(record.sample.at.polygon, uvwSet);
  RenderContext& context = record.context;
  context.textureTag = tag;
  context.localHitPoint = context.hitPoint;
  context.tangentU = uv.tangentU.Narrow();
  context.tangentV = uv.tangentV.Narrow();
}

ChannelSample SampleAt(ShadingRecord& record) noexcept {
  ChannelSample sample = {};
  sample.uvw = record.uv.uvw.Narrow();
  sample.normal = record.context.bumpNormal;
  if (record.frame->filtering) {
    sample.delta = Vec3(HalfExtent(record.uv.gradientU, record.sample.footprint),
                        HalfExtent(record.uv.gradientV, record.sample.footprint), 0)
                       .Narrow();
  }
  sample.time = record.frame->time;
  sample.texFlags = record.context.textureTag == nullptr ? 0 : record.context.textureTag->flags;
  sample.render = &record.context;
  sample.blurScale = 1;
  return sample;
}

}  // namespace sorvanix::host
