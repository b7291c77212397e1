#include "host/render/renderer.h"

#include <algorithm>

#include "host/render/material_shading.h"
#include "host/render/render_materials.h"
#include "host/render/render_scene.h"
#include "host/render/shading_record.h"
#include "host/render/tracer.h"

namespace sorvanix::host {

namespace {

// Large enough to be worth a thread's turn, small enough that the last ones end together.
constexpr int kTileSide = 16;

int TilesAlong(int side) { return (side + kTileSide - 1) / kTileSide; }

class PictureRenderer {
 public:
  PictureRenderer(const MaterialShading& shading, const ScreenView& view, int samples,
                  std::vector<ShadingRecord>& records, Image& image)
      : shading_(shading), view_(view), samples_(samples), records_(records), image_(image) {}

  void RenderTile(int tile, int worker, const TaskOptions& options) const {
    ShadingRecord& record = records_[static_cast<std::size_t>(worker)];
    const int left = tile % TilesAlong(image_.width) * kTileSide;
    const int top = tile / TilesAlong(image_.width) * kTileSide;
    const int right = std::min(left + kTileSide, image_.width);
    const int bottom = std::min(top + kTileSide, image_.height);
    for (int y = top; y < bottom && !options.Cancelled(); ++y) {
      for (int x = left; x < right; ++x) {
        const Vector colour = PixelAt(record, x, y).Narrow();
        float* const pixel = image_.rgb.data() + image_.IndexOf(x, y);
        pixel[0] = colour.x;
        pixel[1] = colour.y;
        pixel[2] = colour.z;
      }
    }
  }

 private:
  Vec3 PixelAt(ShadingRecord& record, int x, int y) const {
    const double size = 1.0 / samples_;
    Vec3 sum;
    for (int j = 0; j < samples_; ++j) {
      for (int i = 0; i < samples_; ++i) {
        const Ray ray = CameraRay(view_, x + (i + 0.5) * size, y + (j + 0.5) * size, size);
        sum += shading_.ColourAlong(ray, record);
      }
    }
    return sum * (size * size);
  }

  const MaterialShading& shading_;
  const ScreenView& view_;
  int samples_;
  std::vector<ShadingRecord>& records_;
  Image& image_;
};

}  // namespace

tl::expected<RenderedPicture, std::string> RenderPicture(Scene& scene,
                                                         const RenderSettings& settings,
                                                         const TaskOptions& options) {
  const RenderScene prepared = RenderScene::Prepare(scene, settings.width, settings.height);
  const auto tracer = Tracer::Create(prepared);
  if (!tracer) return tl::unexpected(tracer.error());

  const int tiles = TilesAlong(settings.width) * TilesAlong(settings.height);
  RenderFrame frame = {.threadCount = WorkerCount(tiles, options),
                       .pictureSize = {settings.width, settings.height},
                       .view = &prepared.view,
                       .lights = prepared.lights,
                       .occluder = &*tracer,
                       .time = settings.time,
                       .filtering = settings.filtering};
  std::vector<ShadingRecord> records = MakeRecords(frame);
  const RenderMaterials materials(prepared, {&records[0].context, scene.Handle()});
  const MaterialShading shading(prepared, *tracer, materials);

  RenderedPicture picture = {.image = std::nullopt, .problems = materials.Problems()};
  Image image(settings.width, settings.height);
  const PictureRenderer renderer(shading, prepared.view, settings.samples, records, image);
  const bool whole = RunTilesOnWorkers(
      tiles, options, [&](int tile, int worker) { renderer.RenderTile(tile, worker, options); });
  // A cancelled tile may be half painted.
  if (whole && !options.Cancelled()) picture.image = std::move(image);
  return picture;
}

}  // namespace sorvanix::host
