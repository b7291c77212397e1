// Tiles: twenty-eight patterns of tiles and grout over a surface's texture coordinates.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The parameter block: 32 words. Values are as they come; only the dialog limits them.
struct TilesBlock {
  std::int32_t pattern;      ///< row of kTilePatterns, 0 to 27
  std::int32_t orientation;  ///< 1 exchanges the two axes
  std::int32_t globalMode;
  float globalScale;  ///< divides both axes
  float scaleU;       ///< divides u
  float scaleV;       ///< divides v
  float arms;         ///< of spirals; a tenth of a circle's wedges
  float groutWidth;   ///< height of a tile's slope up to which only grout shows
  float bevel;        ///< share of the rest of the slope over which grout turns to tile
  Vector groutColor;
  Vector color1;
  Vector color2;
  Vector color3;
  std::int32_t smoothBevel;
  std::int32_t randomColor;
  std::int32_t reserved23;
  std::int32_t reserved24;
  std::int32_t alternate;
  std::int32_t reserved26;
  std::int32_t nested;  ///< set by an enclosing filter, word 27
  std::int32_t reserved28[2];
  std::int32_t reserved30;
  float bumpStepScale;  ///< multiplies the bump step
};

extern const ShaderTable kTilesTable;

void FillTilesRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
