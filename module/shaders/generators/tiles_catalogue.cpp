// The table of tile patterns.
#include "module/shaders/generators/tiles_catalogue.h"

#include <utility>

#include "module/shaders/generators/tiles_families.h"

namespace sorvanix {

namespace {

// The scales of the patterns, as 32-bit numbers.
constexpr double kTriangleBlur = 8.6602545f;  // 10 x half the root of 3
constexpr double kHexagonBlur = 17.320509f;   // 10 x the root of 3
constexpr double kHexagonUnits = kHexagonBlur * 0.9;

#define PATTERN(function) #function, function

// The place in the list is the number in files: rows are never moved or removed.
constexpr TilePatternRow kRows[] = {
    {PATTERN(PatternGrid), "Checker", 10, 10, 10, 2},
    {PATTERN(PatternBrick), "Bricks", 5, 10, 10, 2},
    {PATTERN(PatternBrickThree), "Bricks, Three Colours", 5, 10, 10, 3},
    {PATTERN(PatternThirds), "Parquet, Three Colours", 5, 5, 15, 3},
    {PATTERN(PatternHexagon), "Triangles, Rows", 5, 5, kTriangleBlur, 2},
    {PATTERN(PatternHexagonOffset), "Triangles", 5, 5, kTriangleBlur, 2},
    {PATTERN(PatternHexagonThree), "Triangles, Three Colours", 5, 5, kTriangleBlur, 3},
    {PATTERN(PatternTriangle), "Hexagons, Three Colours", kHexagonUnits, kHexagonUnits,
     kHexagonBlur, 3},
    {PATTERN(PatternCracks), "Cracks", 10, 10, 10, 3, TileColours::Random},
    {PATTERN(PatternPlanks), "Planks", 2, 10, 10, 2},
    {PATTERN(PatternHalfSteps), "Stairs", 10, 20, 10, 2},
    {PATTERN(PatternHalfStepsThree), "Stairs, Three Colours", 10, 20, 10, 3},
    {PATTERN(PatternDots), "Dots", 10, 10, 10, 2},
    {PATTERN(PatternDotsStaggered), "Dots, Staggered", 10, 10, 10, 2},
    {PATTERN(PatternDotsThree), "Dots, Three Colours", 10, 10, 10, 3},
    {PATTERN(PatternStripes), "Stripes", 10, 10, 10, 2},
    {PATTERN(PatternStripesThree), "Stripes, Three Colours", 10, 10, 10, 3},
    {PATTERN(PatternRings), "Rings", 1, 1, 10, 2},
    {PATTERN(PatternRingsThree), "Rings, Three Colours", 1, 1, 10, 3},
    {PATTERN(PatternSineStripes), "Waves", 8, 8, 8, 2},
    {PATTERN(PatternSineStripesThree), "Waves, Three Colours", 8, 8, 8, 3},
    {PATTERN(PatternZigzag), "Zigzag", 8, 8, 8, 2},
    {PATTERN(PatternZigzagThree), "Zigzag, Three Colours", 8, 8, 8, 3},
    {PATTERN(PatternSpiral), "Spiral", 1, 1, 10, 2, TileColours::Index},
    {PATTERN(PatternSpiralThree), "Spiral, Three Colours", 1, 1, 10, 3, TileColours::Index},
    {PATTERN(PatternWedges), "Wedges", 1, 1, 1, 2, TileColours::IndexOrRandom, false},
    {PATTERN(PatternWedgesThree), "Wedges, Three Colours", 1, 1, 1, 3, TileColours::IndexOrRandom,
     false},
    {PATTERN(PatternLattice), "Weave", 5, 5, 15, 2},
};
static_assert(std::size(kRows) == kTilePatterns);

#undef PATTERN

Tile NoTile(const TilePlane&, double, double) noexcept { return {0, 1, 0, 0}; }
constexpr TilePatternRow kAllGrout = {"", NoTile, "", 0, 0, 0, 3};

template <std::size_t... number>
constexpr std::array<Choice, kTilePatterns> ChoicesOf(std::index_sequence<number...>) {
  return {{{static_cast<std::int32_t>(number), kRows[number].name, kRows[number].label}...}};
}

}  // namespace

constexpr std::array<Choice, kTilePatterns> kTilePatternChoices =
    ChoicesOf(std::make_index_sequence<kTilePatterns>());

const TilePatternRow& TilePatternOf(std::int32_t number) noexcept {
  const auto row = static_cast<std::uint32_t>(number);
  return row < kTilePatterns ? kRows[row] : kAllGrout;
}

}  // namespace sorvanix
