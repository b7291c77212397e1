// Impulses in the cells around a point, weighed by a tabulated filter.
#include "module/noise/sparse_convolution.h"

#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>

#include "module/noise/lattice.h"

namespace sorvanix {

namespace {

constexpr int kFilterSize = 401;
constexpr float kFilterStep = 0.01f;  // of the squared radius, from one entry to the next

// Both go through atomics because several threads may build the table at once. They write the same
// values, and whoever sees the flag sees every entry. The table has one entry more, which stays 0:
// the weight of an impulse out of reach.
constinit std::array<std::atomic<float>, kFilterSize + 1> filterEntries = {};
constinit std::atomic<bool> filterBuilt = false;

void BuildFilter() noexcept {
  for (int i = 0; i < kFilterSize; ++i) {
    const double r = std::sqrt(i * static_cast<double>(kFilterStep));
    const double weight =
        r < 1 ? 0.5 * ((3 * r - 5) * r * r + 2) : 0.5 * (((5 - r) * r - 8) * r + 4);
    filterEntries[static_cast<std::size_t>(i)].store(static_cast<float>(weight),
                                                     std::memory_order_relaxed);
  }
  filterBuilt.store(true, std::memory_order_release);
}

void EnsureFilter() noexcept {
  if (!filterBuilt.load(std::memory_order_acquire)) BuildFilter();
}

/// The weight at a squared distance of 0 or more, or NaN. Without a branch, since half of the
/// impulses are out of reach and none can predict which. The table must have been built.
float FilterWeight(float distanceSquared) noexcept {
  const float limited = distanceSquared < 4 ? distanceSquared : 4.01f;
  const auto index = static_cast<std::int32_t>(limited * 100.0 + 0.5);
  return filterEntries[static_cast<std::size_t>(index)].load(std::memory_order_relaxed);
}

constexpr int kReach = 2;  // cells on either side that an impulse can be felt from
constexpr int kSpan = 2 * kReach + 1;

/// A coordinate seen from the cells around it.
struct Axis {
  std::uint32_t cell;
  double fraction;
  /// The least squared distance along this axis to an impulse in the cell at offset i - kReach.
  /// Impulses lie in [0, 1] of their cell.
  double nearest[kSpan];

  explicit Axis(float coordinate) noexcept {
    const std::int32_t number = CellNumber(coordinate);
    cell = static_cast<std::uint32_t>(number);
    fraction = static_cast<double>(coordinate) - number;
    for (int i = 0; i < kSpan; ++i) {
      const double start = i - kReach;
      const double gap = fraction < start       ? start - fraction
                         : fraction > start + 1 ? fraction - (start + 1)
                                                : 0;
      nearest[i] = gap * gap;
    }
  }
};

/// Impulses this far away weigh nothing. The margin covers the rounding of sums of squares, so that
/// leaving out a cell never changes the result: it would have added exact zeros.
constexpr double kOutOfReach = 4 + 1e-9;

/// A run of cells along the first axis: the hash of the other coordinates, and their offsets.
template <int kDimensions>
struct Row {
  std::uint32_t hash;
  double nearest;
  double offset[kDimensions];  // [0] is not used
};

/// The rows around a point that can hold impulses within reach, in the order of nested loops over
/// the second to the last axis, the last one innermost.
template <int kDimensions>
struct Rows {
  static constexpr int kCapacity = kDimensions == 4 ? 125 : 25;
  Row<kDimensions> row[kCapacity];
  int count = 1;

  Rows(const Axis (&axes)[kDimensions], std::uint32_t firstHash) noexcept {
    row[0] = {.hash = firstHash, .nearest = 0, .offset = {}};
    for (int axis = kDimensions - 1; axis > 0; --axis) Expand(axes[axis], axis);
  }

 private:
  /// Puts one more loop around the rows that there are.
  void Expand(const Axis& axis, int number) noexcept {
    Row<kDimensions> inner[kCapacity / kSpan];
    const int innerCount = count;
    for (int i = 0; i < innerCount; ++i) inner[i] = row[i];
    count = 0;
    for (int i = 0; i < kSpan; ++i) {
      for (int k = 0; k < innerCount; ++k) {
        const double nearest = inner[k].nearest + axis.nearest[i];
        if (nearest >= kOutOfReach) continue;
        Row<kDimensions>& added = row[count++];
        added = inner[k];
        added.nearest = nearest;
        added.offset[number] = i - kReach;
        added.hash = HashStep(inner[k].hash, axis.cell + static_cast<std::uint32_t>(i - kReach));
      }
    }
  }
};

/// The sum over the impulses of all cells around a point, in the order of nested loops with the
/// first axis outermost. `firstHash` is what the hash of the last coordinate starts from.
template <int kDimensions>
float SparseConvolution(const Axis (&axes)[kDimensions], std::uint32_t firstHash) noexcept {
  EnsureFilter();
  const Rows<kDimensions> rows(axes, firstHash);
  double sum = 0;
  for (int i = 0; i < kSpan; ++i) {
    const double offset = i - kReach;
    const std::uint32_t cell = axes[0].cell + static_cast<std::uint32_t>(i - kReach);
    for (int k = 0; k < rows.count; ++k) {
      const Row<kDimensions>& row = rows.row[k];
      if (row.nearest + axes[0].nearest[i] >= kOutOfReach) continue;
      std::uint32_t hash = HashStep(row.hash, cell);
      for (int n = 0; n < 3; ++n) {
        const NoiseImpulse& impulse = NoiseImpulseTable[hash];
        const double along = axes[0].fraction - (offset + impulse.field[0]);
        double distanceSquared = along * along;
        for (int axis = 1; axis < kDimensions; ++axis) {
          const double across = axes[axis].fraction - (row.offset[axis] + impulse.field[axis]);
          distanceSquared += across * across;
        }
        sum += static_cast<double>(FilterWeight(static_cast<float>(distanceSquared))) *
               impulse.field[kDimensions];
        hash = (hash + 1) & 255;
      }
    }
  }
  return static_cast<float>(sum * static_cast<double>(0.33333334f));
}

}  // namespace

float ImpulseFilter(float distanceSquared) noexcept {
  if (distanceSquared >= 4) return 0;
  EnsureFilter();
  return distanceSquared * 100.0 + 0.5 >= 0 ? FilterWeight(distanceSquared) : 0;
}

float SparseConvolution3(float x, float y, float z) noexcept {
  const Axis axes[] = {Axis(x), Axis(y), Axis(z)};
  // The hash of the last coordinate starts from the table's first entry, where that of four
  // coordinates starts from nothing; every image made with this noise depends on it.
  return SparseConvolution<3>(axes, NoisePermutation[0]);
}

float SparseConvolution4(float x, float y, float z, float w) noexcept {
  const Axis axes[] = {Axis(x), Axis(y), Axis(z), Axis(w)};
  return SparseConvolution<4>(axes, 0);
}

}  // namespace sorvanix
