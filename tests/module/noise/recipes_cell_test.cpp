// Noise types that are a single look-up. Unless said otherwise the sample is (0.5, 1.25, 2.25) at
// time 0.75.
#include <cmath>

#include "module/noise/sparse_convolution.h"
#include "tests/module/noise/noise_engine.h"

namespace sorvanix {
namespace {

using test::kRounding;
using test::Planar;
using test::Sample;
using test::Solid;

class CellRecipes : public test::NoiseEngine {
 protected:
  void UseLinearNoise() {
    noise.Set(Operation::SignedNoise,
              test::LinearNoise{.x = 0.01, .y = 0.02, .z = 0.03, .time = 0.04});
    noise.Set(Operation::UnitNoiseAt,
              test::LinearNoise{.x = 0.01, .y = 0.02, .z = 0.05, .time = 0.1});
  }
};

// Signed: a (0, 0, z) = 0.0675 + 0.03, b (0, y, 0) = 0.025 + 0.03, c (x, 0, 0) = 0.005 + 0.03.
// Point (0.535, 1.305, 2.3475): 0.00535 + 0.0261 + 0.117375 + 0.075 = 0.223825.
TEST_F(CellRecipes, AxisWarpIsTheWarpOfAmountOne) {
  UseLinearNoise();
  EXPECT_NEAR(Planar(AxisWarpType, {}), 0.223825, kRounding);
  // With z = 0, as planar shaders pass it, the third axis reads a constant place: a = 0.03.
  // Point (0.535, 1.305, 0.03): 0.00535 + 0.0261 + 0.0015 + 0.075 = 0.10795.
  EXPECT_NEAR(Planar(AxisWarpType, {.z = 0}), 0.10795, kRounding);
}

// Cells w, z, y, x = 0, 2, 1, 0: P[0] = 225, P[225 + 2] = 85, P[85 + 1] = 80, P[80 + 0] = 170.
TEST_F(CellRecipes, HashBlockIsTheHashOfTheCell) {
  EXPECT_EQ(Planar(HashBlockType, {}), std::fabs(NoiseValueTable[170]));
  EXPECT_TRUE(noise.calls().empty());
}

TEST_F(CellRecipes, HashBlockChangesAtWholeTimeSteps) {
  EXPECT_EQ(Planar(HashBlockType, {.time = 0.9f}), Planar(HashBlockType, {.time = 0.1f}));

  EXPECT_NE(Planar(HashBlockType, {.time = 1.1f}), Planar(HashBlockType, {.time = 0.9f}));
}

// 0.99995 * 1.0001 = 1.00005 lies in cell 1, -0.0 in cell 0, -0.00001 in cell -1.
TEST_F(CellRecipes, BlocksAreALittleStretched) {
  Planar(UnitBlockType, {.x = 0.99995f, .y = 0.9998f, .z = -1e-5f});
  EXPECT_POINT(noise.calls().back().point, 1, 0, -1);
  EXPECT_EQ(Planar(HashBlockType, {.x = 0.99995f}), Planar(HashBlockType, {.x = 1.5f}));
  EXPECT_NE(Planar(HashBlockType, {.x = 0.9998f}), Planar(HashBlockType, {.x = 1.5f}));
}

// Cell (0, 1, 2): 0.02 + 0.1 + 0.075, time unrounded.
TEST_F(CellRecipes, UnitBlockReadsTheCellAtTheTime) {
  UseLinearNoise();
  EXPECT_NEAR(Planar(UnitBlockType, {}), 0.195, kRounding);
  EXPECT_POINT(noise.calls().back().point, 0, 1, 2);
  EXPECT_EQ(noise.calls().back().time, 0.75f);
}

// 0.005 + 0.025 + 0.1125 + 0.075
TEST_F(CellRecipes, PlainUnitIsTheUnitNoise) {
  UseLinearNoise();
  EXPECT_NEAR(Planar(PlainUnitType, {}), 0.2175, kRounding);
}

// States 45999954 and 1042576503 over 2^31: a new number at each call, whatever the arguments.
TEST_F(CellRecipes, WhiteRandomDrawsFromTheSharedGenerator) {
  const Sample filtered = {.absolute = 1, .footprint = 10};
  EXPECT_EQ(Planar(WhiteRandomType, filtered), static_cast<float>(45999954 / 2147483648.0));
  EXPECT_EQ(Solid(WhiteRandomType, filtered), static_cast<float>(1042576503 / 2147483648.0));
  EXPECT_EQ(sharedGenerator.state, 1042576503u);
}

// Planar: a (13.5, 0.25, 4) = 0.135 + 0.005 + 0.12 + 0.03 = 0.29; b (-1.5, 8.25, 8) = -0.015 +
// 0.165
// + 0.24 + 0.03 = 0.42; point (0.92, 1.54, 0): 0.0092 + 0.0308 + 0.075 = 0.115.
// Solid: a (17.5, 9.25, -1.75) = 0.175 + 0.185 - 0.0525 + 0.03 = 0.3375; b (13.5, 0.25, 6.25)
// = 0.135 + 0.005 + 0.1875 + 0.03 = 0.3575; c (-1.5, 8.25, 10.25) = -0.015 + 0.165 + 0.3075 + 0.03
// = 0.4875; point (0.9875, 1.6075, 2.5875): 0.009875 + 0.03215 + 0.129375 + 0.075 = 0.2464.
TEST_F(CellRecipes, OffsetWarpTakesZInSpaceOnly) {
  UseLinearNoise();
  EXPECT_NEAR(Planar(OffsetWarpType, {}), 0.115, kRounding);
  EXPECT_NEAR(Solid(OffsetWarpType, {}), 0.2464, kRounding);
}

/// With noise 0.5 all feature points lie at the centres of their cells.
class CentredCells : public test::NoiseEngine {
 protected:
  CentredCells() { noise.SetConstant(Operation::UnitNoiseAt, 0.5); }
};

// Nearest points (0.5, 1.5, 0) and (0.5, 1.5, 2.5), read 10 further along x:
// 0.02 * 10.5 + 0.1 * 1.5 = 0.36, and 0.04 * 2.5 more in space.
TEST_F(CentredCells, CellValueIsFlatOverACell) {
  noise.Set(Operation::UnitNoise, test::LinearNoise{.x = 0.02, .y = 0.1, .z = 0.04});
  EXPECT_NEAR(Planar(CellValueType, {}), 0.36, kRounding);
  EXPECT_NEAR(Solid(CellValueType, {}), 0.46, kRounding);
  EXPECT_EQ(Planar(CellValueType, {.x = 0.75f, .y = 1.75f}), Planar(CellValueType, {}));
}

// Plane: centres (0.5, 1.5) at 0.25 and (0.5, 0.5) at 0.75.
// Space: (0.5, 1.5, 2.5) at sqrt(1/16 + 1/16) and (0.5, 0.5, 2.5) at sqrt(9/16 + 1/16).
TEST_F(CentredCells, NearestSecondAndEdge) {
  EXPECT_NEAR(Planar(CellNearestType, {}), 0.25, kRounding);
  EXPECT_NEAR(Planar(CellSecondType, {}), 0.75, kRounding);
  EXPECT_NEAR(Planar(CellEdgeType, {}), 0.5, kRounding);
  EXPECT_NEAR(Solid(CellNearestType, {}), std::sqrt(0.125), kRounding);
  EXPECT_NEAR(Solid(CellSecondType, {}), std::sqrt(0.625), kRounding);
  EXPECT_NEAR(Solid(CellEdgeType, {}), std::sqrt(0.625) - std::sqrt(0.125), kRounding);
}

// In space the layers above and below z = 0 hold points at 0.5, which the plane does not have:
// 0.25 there, sqrt(1/16 + 1/4) here.
TEST_F(CentredCells, SpaceAtZeroIsNotThePlane) {
  EXPECT_NEAR(Planar(CellNearestType, {.z = 0}), 0.25, kRounding);
  EXPECT_NEAR(Solid(CellNearestType, {.z = 0}), std::sqrt(0.3125), kRounding);
}

// Noise 0.3 puts all points at the lower corners of their cells, where a jitter of 1 ends.
// From (0.375, 1.25) to (0, 1): 9/64 + 4/64; to (1, 1): 25/64 + 4/64. In space z = 2.25 adds 4/64.
TEST_F(CentredCells, SearchesUseAJitterOfOneAndTheTime) {
  noise.SetConstant(Operation::UnitNoiseAt, 0.3);
  noise.Set(Operation::UnitNoise, test::LinearNoise{.x = 0.02, .y = 0.1, .z = 0.04});
  const Sample sample = {.x = 0.375f};
  const double planarNearest = std::sqrt(13.0 / 64), planarSecond = std::sqrt(29.0 / 64);
  const double solidNearest = std::sqrt(17.0 / 64), solidSecond = std::sqrt(33.0 / 64);
  // The value at (10, 1, 0) and (10, 1, 2).
  EXPECT_NEAR(Planar(CellValueType, sample), 0.3, kRounding);
  EXPECT_NEAR(Solid(CellValueType, sample), 0.38, kRounding);
  // Without a fractal the displaced search is that of the nearest.
  for (const NoiseType type : {FractalCellType, CellNearestType}) {
    EXPECT_NEAR(Planar(type, sample), planarNearest, kRounding) << type;
    EXPECT_NEAR(Solid(type, sample), solidNearest, kRounding) << type;
  }
  EXPECT_NEAR(Planar(CellSecondType, sample), planarSecond, kRounding);
  EXPECT_NEAR(Solid(CellSecondType, sample), solidSecond, kRounding);
  EXPECT_NEAR(Planar(CellEdgeType, sample), planarSecond - planarNearest, kRounding);
  EXPECT_NEAR(Solid(CellEdgeType, sample), solidSecond - solidNearest, kRounding);
  for (const auto& call : noise.callsOf(Operation::UnitNoiseAt)) EXPECT_EQ(call.time, 0.75f);
}

// Time is the third coordinate of the plane and the fourth of space.
TEST_F(CellRecipes, SparseConvolutionIsRemappedFromSigned) {
  EXPECT_FLOAT_EQ(Planar(SparseConvolutionType, {}),
                  (SparseConvolution3(0.5f, 1.25f, 0.75f) + 1) * 0.5f);
  EXPECT_FLOAT_EQ(Solid(SparseConvolutionType, {}),
                  (SparseConvolution4(0.5f, 1.25f, 2.25f, 0.75f) + 1) * 0.5f);
  EXPECT_NE(Planar(SparseConvolutionType, {}), Solid(SparseConvolutionType, {}));
}

}  // namespace
}  // namespace sorvanix
