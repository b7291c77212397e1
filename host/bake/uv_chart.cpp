#include "host/bake/uv_chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <utility>

namespace sorvanix::host {

namespace {

struct Point {
  double x, y;
  friend bool operator<(const Point& a, const Point& b) {
    return std::pair(a.x, a.y) < std::pair(b.x, b.y);
  }
};

using FlatTriangle = std::array<Point, 3>;

FlatTriangle InTextureSpace(const MeshSurface& surface, std::size_t uvwSet, std::size_t index) {
  const SurfaceTriangle& triangle = surface.Triangles()[index];
  const Corners& uvw =
      surface.Mesh().uvwSets[uvwSet].corners[static_cast<std::size_t>(triangle.polygon)];
  FlatTriangle flat = {};
  for (std::size_t i = 0; i < 3; ++i) {
    flat[i] = {uvw[triangle.corner[i]].x, uvw[triangle.corner[i]].y};
  }
  return flat;
}

/// Twice the area to the left of a -> b and p.
double Area(const Point& a, const Point& b, const Point& p) {
  return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

/// Whether p lies to the left of a -> b. A point on the edge lies on one side only, the same for
/// both triangles that share it, since the edge is always looked at in one direction.
bool IsLeft(const Point& a, const Point& b, const Point& p) {
  return a < b ? Area(a, b, p) >= 0 : !(Area(b, a, p) >= 0);
}

bool IsInside(const FlatTriangle& t, const Point& p) {
  return IsLeft(t[0], t[1], p) && IsLeft(t[1], t[2], p) && IsLeft(t[2], t[0], p);
}

struct Bounds {
  double left, top, right, bottom;
  bool IsFinite() const {
    return std::isfinite(left) && std::isfinite(top) && std::isfinite(right) &&
           std::isfinite(bottom);
  }
};

Bounds BoundsOf(const FlatTriangle& t) {
  return {std::min({t[0].x, t[1].x, t[2].x}), std::min({t[0].y, t[1].y, t[2].y}),
          std::max({t[0].x, t[1].x, t[2].x}), std::max({t[0].y, t[1].y, t[2].y})};
}

/// The first of `count` texels whose middle is at or behind a place in texels.
int FirstTexel(double place, int count) {
  return static_cast<int>(std::clamp(std::ceil(place - 0.5), 0.0, static_cast<double>(count)));
}

/// Counts each texel of a triangle in a chart.
class ChartFiller {
 public:
  explicit ChartFiller(UvChart& chart) : chart_(chart), seen_(chart.triangle.size(), 0) {}

  void Add(FlatTriangle flat, std::int32_t index) {
    for (Point& p : flat) {
      p = {(p.x - chart_.tile.u) * chart_.width, (p.y - chart_.tile.v) * chart_.height};
    }
    const Bounds bounds = BoundsOf(flat);
    const double area = Area(flat[0], flat[1], flat[2]);
    if (!bounds.IsFinite() || area == 0) return;
    if (area < 0) std::swap(flat[1], flat[2]);  // mirrored coordinates
    const int right = FirstTexel(std::nextafter(bounds.right, HUGE_VAL), chart_.width);
    const int bottom = FirstTexel(std::nextafter(bounds.bottom, HUGE_VAL), chart_.height);
    for (int y = FirstTexel(bounds.top, chart_.height); y < bottom; ++y) {
      for (int x = FirstTexel(bounds.left, chart_.width); x < right; ++x) {
        if (IsInside(flat, {x + 0.5, y + 0.5})) Cover(x, y, index);
      }
    }
  }

 private:
  void Cover(int x, int y, std::int32_t index) {
    const std::size_t texel = static_cast<std::size_t>(y) * static_cast<std::size_t>(chart_.width) +
                              static_cast<std::size_t>(x);
    if (seen_[texel] == 0) {
      chart_.triangle[texel] = index;
      ++chart_.covered;
    } else if (seen_[texel] == 1) {
      ++chart_.overlapping;
    }
    seen_[texel] = static_cast<std::uint8_t>(std::min(seen_[texel] + 1, 2));
  }

  UvChart& chart_;
  std::vector<std::uint8_t> seen_;  // triangles at each texel, counted up to 2
};

}  // namespace

UvChart ChartOf(const MeshSurface& surface, std::size_t uvwSet, const UvTile& tile, int width,
                int height) {
  UvChart chart = {.width = width, .height = height, .tile = tile, .triangle = {}};
  chart.triangle.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                        UvChart::kNothing);
  ChartFiller filler(chart);
  for (std::size_t i = 0; i < surface.Triangles().size(); ++i) {
    filler.Add(InTextureSpace(surface, uvwSet, i), static_cast<std::int32_t>(i));
  }
  return chart;
}

ChartPlace PlaceOnTriangle(const MeshSurface& surface, std::size_t uvwSet, std::size_t triangle,
                           double u, double v) noexcept {
  const FlatTriangle t = InTextureSpace(surface, uvwSet, triangle);
  const double area = Area(t[0], t[1], t[2]);
  return {Area(t[0], {u, v}, t[2]) / area, Area(t[0], t[1], {u, v}) / area};
}

std::vector<UvTile> UdimTiles(const MeshSurface& surface, std::size_t uvwSet) {
  constexpr double kColumns = 10, kRows = 100;
  std::set<std::int32_t> numbers;
  for (std::size_t i = 0; i < surface.Triangles().size(); ++i) {
    const FlatTriangle flat = InTextureSpace(surface, uvwSet, i);
    const Bounds bounds = BoundsOf(flat);
    if (!bounds.IsFinite() || Area(flat[0], flat[1], flat[2]) == 0) continue;
    // A triangle that ends on a tile's edge does not reach into the next tile.
    const double left = std::max(std::floor(bounds.left), 0.0);
    const double right = std::min(std::ceil(bounds.right), kColumns);
    const double top = std::max(std::floor(bounds.top), 1 - kRows);
    const double bottom = std::min(std::ceil(bounds.bottom), 1.0);
    for (double v = top; v < bottom; ++v) {
      for (double u = left; u < right; ++u) {
        numbers.insert(UvTile{static_cast<std::int32_t>(u), static_cast<std::int32_t>(v)}.Udim());
      }
    }
  }
  std::vector<UvTile> tiles;
  for (const std::int32_t number : numbers) {
    tiles.push_back({(number - 1001) % 10, -((number - 1001) / 10)});
  }
  return tiles;
}

}  // namespace sorvanix::host
