#include "host/bake/plane_bake.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "host/render/projection.h"
#include "host/scene/transform.h"

namespace sorvanix::host {

namespace {

constexpr Vec3 kViewDirection = {0, 0, 1};

std::shared_ptr<PolygonMesh> UnitSquare() {
  auto mesh = std::make_shared<PolygonMesh>();
  mesh->points = {{-0.5f, 0.5f, 0}, {0.5f, 0.5f, 0}, {0.5f, -0.5f, 0}, {-0.5f, -0.5f, 0}};
  mesh->polygons = {{0, 1, 2, 3}};
  mesh->uvwSets = {{"UVW", {{{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}}}}};
  return mesh;
}

TextureTag PlainTag() {
  TextureTag tag = {};
  tag.matrix1 = tag.matrix2 = kIdentityMatrix;
  tag.projection = static_cast<std::int8_t>(Projection::Uvw);
  tag.lengthU = tag.lengthV = 1;
  return tag;
}

class PlaneBaker {
 public:
  PlaneBaker(ChannelSource& source, const SurfaceBakeSettings& settings, int threads, Image& image)
      : source_(source),
        settings_(settings),
        image_(image),
        surface_(UnitSquare(), kIdentityMatrix) {
    frame_.threadCount = threads;
    frame_.pictureSize[0] = settings.width;
    frame_.pictureSize[1] = settings.height;
    frame_.time = settings.time;
    frame_.filtering = settings.filtering;
    records_ = MakeRecords(frame_);
  }

  RenderContext* Context() { return &records_[0].context; }

  void BakeRow(int y, int worker, const TaskOptions& options) {
    ShadingRecord& record = records_[static_cast<std::size_t>(worker)];
    for (int x = 0; x < settings_.width && !options.Cancelled(); ++x) {
      const auto at = [&](double px, double py) { return SampleAtPlace(record, px, py); };
      const int n = settings_.samples;
      Vec3 texel = n == 1 ? at(x, y) : MeanOfSamples(n, x, y, at);
      if (n > 1 && settings_.normalMap) texel = Renormalised(texel);
      SetTexel(image_, x, y, texel);
    }
  }

 private:
  Vec3 SampleAtPlace(ShadingRecord& record, double x, double y) const {
    const double u = x / settings_.width, v = y / settings_.height;
    // The halves of the square meet where u = v; see SurfaceTriangle for their corners.
    const bool upper = u >= v;
    const SurfacePoint at = upper ? surface_.At(0, u - v, v) : surface_.At(1, u, v - u);
    const double parts = settings_.samples;
    const Footprint footprint = {
        {{1 / (settings_.width * parts), 0, 0}, {0, -1 / (settings_.height * parts), 0}}};
    BeginSample(record, {.surface = &surface_,
                         .at = at,
                         .eye = at.point - kViewDirection,
                         .direction = kViewDirection,
                         .footprint = footprint,
                         .identity = 1,
                         .object = &object_});
    UvFrame uv = surface_.UvFrameAt(at, 0);
    uv.uvw = {u, v, 0};  // without the rounding of the way over the corners
    LayTexture(record, &tag_, uv, 0);
    return SampleTexel(record, source_, settings_.normalMap);
  }

  ChannelSource& source_;
  const SurfaceBakeSettings& settings_;
  Image& image_;
  const MeshSurface surface_;
  const TextureTag tag_ = PlainTag();
  const ObjectRecord object_ = {2, {}, 0, kIdentityMatrix, nullptr};
  RenderFrame frame_;
  std::vector<ShadingRecord> records_;
};

}  // namespace

SurfaceBake BakePlane(ChannelSource& source, const SurfaceBakeSettings& settings,
                      const TaskOptions& options) {
  Image image(settings.width, settings.height);
  PlaneBaker baker(source, settings, WorkerCount(settings.height, options), image);
  const PreparedSource prepared(source, {baker.Context(), nullptr});
  if (!prepared.Ready()) return {.tookPart = false, .image = std::nullopt};
  const bool whole = RunTilesOnWorkers(
      settings.height, options, [&](int row, int worker) { baker.BakeRow(row, worker, options); });
  if (!whole || options.Cancelled()) return {};
  return {.image = std::move(image)};
}

}  // namespace sorvanix::host
