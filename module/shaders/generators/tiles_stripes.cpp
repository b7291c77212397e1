// Tile patterns of bands along y: straight, in waves, in zigzags.
#include <cmath>
#include <numbers>

#include "module/shaders/generators/tiles_families.h"

namespace sorvanix {

namespace {

// Bands are told apart by one number; 13 keeps their hashes off the diagonal.
Tile Band(double x, int (*colourOf)(double band) noexcept) noexcept {
  const double band = std::floor(x);
  return {Tent(x), colourOf(band), band, band + 13};
}

double Wave(double x, double y) noexcept { return x + 0.25 * std::sin(std::numbers::pi * y); }
double Teeth(double x, double y) noexcept { return x + Tent(y * 0.5); }

}  // namespace

Tile PatternStripes(const TilePlane&, double x, double) noexcept { return Band(x, OneOfTwo); }

Tile PatternStripesThree(const TilePlane&, double x, double) noexcept {
  return Band(x, OneOfThree);
}

Tile PatternSineStripes(const TilePlane&, double x, double y) noexcept {
  return Band(Wave(x, y), OneOfTwo);
}

Tile PatternSineStripesThree(const TilePlane&, double x, double y) noexcept {
  return Band(Wave(x, y), OneOfThree);
}

Tile PatternZigzag(const TilePlane&, double x, double y) noexcept {
  return Band(Teeth(x, y), OneOfTwo);
}

Tile PatternZigzagThree(const TilePlane&, double x, double y) noexcept {
  return Band(Teeth(x, y), OneOfThree);
}

}  // namespace sorvanix
