#include "host/bake/mesh_bake.h"

#include <fmt/format.h>

#include <utility>
#include <vector>

#include "host/bake/gutter.h"
#include "host/render/projection.h"
#include "host/scene/transform.h"

namespace sorvanix::host {

namespace {

constexpr double kEyeDistance = 1;

TextureTag TagOfScene() {
  TextureTag tag = {};
  tag.matrix1 = {{0, 0, 0}, {100, 0, 0}, {0, 100, 0}, {0, 0, 100}};
  tag.matrix2 = {{0, 0, 0}, {0.01f, 0, 0}, {0, 0.01f, 0}, {0, 0, 0.01f}};
  tag.projection = static_cast<std::int8_t>(Projection::Uvw);
  tag.lengthU = tag.lengthV = 1;
  return tag;
}

/// The step on the surface that makes one coordinate grow by 1 and leaves the other.
Vec3 StepOf(const Vec3& gradient, const Vec3& tangent) {
  const double slope = Dot(gradient, tangent);
  return slope == 0 ? Vec3() : tangent / slope;
}

class MeshBaker {
 public:
  MeshBaker(const MeshSurface& surface, ChannelSource& source, const MeshBakeSettings& settings,
            const UvChart& chart, int threads, Image& image)
      : surface_(surface), source_(source), settings_(settings), chart_(chart), image_(image) {
    frame_.threadCount = threads;
    frame_.pictureSize[0] = chart.width;
    frame_.pictureSize[1] = chart.height;
    frame_.time = settings.surface.time;
    frame_.filtering = settings.surface.filtering;
    records_ = MakeRecords(frame_);
  }

  RenderContext* Context() { return &records_[0].context; }

  void BakeRow(int y, int worker, const TaskOptions& options) {
    ShadingRecord& record = records_[static_cast<std::size_t>(worker)];
    for (int x = 0; x < chart_.width && !options.Cancelled(); ++x) {
      const std::int32_t triangle =
          chart_.triangle[static_cast<std::size_t>(y) * static_cast<std::size_t>(chart_.width) +
                          static_cast<std::size_t>(x)];
      if (triangle == UvChart::kNothing) continue;
      // Samples that reach beyond the triangle take its plane.
      const auto at = [&](double px, double py) {
        return SampleAtPlace(record, static_cast<std::size_t>(triangle), px, py);
      };
      const int n = settings_.surface.samples;
      Vec3 texel = MeanOfSamples(n, x, y, at);
      if (n > 1 && settings_.surface.normalMap) texel = Renormalised(texel);
      SetTexel(image_, x, y, texel);
    }
  }

 private:
  Vec3 SampleAtPlace(ShadingRecord& record, std::size_t triangle, double x, double y) const {
    const double u = chart_.tile.u + x / chart_.width, v = chart_.tile.v + y / chart_.height;
    const ChartPlace place = PlaceOnTriangle(surface_, settings_.uvwSet, triangle, u, v);
    const SurfacePoint at = surface_.At(triangle, place.b, place.c);
    UvFrame uv = surface_.UvFrameAt(at, settings_.uvwSet);
    uv.uvw.x = u;  // without the rounding of the way over the corners
    uv.uvw.y = v;
    const double parts = settings_.surface.samples;
    const Footprint footprint = {{StepOf(uv.gradientU, uv.tangentU) / (chart_.width * parts),
                                  StepOf(uv.gradientV, uv.tangentV) / (chart_.height * parts)}};
    BeginSample(record, {.surface = &surface_,
                         .at = at,
                         .eye = at.point + at.faceNormal * kEyeDistance,
                         .direction = -at.faceNormal,
                         .footprint = footprint,
                         .identity = at.polygon + 1,
                         .object = &object_});
    LayTexture(record, &tag_, uv, settings_.uvwSet);
    return SampleTexel(record, source_, settings_.surface.normalMap);
  }

  const MeshSurface& surface_;
  ChannelSource& source_;
  const MeshBakeSettings& settings_;
  const UvChart& chart_;
  Image& image_;
  const TextureTag tag_ = TagOfScene();
  const ObjectRecord object_ = {2, {}, 0, kIdentityMatrix, nullptr};
  RenderFrame frame_;
  std::vector<ShadingRecord> records_;
};

Image EmptyPicture(const SurfaceBakeSettings& settings) {
  Image image(settings.width, settings.height);
  if (settings.normalMap) {
    for (int y = 0; y < image.height; ++y) {
      for (int x = 0; x < image.width; ++x) SetTexel(image, x, y, {0.5, 0.5, 1});
    }
  }
  return image;
}

}  // namespace

tl::expected<void, std::string> CheckCoordinates(const PolygonMesh& mesh, std::size_t uvwSet) {
  if (mesh.uvwSets.empty()) {
    return tl::unexpected(std::string("the mesh has no texture coordinates to bake into"));
  }
  if (!mesh.HasUvw(uvwSet)) {
    return tl::unexpected(fmt::format("the mesh has no set {} of texture coordinates; it has {}",
                                      uvwSet, mesh.uvwSets.size()));
  }
  return {};
}

tl::expected<MeshBake, std::string> BakeMesh(std::shared_ptr<const PolygonMesh> mesh,
                                             ChannelSource& source,
                                             const MeshBakeSettings& settings,
                                             const TaskOptions& options) {
  if (const auto checked = CheckCoordinates(*mesh, settings.uvwSet); !checked) {
    return tl::unexpected(checked.error());
  }
  const int height = settings.surface.height;
  const MeshSurface surface(std::move(mesh), kIdentityMatrix);
  const UvChart chart =
      ChartOf(surface, settings.uvwSet, settings.tile, settings.surface.width, height);
  MeshBake bake = {.surface = {}, .covered = chart.covered, .overlapping = chart.overlapping};

  Image image = EmptyPicture(settings.surface);
  MeshBaker baker(surface, source, settings, chart, WorkerCount(height, options), image);
  const PreparedSource prepared(source, {baker.Context(), nullptr});
  bake.surface.tookPart = prepared.Ready();
  if (!prepared.Ready()) return bake;
  const bool whole = RunTilesOnWorkers(
      height, options, [&](int row, int worker) { baker.BakeRow(row, worker, options); });
  if (!whole || options.Cancelled()) return bake;
  DilateGutter(chart, settings.gutter, image.rgb);
  bake.surface.image = std::move(image);
  return bake;
}

std::vector<UvTile> TilesOfMesh(std::shared_ptr<const PolygonMesh> mesh, std::size_t uvwSet) {
  return UdimTiles(MeshSurface(std::move(mesh), kIdentityMatrix), uvwSet);
}

}  // namespace sorvanix::host
