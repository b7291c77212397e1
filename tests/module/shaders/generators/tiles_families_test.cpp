// The geometry of the twenty-eight patterns at points computed by hand.
//
// The derivations give the point in the pattern's own units (x, y): u and v times the scales of the
// first comment of each group. The height is 0 in the middle of the grout and 1 inside a tile.
#include "tests/support/tiles_fixture.h"

namespace sorvanix::test {
namespace {

struct KnownTile {
  std::int32_t pattern;
  double u, v;
  double height;
  int index;
};

struct TilesFamiliesTest : TilesTest {
  void ExpectTiles(std::initializer_list<KnownTile> tiles) {
    for (const KnownTile& tile : tiles) {
      const Seen seen = SeenAt(tile.pattern, tile.u, tile.v);
      EXPECT_NEAR(seen.height, tile.height, 2e-5)
          << "pattern " << tile.pattern << " at " << tile.u << ", " << tile.v;
      EXPECT_EQ(seen.index, tile.index)
          << "pattern " << tile.pattern << " at " << tile.u << ", " << tile.v;
    }
  }
};

// Scales 10, 10; slopes are half a cell wide.
TEST_F(TilesFamiliesTest, Grid) {
  ExpectTiles({
      {0, 0.03, 0.06, 0.6, 1},   // (0.3, 0.6): min(0.3 / 0.5, 0.4 / 0.5)
      {0, 0.13, 0.06, 0.6, 2},   // column 1
      {0, 0.03, 0.16, 0.6, 2},   // row 1, moved to column 1
      {0, 0.13, 0.16, 0.6, 1},   // and to column 2
      {0, 0.05, 0.05, 1, 1},     // the middle
      {0, -0.05, 0.05, 1, 2},    // column -1
      {0, -0.05, -0.03, 0.6, 1}  // row -1, column -1 moved to 0
  });
}

// Scales 5, 10; slopes 0.25 at the ends, 0.5 along the sides. Odd rows move by half a brick.
TEST_F(TilesFamiliesTest, Brick) {
  ExpectTiles({
      {1, 0.01, 0.05, 0.2, 1},   // (0.05, 0.5): 0.05 / 0.25
      {1, 0.05, 0.03, 0.6, 1},   // (0.25, 0.3): 0.3 / 0.5
      {1, 0.05, 0.13, 0.6, 1},   // row 1: x = 0.25 + 0.5
      {1, 0.15, 0.13, 0.6, 2},   // x = 0.75 + 0.5, column 1
      {1, 0.098, 0.15, 0.04, 1}  // x = 0.49 + 0.5: 0.01 / 0.25
  });
}

// As Brick; 1 to 3 by row + oddness of the column.
TEST_F(TilesFamiliesTest, BrickThree) {
  ExpectTiles({
      {2, 0.05, 0.03, 0.6, 1},  // row 0, column 0
      {2, 0.25, 0.03, 0.6, 2},  // row 0, column 1
      {2, 0.15, 0.13, 0.6, 3},  // row 1, column 1
      {2, 0.25, 0.23, 0.6, 1},  // row 2, column 1: 3 wraps to 1
      {2, 0.05, 0.23, 0.6, 3},  // row 2, column 0
      {2, 0.05, -0.03, 0.6, 3}  // row -1, x = 0.25 + 0.5: column 0, -1 is 2 of three
  });
}

// Scales 5, 5; slopes a sixth of a cell. Strips run along x where the parities differ.
TEST_F(TilesFamiliesTest, Thirds) {
  ExpectTiles({
      {3, 0.02, 0.1, 0.6, 1},  // (0.1, 0.5), strip 1 along y: 0.1 x 6
      {3, 0.1, 0.02, 0.6, 2},  // (0.5, 0.1), strip 2: its end 0.1 x 6
      {3, 0.18, 0.1, 0.6, 3},  // (0.9, 0.5), strip 3
      {3, 0.3, 0.04, 0.8, 1},  // (1.5, 0.2), strip 1 along x: (1/3 - 0.2) x 6
      {3, 0.3, 0.1, 1, 2},     // (1.5, 0.5), strip 2
      {3, 0.3, 0.18, 0.6, 3},  // (1.5, 0.9), strip 3
      {3, 0.3, 0.3, 1, 2}      // (1.5, 1.5): along y again
  });
}

// Scale 5; a row is 0.8660254 high. In the middle of a triangle all sides are 0.28867513 away,
// which is height 1; the height is the distance x 3.4641016.
TEST_F(TilesFamiliesTest, TrianglesInRows) {
  ExpectTiles({
      {4, 0.1, 0.11547005, 1, 1},           // (0.5, 0.57735027): the middle of one on its corner
      {4, 0, 0.05773503, 1, 2},             // (0, 0.28867513): the middle of one on its side
      {4, 0.2, 0.05773503, 1, 2},           // the next
      {4, 0.02, 0.02, 0.34641016, 2},       // (0.1, 0.1): the side is 0.1 away
      {4, 0.1, 0.15320508, 0.34641016, 1},  // (0.5, 0.7660254): the upper side is 0.1 away
      {4, 0.1, 0.28867513, 1, 1}            // the next row is not moved
  });
}

// As before, but odd rows move by half a side.
TEST_F(TilesFamiliesTest, Triangles) {
  ExpectTiles({
      {5, 0.1, 0.11547005, 1, 1},
      {5, 0, 0.05773503, 1, 2},
      {5, 0, 0.28867513, 1, 1},  // row 1: x = 0.5
      {5, 0.1, 0.28867513, 0.5,
       2}  // x = 1: 0.16666667 x 0.8660254 from the slope, half the inradius
  });
}

// As before; 1 to 3 by row, and one more for those on a side.
TEST_F(TilesFamiliesTest, TrianglesThree) {
  ExpectTiles({
      {6, 0.1, 0.11547005, 1, 1},  // row 0
      {6, 0, 0.05773503, 1, 2},
      {6, 0, 0.28867513, 1, 2},  // row 1
      {6, 0.1, 0.28867513, 0.5, 3},
      {6, 0.1, 0.46188022, 1, 3},  // row 2
      {6, 0, 0.40414519, 1, 1}     // row 2, on a side: 3 wraps to 1
  });
}

// Scale 17.320509 x 0.9 = 15.588458. A hexagon is 1.7320508 wide; the rows are 1.5 apart, with
// middles at y = 0.5 + 1.5 row. The height is the distance to the nearest side / 0.8660254.
TEST_F(TilesFamiliesTest, Hexagons) {
  ExpectTiles({
      {7, 0.05555556, 0.03207501, 1, 1},    // (0.8660254, 0.5): row 0, column 0
      {7, 0.16666667, 0.03207501, 1, 2},    // column 1
      {7, 0.27777778, 0.03207501, 1, 3},    // column 2
      {7, 0, 0.12830006, 1, 2},             // (0, 2): row 1, column 0 is colour 2
      {7, 0.11111111, 0.12830006, 1, 3},    // row 1, column 1
      {7, 0.11111111, 0.08981003, 0.4, 3},  // (1.7320508, 1.4), in the top of row 0: 0.6 below the
                                            // middle of row 1's, 0.8660254 x 0.4 from its side
      {7, 0.01, 0.03207501, 0.18, 1},       // 0.15588458 from the upright side
      {7, 0.05555556, 0.22452509, 1, 1}     // (0.8660254, 3.5): row 2 is as row 0
  });
}

// Scales 2, 10; slopes 0.1 at the ends. Row r slides by 7 x its hash: P[0] = 225, the 226th number
// from the seed 665 comes from the state 986978327 and is -0.080804803, so that row 0 slides by
// 0.56563362; P[1] = 155 is 884397261, -0.17634087, so that row 1 slides by 1.23438606.
TEST_F(TilesFamiliesTest, Planks) {
  ExpectTiles({
      {9, 0, 0.03, 0.6, 1},            // x = 0.56563362
      {9, 0.227, 0.05, 0.1963362, 2},  // x = 0.454 + 0.56563362: 0.01963362 / 0.1, column 1
      {9, 0.05, 0.13, 0.6, 2},         // row 1, x = 0.1 + 1.23438606
      {9, 0.727, 0.05, 0.1963362, 1}   // one plank on: the same slide along the whole row
  });
}

// Scales 10, 20; slopes 0.25 at the ends. Row r moves by r / 2.
TEST_F(TilesFamiliesTest, Stairs) {
  ExpectTiles({
      {10, 0.025, 0.0125, 0.5, 1},  // (0.25, 0.25)
      {10, 0.125, 0.0125, 0.5, 2},  // column 1
      {10, 0.075, 0.0625, 0.5, 2},  // row 1: x = 0.75 + 0.5
      {10, 0.025, 0.1125, 0.5, 2},  // row 2: x = 0.25 + 1
      {10, 0.01, 0.025, 0.4, 1}     // (0.1, 0.5): 0.1 / 0.25
  });
}

// As Stairs; 1 to 3 by column + row.
TEST_F(TilesFamiliesTest, StairsThree) {
  ExpectTiles({
      {11, 0.025, 0.0125, 0.5, 1},
      {11, 0.125, 0.0125, 0.5, 2},
      {11, 0.225, 0.0125, 0.5, 3},
      {11, 0.075, 0.0625, 0.5, 3},  // row 1, column 1
      {11, 0.025, 0.1125, 0.5, 1}   // row 2, column 1: 3 wraps to 1
  });
}

// Scale 10; the height is 1 - 2 r around the middle of a cell. Colour 2 on odd rows.
TEST_F(TilesFamiliesTest, Dots) {
  ExpectTiles({
      {12, 0.05, 0.05, 1, 1},
      {12, 0.05, 0.15, 1, 2},
      {12, 0.15, 0.05, 1, 2},    // odd columns move by a whole row: the dots stay, colours change
      {12, 0.08, 0.05, 0.4, 1},  // r = 0.3
      {12, 0.07, 0.07, 1 - 2 * 0.28284271, 1},
      {12, 0.01, 0.01, 0, 1}  // beyond the dot
  });
}

TEST_F(TilesFamiliesTest, DotsStaggered) {
  ExpectTiles({
      {13, 0.05, 0.05, 1, 1},
      {13, 0.15, 0.1, 1, 2},     // column 1: y = 1 + 0.5, row 1
      {13, 0.15, 0.02, 0.6, 1},  // y = 0.2 + 0.5: r = 0.2
      {13, 0.15, 0.2, 1, 1}      // y = 2 + 0.5, row 2
  });
}

// 1 to 3 by row + oddness of the column.
TEST_F(TilesFamiliesTest, DotsThree) {
  ExpectTiles({
      {14, 0.05, 0.05, 1, 1},
      {14, 0.05, 0.15, 1, 2},
      {14, 0.05, 0.25, 1, 3},
      {14, 0.15, 0.1, 1, 3},  // column 1, row 1
      {14, 0.15, 0.2, 1, 1}   // column 1, row 2: 3 wraps to 1
  });
}

// Scale 10; v does not count.
TEST_F(TilesFamiliesTest, Stripes) {
  ExpectTiles({{15, 0.025, 0.77, 0.5, 1},  // x = 0.25
               {15, 0.15, -3, 1, 2},
               {15, -0.05, 0, 1, 2},  // band -1
               {16, 0.05, 0, 1, 1},
               {16, 0.15, 0, 1, 2},
               {16, 0.25, 0, 1, 3},
               {16, 0.35, 0, 1, 1},
               {16, -0.05, 0, 1, 3}});
}

// Scale 8; x moves by sin(pi y) / 4.
TEST_F(TilesFamiliesTest, SineStripes) {
  ExpectTiles({{19, 0.0625, 0, 1, 1},         // x = 0.5
               {19, 0.0625, 0.0625, 0.5, 1},  // y = 0.5: x = 0.75
               {19, 0.0625, 0.1875, 0.5, 1},  // y = 1.5: x = 0.25
               {19, 0.1875, 0, 1, 2},
               {20, 0.0625, 0, 1, 1},
               {20, 0.1875, 0, 1, 2},
               {20, 0.3125, 0, 1, 3}});
}

// Scale 8; x moves by a tent that is 0 at even y and 1 at odd y.
TEST_F(TilesFamiliesTest, Zigzag) {
  ExpectTiles({
      {21, 0.0625, 0, 1, 1},          // x = 0.5
      {21, 0.0625, 0.125, 1, 2},      // y = 1: x = 1.5
      {21, 0.03125, 0.0625, 0.5, 1},  // y = 0.5: x = 0.25 + 0.5
      {21, 0.0625, 0.25, 1, 1},       // y = 2: back again
      {22, 0.1875, 0.125, 1, 3}       // x = 1.5 + 1
  });
}

// c = 10 x the distance from (0.5, 0.5). Tile n reaches from c = n + 0.5 to n + 1.5.
TEST_F(TilesFamiliesTest, Rings) {
  ExpectTiles({{17, 0.5, 0.5, 1, 2},       // tile -1
               {17, 0.525, 0.5, 0.5, 2},   // c = 0.25
               {17, 0.6, 0.5, 1, 1},       // c = 1, tile 0
               {17, 0.5, 0.3, 1, 2},       // c = 2
               {17, 0.515, 0.48, 0.5, 2},  // 10 x 0.025
               {17, 1.6, -0.5, 1, 1},      // each texture tile has its own rings
               {18, 0.5, 0.5, 1, 3},       // -1 is 2 of three
               {18, 0.6, 0.5, 1, 1},
               {18, 0.5, 0.7, 1, 2},
               {18, 0.2, 0.5, 1, 3}});
}

// Twice as wide, a texture tile is 0.5 of the plane: x = 0.35 is 0.1 from its middle, 0.25, so that
// c = 1. A tile as wide as high would have its middle at 0.5, 0.15 away.
TEST_F(TilesFamiliesTest, AnAxisScaleAlsoScalesTheTextureTileOfRings) {
  block.scaleU = 2;
  ExpectTiles({{17, 0.7, 0.5, 1, 1}, {17, 1.7, 0.5, 1, 1}});
  block.scaleU = 1;
  block.scaleV = 2;
  ExpectTiles({{17, 0.5, 0.7, 1, 1}});
}

// c = 10 x (angle / 10 pi + distance). The angle is 0 on the left, pi / 2 below, pi on the right,
// 3 pi / 2 above, where v is greater.
TEST_F(TilesFamiliesTest, Spiral) {
  ExpectTiles({
      {23, 0.6, 0.5, 1, 2},          // 10 x (0.1 + 0.1) = 2, tile 1
      {23, 0.5, 0.62, 0.4, 1},       // 10 x (0.15 + 0.12) = 2.7, tile 2
      {23, 0.5, 0.65, 1, 1},         // 10 x (0.15 + 0.15) = 3, tile 2
      {23, 0.4, 0.5, 1, 1},          // 10 x (0.2 + 0.1) = 3: v at the middle is above
      {23, 0.4, 0.4, 0.3284271, 2},  // 10 x (0.025 + 0.14142136) = 1.6642136, tile 1
      {23, 0.6, 0.4, 0.6715729, 2}   // 10 x (0.075 + 0.14142136) = 2.1642136, tile 1
  });
}

// With two arms: 10 x (2 pi / 10 pi + 0.1) = 3, tile 2. One arm would be on tile 1.
TEST_F(TilesFamiliesTest, ArmsMultiplyTheTurnsOfASpiral) {
  block.arms = 2;
  ExpectTiles({{23, 0.6, 0.5, 1, 1}});
}

// As before with 3 / 20 pi.
TEST_F(TilesFamiliesTest, SpiralThree) {
  ExpectTiles({
      {24, 0.65, 0.5, 1, 3},   // 10 x (0.15 + 0.15) = 3, tile 2
      {24, 0.5, 0.4, 0.5, 2},  // 10 x (0.075 + 0.1) = 1.75, tile 1
      {24, 0.5, 0.7, 0.5, 1}   // 10 x (0.225 + 0.2) = 4.25, tile 3
  });
}

// c = 10 x angle / 2 pi.
TEST_F(TilesFamiliesTest, Wedges) {
  ExpectTiles({
      {25, 0.6, 0.5, 1, 1},            // pi: c = 5, tile 4
      {25, 0.55, 0.4, 0.5241632, 1},   // pi - atan(2) = 2.0344439: c = 3.2379184, tile 2
      {25, 0.6, 0.4, 0.5, 2},          // 3 pi / 4: c = 3.75, tile 3
      {25, 0.3, 0.499, 0.9840845, 2},  // 0.0049999583: c = 0.0079577; the last tile, 9
      {25, 0.3, 0.501, 0.9840845, 2}   // as much before 2 pi: tile 9
  });
}

// With two arms twice as many, c = 10 x 2 x 2.0344439 / 2 pi = 6.4758368: tile 5.
TEST_F(TilesFamiliesTest, ArmsMultiplyTheWedges) {
  block.arms = 2;
  ExpectTiles({{25, 0.55, 0.4, 0.0483264, 2}});
}

// c = 9 x angle / 2 pi.
TEST_F(TilesFamiliesTest, WedgesThree) {
  ExpectTiles({{26, 0.5, 0.6, 0.5, 1},          // 3 pi / 2: c = 6.75, tile 6
               {26, 0.4, 0.6, 0.75, 2},         // 7 pi / 4: c = 7.875, tile 7
               {26, 0.3, 0.499, 0.9856760, 3},  // c = 0.0071620; the last tile, 8
               {26, 0.3, 0.501, 0.9856760, 3}});
}

// Scale 5; slopes a sixth. A strip fills 1/6 to 5/6 of its cell; the one on top runs on for 1/6.
TEST_F(TilesFamiliesTest, Weave) {
  ExpectTiles({
      {27, 0.1, 0.1, 1, 1},     // (0.5, 0.5): along x on top
      {27, 0.1, 0.05, 0.5, 1},  // (0.5, 0.25): (0.25 - 1/6) x 6
      {27, 0.3, 0.1, 1, 2},     // (1.5, 0.5): along y on top
      {27, 0.25, 0.1, 0.5, 2},  // (1.25, 0.5)
      {27, 0.22, 0.1, 0.4, 1},  // (1.1, 0.5): the strip along x dives under: (1/6 - 0.1) x 6
      {27, 0.38, 0.1, 0.4, 1},  // (1.9, 0.5): and comes up again
      {27, 0.1, 0.02, 0.4, 2},  // (0.5, 0.1): the strip along y of the cell below
      {27, 0.1, 0.18, 0.4, 2},  // (0.5, 0.9): and of the one above
      {27, 0.02, 0.02, 0, 2},   // (0.1, 0.1): an open corner
      {27, 0.3, 0.3, 1, 1}      // (1.5, 1.5)
  });
}

// Twice as wide: x is half of what it was, and the slopes along it are a twelfth of a cell.
TEST_F(TilesFamiliesTest, SlopesOfStretchedStripsKeepTheirWidth) {
  block.scaleU = 2;
  ExpectTiles({
      {3, 0.02, 0.1, 0.6, 1},   // (0.05, 0.5), strip 1 along y: 0.05 x 12
      {27, 0.48, 0.1, 0.4, 2},  // (1.2, 0.5): (0.2 - 1/6) x 12
      {27, 0.44, 0.1, 0.8, 1}   // (1.1, 0.5), where the strip along x dives: (1/6 - 0.1) x 12
  });
  block.scaleU = 1;
  block.scaleV = 2;
  ExpectTiles({{3, 0.1, 0.02, 0.6, 2}});  // (0.5, 0.05), strip 2: its end 0.05 x 12
}

}  // namespace
}  // namespace sorvanix::test
