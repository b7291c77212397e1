#include "host/bake/flat_bake.h"

#include <algorithm>

namespace sorvanix::host {

namespace {

// Large enough to be worth a thread's turn, small enough for a prompt end and a lively progress.
constexpr int kTileSide = 64;

int TilesAlong(int side) { return (side + kTileSide - 1) / kTileSide; }

class FlatBaker {
 public:
  FlatBaker(const SampleFunction& colourAt, const FlatBakeSettings& settings, Image& image)
      : colourAt_(colourAt), settings_(settings), image_(image) {
    const double parts = settings.samples;
    sample_.normal = {0, 1, 0};
    sample_.delta = {static_cast<float>(0.5 / (settings.width * parts)),
                     static_cast<float>(0.5 / (settings.height * parts)), 0};
    sample_.time = settings.time;
    sample_.blurScale = 1;
  }

  int TileCount() const { return TilesAlong(settings_.width) * TilesAlong(settings_.height); }

  void BakeTile(int tile, const TaskOptions& options) const {
    const int left = tile % TilesAlong(settings_.width) * kTileSide;
    const int top = tile / TilesAlong(settings_.width) * kTileSide;
    const int right = std::min(left + kTileSide, settings_.width);
    const int bottom = std::min(top + kTileSide, settings_.height);
    for (int y = top; y < bottom && !options.Cancelled(); ++y) {
      for (int x = left; x < right; ++x) {
        const Vector colour = ColourOf(x, y);
        float* const pixel = image_.rgb.data() + image_.IndexOf(x, y);
        pixel[0] = colour.x;
        pixel[1] = colour.y;
        pixel[2] = colour.z;
      }
    }
  }

 private:
  Vector ColourOf(int x, int y) const {
    const int n = settings_.samples;
    if (n == 1) return ColourAt(x, y);
    double sum[3] = {0, 0, 0};
    for (int j = 0; j < n; ++j) {
      for (int i = 0; i < n; ++i) {
        const Vector colour = ColourAt(x + (i + 0.5) / n, y + (j + 0.5) / n);
        sum[0] += colour.x;
        sum[1] += colour.y;
        sum[2] += colour.z;
      }
    }
    const double count = static_cast<double>(n) * n;
    return {static_cast<float>(sum[0] / count), static_cast<float>(sum[1] / count),
            static_cast<float>(sum[2] / count)};
  }

  Vector ColourAt(double x, double y) const {
    ChannelSample sample = sample_;  // afresh each time: shaders may write into it
    sample.uvw = {static_cast<float>(x / settings_.width), static_cast<float>(y / settings_.height),
                  0};
    return colourAt_(sample);
  }

  const SampleFunction& colourAt_;
  const FlatBakeSettings& settings_;
  Image& image_;
  ChannelSample sample_ = {};
};

}  // namespace

std::optional<Image> BakeFlat(const SampleFunction& colourAt, const FlatBakeSettings& settings,
                              const TaskOptions& options) {
  Image image(settings.width, settings.height);
  const FlatBaker baker(colourAt, settings, image);
  const bool whole =
      RunTiles(baker.TileCount(), options, [&](int tile) { baker.BakeTile(tile, options); });
  // A cancelled tile may be half painted.
  if (!whole || options.Cancelled()) return std::nullopt;
  return image;
}

}  // namespace sorvanix::host
