// The twenty-eight tile patterns as data: how each lies on a texture, and how it is coloured.
#pragma once

#include <array>
#include <cstdint>

#include "module/shaders/generators/tiles_shape.h"
#include "module/shell/shader_table.h"

namespace sorvanix {

inline constexpr std::size_t kTilePatterns = 28;

/// What chooses the colour of a tile.
enum class TileColours : std::uint8_t {
  IndexOrRandom,  ///< its index, or its hash where the shader asks for random colours
  Index,          ///< always its index: where a spiral's turns meet, the cells differ
  Random          ///< always its hash; such tiles have no hard edge
};

struct TilePatternRow {
  const char* name;
  PatternFunction* tileAt;
  const char* label;
  double unitsX, unitsY;  ///< the pattern's units along one unit of the shader's point
  double blurUnits;       ///< the same for the size of a sample
  int colorCount;         ///< how many colours the indices take: 2 or 3
  TileColours colours = TileColours::IndexOrRandom;
  bool drifts = true;  ///< blurred grout takes on the mean colour of the whole
};

/// The pattern with this number. A number off the table gives one that is all grout or, without a
/// bevel, all one tile.
const TilePatternRow& TilePatternOf(std::int32_t number) noexcept;

/// The patterns by number, as materials, dialogs and the manual show them.
extern const std::array<Choice, kTilePatterns> kTilePatternChoices;

}  // namespace sorvanix
