// A plane tiled with overlapping discs: two square lattices of them, half a cell apart.
#pragma once

#include <sorvanix/types.h>

namespace sorvanix {

/// The disc that covers a point.
struct Disc {
  Vector fromCentre;  ///< (x, y, 0)
  Vector noisePoint;  ///< where its noise is read
  float noiseTime;    ///< tells its noise from that of its neighbours
};

/// `point` lies at (x, y) in the plane; cells have a size of 1. `size` sets how far the noise of
/// two discs is apart, and together with `spread` how fine it is.
Disc DiscAt(const Vector& point, float size, float spread) noexcept;

}  // namespace sorvanix
