// The two lattices: one has its centres in the middle of the cells, one in their corners.
#include "module/shaders/surface/disc_pattern.h"

#include <cmath>

#include "module/kit/remap.h"
#include "module/kit/vector.h"

namespace sorvanix {

namespace {

struct Offset {
  double x, y;
  bool InsideDisc() const { return x * x + y * y < 0.5 * 0.5; }
};

}  // namespace

Disc DiscAt(const Vector& p, float size, float spread) noexcept {
  const double a = Fraction(p.x), b = Fraction(p.y);
  const Offset middle = {a - 0.5, b - 0.5};
  const Offset corner = {a >= 0.5 ? a - 1 : a, b >= 0.5 ? b - 1 : b};
  // The lattice in front changes half way up the cell, which weaves the discs.
  const bool useCorner = b < 0.5 ? corner.InsideDisc() : !middle.InsideDisc();

  const Offset& offset = useCorner ? corner : middle;
  const double shift = useCorner ? 0.5 : 0;
  const double cell = std::floor(p.x + shift) + std::floor(p.y + shift);
  const double f = 25.0 * size;
  const double scale = f * (spread * 0.2);
  return {{static_cast<float>(offset.x), static_cast<float>(offset.y), 0},
          Scale(static_cast<float>(scale), p),
          static_cast<float>(f * cell)};
}

}  // namespace sorvanix
