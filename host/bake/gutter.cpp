#include "host/bake/gutter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace sorvanix::host {

namespace {

/// Grows a chart ring by ring; each ring is looked at once.
class GutterFiller {
 public:
  GutterFiller(const UvChart& chart, std::vector<float>& rgb)
      : chart_(chart), rgb_(rgb), ring_(chart.triangle.size(), kUnreached) {
    for (std::size_t i = 0; i < ring_.size(); ++i) {
      if (chart.triangle[i] != UvChart::kNothing) ring_[i] = 0;
    }
  }

  void Fill(int rings) {
    if (rings <= 0) return;
    std::vector<std::size_t> edge, next;
    for (std::size_t i = 0; i < ring_.size(); ++i) {
      if (ring_[i] == 0) Reach(i, 1, edge);
    }
    for (std::int32_t ring = 1; !edge.empty(); ++ring) {
      for (const std::size_t texel : edge) Paint(texel, ring);
      if (ring == rings) return;
      next.clear();
      for (const std::size_t texel : edge) Reach(texel, ring + 1, next);
      edge.swap(next);
    }
  }

 private:
  static constexpr std::int32_t kUnreached = -1;

  /// Calls `visit` for the texels around one, and for itself.
  template <class Visit>
  void ForEachAround(std::size_t texel, Visit&& visit) const {
    const auto width = static_cast<std::size_t>(chart_.width);
    const int x = static_cast<int>(texel % width), y = static_cast<int>(texel / width);
    for (int ny = std::max(y - 1, 0); ny <= std::min(y + 1, chart_.height - 1); ++ny) {
      for (int nx = std::max(x - 1, 0); nx <= std::min(x + 1, chart_.width - 1); ++nx) {
        visit(static_cast<std::size_t>(ny) * width + static_cast<std::size_t>(nx));
      }
    }
  }

  /// Those around a texel that no ring holds yet belong to this one.
  void Reach(std::size_t texel, std::int32_t ring, std::vector<std::size_t>& reached) {
    ForEachAround(texel, [&](std::size_t near) {
      if (ring_[near] != kUnreached) return;
      ring_[near] = ring;
      reached.push_back(near);
    });
  }

  /// The mean of what is around it in the rings before.
  void Paint(std::size_t texel, std::int32_t ring) {
    double sum[3] = {0, 0, 0};
    int neighbours = 0;
    ForEachAround(texel, [&](std::size_t near) {
      if (ring_[near] == kUnreached || ring_[near] >= ring) return;
      for (std::size_t i = 0; i < 3; ++i) sum[i] += rgb_[near * 3 + i];
      ++neighbours;
    });
    for (std::size_t i = 0; i < 3; ++i) {
      rgb_[texel * 3 + i] = static_cast<float>(sum[i] / neighbours);
    }
  }

  const UvChart& chart_;
  std::vector<float>& rgb_;
  std::vector<std::int32_t> ring_;  // by texel; 0 is the chart
};

}  // namespace

void DilateGutter(const UvChart& chart, int texels, std::vector<float>& rgb) {
  GutterFiller(chart, rgb).Fill(texels);
}

}  // namespace sorvanix::host
