// From a pattern's tile to a colour: the grout's edge, anti-aliasing, and the tile's colour.
#include "module/shaders/generators/tiles_pattern.h"

#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/noise/lattice.h"
#include "module/shaders/generators/tiles_catalogue.h"

namespace sorvanix {

namespace {

// A quotient that is 0 where it is not defined.
double Quotient(double a, double b) noexcept { return b == 0 ? 0 : a / b; }

/// The two axes of the plane, x first. Any orientation but 1 is the plain one.
struct Axes {
  bool swapped;
  double scaleX, scaleY;
};

Axes AxesOf(const TilesBlock& block) noexcept {
  if (block.orientation == 1) return {true, block.scaleV, block.scaleU};
  return {false, block.scaleU, block.scaleV};
}

TilePlane PlaneOf(const TilesBlock& block, const Axes& axes) noexcept {
  const double period = Quotient(1, block.globalScale);
  return {axes.scaleX, axes.scaleY, Quotient(period, axes.scaleX), Quotient(period, axes.scaleY),
          block.arms};
}

// Half the size of the sample, along both axes together. The deltas keep their signs, which is
// deliberate: opposite ones cancel.
double BlurOf(const TilesBlock& block, const Axes& axes, const ChannelSample& sample) noexcept {
  if (sample.render != nullptr && sample.render->filteringOn == 0) return 0;
  double size = 0;
  if (block.globalScale != 0 && axes.scaleX != 0 && axes.scaleY != 0) {
    const double du = (axes.swapped ? sample.delta.y : sample.delta.x) / double{block.globalScale};
    const double dv = (axes.swapped ? sample.delta.x : sample.delta.y) / double{block.globalScale};
    size = dv / axes.scaleY + du / axes.scaleX;
  }
  return size * sample.blurScale + sample.blurOffset;
}

/// The edge of a tile: where its slope begins to turn from grout to tile, and where it ends to.
struct Edge {
  bool hard;  ///< without a bevel tiles touch: grout shows nowhere
  double bevel, low, high;
};

Edge EdgeOf(const TilesBlock& block, TileColours colours) noexcept {
  constexpr double kLeastBevel = 0.000001f;
  const bool flat = block.bevel == 0;
  const double bevel = flat ? kLeastBevel : block.bevel;
  const double low = block.groutWidth;
  return {flat && colours != TileColours::Random, bevel, low, (1 - low) * bevel + low};
}

// How much of the sample lies on the tile: the mean of the slope's both ends.
double MaskOf(const TilesBlock& block, const Edge& edge, double height, double blur) noexcept {
  const auto tileAt = [&](double h) noexcept -> double {
    return block.smoothBevel != 0 ? Ease(edge.low, edge.high, h)
                                  : LinearStep(edge.low, edge.high, h);
  };
  return (tileAt(height - blur) + tileAt(height + blur)) * 0.5;
}

Vector ColourByIndex(const TilesBlock& block, int index) noexcept {
  return index == 2 ? block.color2 : index == 3 ? block.color3 : block.color1;
}

// A random place on the loop of the three colours. The step of 7 keeps the hash apart from that of
// the cell itself.
Vector ColourByCell(const TilesBlock& block, const Tile& tile) noexcept {
  const double r =
      3.0 * HashCell2(static_cast<float>(tile.cellX + 7), static_cast<float>(tile.cellY));
  if (r < 1) return Lerp(block.color1, block.color2, static_cast<float>(r));
  if (r < 2) return Lerp(block.color2, block.color3, static_cast<float>(r - 1));
  return Lerp(block.color3, block.color1, static_cast<float>(r - 2));
}

// The colour that the eye sees of the whole pattern from afar. A spiral that is asked for random
// colours has none, but its mean is that of all three: deliberate.
Vector FarColour(const TilesBlock& block, const TilePatternRow& pattern,
                 const Edge& edge) noexcept {
  const bool two = pattern.colorCount == 2 && block.randomColor == 0;
  const Vector tiles =
      two ? Scale(Add(block.color1, block.color2), 0.5f)
          : ByComponent([](double a, double b, double c) { return (a + b + c) * kOneThird; },
                        block.color1, block.color2, block.color3);
  if (edge.hard) return tiles;
  const double grout = (1 - double{block.groutWidth}) * edge.bevel * 0.5 + block.groutWidth;
  return Lerp(tiles, block.groutColor, static_cast<float>(grout));
}

}  // namespace

Vector TilePoint(const TilesBlock& block, const Vector& uvw) noexcept {
  const Axes axes = AxesOf(block);
  const double u = Quotient(uvw.x, block.globalScale), v = Quotient(uvw.y, block.globalScale);
  return {static_cast<float>(Quotient(axes.swapped ? v : u, axes.scaleX)),
          static_cast<float>(Quotient(axes.swapped ? u : v, axes.scaleY)), 0};
}

Vector TilePattern(const TilesBlock& block, const ChannelSample& sample,
                   const Vector& point) noexcept {
  const TilePatternRow& pattern = TilePatternOf(block.pattern);
  const Axes axes = AxesOf(block);
  const Tile tile =
      pattern.tileAt(PlaneOf(block, axes), point.x * pattern.unitsX, point.y * pattern.unitsY);

  const Edge edge = EdgeOf(block, pattern.colours);
  const double blur = BlurOf(block, axes, sample) * pattern.blurUnits;
  const double mask = MaskOf(block, edge, tile.height, blur);

  const bool random = pattern.colours == TileColours::Random ||
                      (pattern.colours == TileColours::IndexOrRandom && block.randomColor != 0);
  Vector colour = random ? ColourByCell(block, tile) : ColourByIndex(block, tile.colorIndex);
  if (!edge.hard) colour = Lerp(block.groutColor, colour, static_cast<float>(mask));
  if (!pattern.drifts) return colour;
  const double drift = Limit(0, 1, 2 * (1 - mask) * blur);
  return Lerp(colour, FarColour(block, pattern, edge), static_cast<float>(drift));
}

}  // namespace sorvanix
