// Which points are one tile: told by the random colours, which go by the cell that a tile is named
// by.
#include <set>
#include <vector>

#include "tests/support/tiles_fixture.h"

namespace sorvanix::test {
namespace {

struct TilesCellsTest : TilesTest {
  // The place on the loop of the three colours, 0 to 3.
  double PlaceAt(std::int32_t pattern, double u, double v) {
    block.pattern = pattern;
    block.bevel = 0;
    block.randomColor = 1;
    block.color1 = {0, 0, 0};
    block.color2 = {1, 0, 0};
    block.color3 = {1, 1, 0};
    const Vector colour = ColourAt(u, v);
    if (colour.y == 0) return colour.x;
    return colour.x == 1 ? 1.0 + colour.y : 3.0 - colour.y;
  }
};

// Cell (0, 0) is hashed as (7, 0): P[0] = 225, P[225 + 7] = 88; the 89th number from the seed 665
// comes from the state 1633591866 and is 0.52140098: 3 x that.
TEST_F(TilesCellsTest, TheRandomColourIsThreeTimesTheHashOfTheCellAlongTheLoop) {
  EXPECT_NEAR(PlaceAt(0, 0.05, 0.05), 1.56420295, 1e-6);
}

TEST_F(TilesCellsTest, AllOfATileHasOneColourAndItsNeighboursHaveOthers) {
  const double place = PlaceAt(0, 0.05, 0.05);
  for (const auto& [u, v] : {std::pair{0.01, 0.01}, {0.09, 0.01}, {0.01, 0.09}, {0.09, 0.09}}) {
    EXPECT_EQ(PlaceAt(0, u, v), place);
  }
  EXPECT_NE(PlaceAt(0, 0.15, 0.05), place);
  EXPECT_NE(PlaceAt(0, 0.05, 0.15), place);
  EXPECT_NE(PlaceAt(0, -0.05, 0.05), place);
}

// The third strip of cell (0, 0), at x = 0.9, is named (16, 0), as is the first strip of the cell
// (16, 0). The second strip of cell (1, 0), at y = 0.5, is named (1, 7), as is the first of (1, 7).
TEST_F(TilesCellsTest, TheSecondAndThirdStripOfTheParquetCountSevenAndSixteenCellsOn) {
  EXPECT_EQ(PlaceAt(3, 0.18, 0.1), PlaceAt(3, 16.1 / 5, 0.1));
  EXPECT_EQ(PlaceAt(3, 0.3, 0.1), PlaceAt(3, 1.1 / 5, 7.5 / 5));
}

// The half triangles at the ends of two unit cells are one tile, x = 0.9 and 1.1, y = 0.1.
TEST_F(TilesCellsTest, TheTwoHalvesOfATriangleAreOneTile) {
  for (const std::int32_t pattern : {4, 5, 6}) {
    EXPECT_EQ(PlaceAt(pattern, 0.18, 0.02), PlaceAt(pattern, 0.22, 0.02)) << pattern;
    EXPECT_NE(PlaceAt(pattern, 0.18, 0.02), PlaceAt(pattern, 0.1, 0.12)) << pattern;
  }
}

// Around (0.1111, 0.1283), the middle of a hexagon of row 1, whose lower end lies in row 0.
TEST_F(TilesCellsTest, AHexagonIsOneTileAlsoWhereItReachesIntoTheRowBelow) {
  const double place = PlaceAt(7, 0.11111111, 0.12830006);
  for (const auto& [du, dv] : {std::pair{-0.01, -0.05},
                               {0.01, -0.05},
                               {-0.05, 0.02},
                               {0.05, -0.02},
                               {0.01, 0.05},
                               {-0.01, 0.05}}) {
    EXPECT_EQ(PlaceAt(7, 0.11111111 + du, 0.12830006 + dv), place) << du << " " << dv;
  }
}

// The strip along x of cell (0, 0), from 0.1 before to 0.1 behind; those beside it are others.
TEST_F(TilesCellsTest, AStripOfTheWeaveIsOneTileAlsoInItsNeighboursCells) {
  const double place = PlaceAt(27, 0.1, 0.1);
  EXPECT_EQ(PlaceAt(27, -0.02, 0.1), place);
  EXPECT_EQ(PlaceAt(27, 0.22, 0.1), place);
  EXPECT_NE(PlaceAt(27, 0.38, 0.1), place);
  EXPECT_NE(PlaceAt(27, 0.1, 0.02), place);
}

// Band 0, ring 0, and the grid's cell (0, 13): its row 13 is odd, so that x = -0.5 is moved to 0.5.
TEST_F(TilesCellsTest, ABandAndARingAreNamedByTheirNumberAndThirteenMore) {
  const double place = PlaceAt(0, -0.05, 1.35);
  EXPECT_EQ(PlaceAt(15, 0.05, 0), place);
  EXPECT_EQ(PlaceAt(17, 0.6, 0.5), place);
}

TEST_F(TilesCellsTest, CracksHaveColoursOfTheirOwnAlsoWithoutRandomColours) {
  block.groutWidth = 0;
  std::set<double> places;
  for (int i = 0; i < 100; ++i) {
    const double u = 0.137 * i, v = 0.37;
    places.insert(PlaceAt(kCracks, u, v));
    const Vector random = ColourAt(u, v);
    block.randomColor = 0;
    ExpectExactly(ColourAt(u, v), random);
  }
  EXPECT_GT(places.size(), 50u) << "not the three alone";
}

// Along a line through forty cells of points, in steps of 0.001 of a cell: heights begin at 0 on a
// border and rise by 2 a cell. Where three tiles meet they may break off.
TEST_F(TilesCellsTest, TheColourOfCracksChangesOnTheirBordersAlone) {
  constexpr double kStep = 1e-4, kV = 0.37;
  block.groutWidth = 0;
  std::vector<double> changes;
  double last = PlaceAt(kCracks, 0, kV);
  for (int i = 1; i < 40000; ++i) {
    const double place = PlaceAt(kCracks, i * kStep, kV);
    if (place != last) changes.push_back(i * kStep);
    last = place;
  }
  EXPECT_GT(changes.size(), 30u);
  ShowHeights(kCracks);
  int inside = 0;
  for (const double u : changes) {
    inside += HeightAt(u, kV) > 0.01 || HeightAt(u - kStep, kV) > 0.01 ? 1 : 0;
  }
  EXPECT_LE(inside, 2);
}

// Both sides of the seam at angle 0, on the left; also where the last wedge is cut short.
TEST_F(TilesCellsTest, TheWedgesCloseAtTheSeam) {
  for (const float arms : {1.0f, 2.0f, 0.55f}) {
    block.arms = arms;
    for (const std::int32_t pattern : {25, 26}) {
      EXPECT_EQ(PlaceAt(pattern, 0.3, 0.4999), PlaceAt(pattern, 0.3, 0.5001))
          << pattern << " with " << arms;
    }
  }
}

}  // namespace
}  // namespace sorvanix::test
