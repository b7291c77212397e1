// Cell numbers and the hashes of cells.
#include "module/noise/lattice.h"

#include <cmath>
#include <limits>

namespace sorvanix {

namespace {

std::uint32_t Cell(double coordinate) noexcept {
  return static_cast<std::uint32_t>(CellNumber(coordinate));
}

float HashValue(std::uint32_t hash) noexcept { return std::fabs(NoiseValueTable[hash]); }

}  // namespace

std::int32_t CellNumber(double coordinate) noexcept {
  const double cell = std::floor(coordinate);
  if (cell >= -0x1p63 && cell < 0x1p63) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(cell)));
  }
  if (!std::isfinite(cell)) return std::numeric_limits<std::int32_t>::min();
  // Beyond int64 the low 32 bits come from the remainder, which fmod gives exactly.
  return static_cast<std::int32_t>(
      static_cast<std::uint32_t>(static_cast<std::int64_t>(std::fmod(cell, 0x1p32))));
}

float HashCell1(float x) noexcept { return HashValue(HashStep(0, Cell(x))); }

float HashCell2(float x, float y) noexcept {
  return HashValue(HashStep(HashStep(0, Cell(y)), Cell(x)));
}

float HashCell4(float x, float y, float z, float w) noexcept {
  std::uint32_t hash = HashStep(0, Cell(w));
  hash = HashStep(hash, Cell(z));
  hash = HashStep(hash, Cell(y));
  return HashValue(HashStep(hash, Cell(x)));
}

}  // namespace sorvanix
