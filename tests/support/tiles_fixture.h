// What tests of Tiles share: the shader with a sample, and ways to see the height, the colour index
// and the random colour of the tile at a texture coordinate.
#pragma once

#include <cstdint>

#include "module/shaders/generators/tiles.h"
#include "tests/support/filter_fixture.h"

namespace sorvanix::test {

inline constexpr std::int32_t kTilePatternCount = 28;
inline constexpr std::int32_t kCracks = 8;

struct TilesTest : FilterTest<TilesBlock, PluginIdTiles> {
  TilesTest() {
    render.filteringOn = 1;
    sample.blurScale = 1;
  }

  FootprintBlock& Slot(int cpu) { return FilterTest::Slot(cpu, SlotStrideTiles); }

  Vector ColourAt(double u, double v) {
    sample.uvw = {static_cast<float>(u), static_cast<float>(v), 0};
    return shader.Output(sample);
  }

  // White tiles over black grout with a straight slope from 0 to 1: the colour is the height.
  void ShowHeights(std::int32_t pattern) {
    block.pattern = pattern;
    block.groutWidth = 0;
    block.bevel = 1;
    block.smoothBevel = block.randomColor = 0;
    block.groutColor = {0, 0, 0};
    block.color1 = block.color2 = block.color3 = {1, 1, 1};
  }
  double HeightAt(double u, double v) { return ColourAt(u, v).x; }

  // Without a bevel a tile shows its colour alone: the colour is the index.
  void ShowIndices(std::int32_t pattern) {
    block.pattern = pattern;
    block.bevel = 0;
    block.randomColor = 0;
    block.color1 = {1, 0, 0};
    block.color2 = {2, 0, 0};
    block.color3 = {3, 0, 0};
  }
  int IndexAt(double u, double v) { return static_cast<int>(ColourAt(u, v).x); }

  // Both at once, for one point.
  struct Seen {
    double height;
    int index;
  };
  Seen SeenAt(std::int32_t pattern, double u, double v) {
    ShowIndices(pattern);
    const int index = IndexAt(u, v);
    ShowHeights(pattern);
    return {HeightAt(u, v), index};
  }
};

}  // namespace sorvanix::test
