// Catmull-Rom interpolation: E. Catmull, R. Rom, "A class of local interpolating splines", 1974.
#include "host/render/spline.h"

#include <algorithm>

namespace sorvanix::host {

float SplineLookup(float value, const float* table, std::int32_t count) noexcept {
  if (table == nullptr || count <= 0) return 0;
  const int last = count - 1;
  if (!(value > 0)) return table[0];
  if (value >= 1) return table[last];

  const double u = double{value} * last;
  const int segment = std::min(static_cast<int>(u), last);
  const double t = u - segment;
  const auto at = [&](int i) { return double{table[std::clamp(i, 0, last)]}; };
  const double before = at(segment - 1), from = at(segment), to = at(segment + 1),
               after = at(segment + 2);
  const double tangentFrom = (to - before) / 2, tangentTo = (after - from) / 2;
  const double t2 = t * t, t3 = t2 * t;
  return static_cast<float>((2 * t3 - 3 * t2 + 1) * from + (t3 - 2 * t2 + t) * tangentFrom +
                            (3 * t2 - 2 * t3) * to + (t3 - t2) * tangentTo);
}

}  // namespace sorvanix::host
