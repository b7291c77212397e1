// Laws that hold across the noise types; the types themselves are tested in recipes_*_test.cpp.
#include "module/noise/catalogue.h"

#include <bit>
#include <cmath>
#include <limits>
#include <set>
#include <thread>

#include "tests/module/noise/noise_engine.h"

namespace sorvanix {
namespace {

using test::kRounding;
using test::Planar;
using test::Sample;
using test::Solid;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// The types whose planar and solid forms differ.
const std::set<std::int32_t> kTwins = {SmoothFractalType,     OffsetWarpType,  CellValueType,
                                       FractalCellType,       CellNearestType, CellSecondType,
                                       SparseConvolutionType, CellEdgeType};

/// The types that leave `absolute` out or hand it to the host alone.
const std::set<std::int32_t> kUnfolded = {
    HashBlockType,       UnitBlockType,  CellValueType,         WhiteRandomType,
    WarpedMagnitudeType, SparsePeakType, RemappedTurbulenceType};

class Catalogue : public test::NoiseEngine {
 protected:
  Catalogue() {
    fractalWeights = weights_;
    noise.Record(false);
    UseWaves();
  }
  ~Catalogue() override { fractalWeights = nullptr; }

  /// Noise that depends on all arguments and takes the ranges of real noise.
  void UseWaves() {
    const auto wave = [](double centre, double size) {
      return [=](const test::NoiseCall& call) {
        return centre + size * std::sin(3.1 * call.point.x + 5.3 * call.point.y +
                                        7.7 * call.point.z + 1.9 * call.time + 0.3 * call.octaves);
      };
    };
    noise.Set(Operation::SignedNoise, wave(0, 0.65));
    noise.Set(Operation::UnitNoise, wave(0.5, 0.25));
    noise.Set(Operation::UnitNoiseAt, wave(0.5, 0.25));
    noise.Set(Operation::Turbulence, wave(0, 1.75));
    noise.Set(Operation::BandTurbulence, wave(0.5, 0.5));
    noise.Set(Operation::FractalSum, wave(0, 1.5));
    noise.Set(Operation::FractalSumPoint, wave(0, 1.75));
    noise.Set(Operation::FractalRidged, wave(0.05, 0.55));
  }

  /// Noise that does not look at its point, so that it has a value at infinity too.
  void UseConstants() {
    const auto constant = [](double value) {
      return [value](const test::NoiseCall&) { return value; };
    };
    for (const Operation unit :
         {Operation::UnitNoise, Operation::UnitNoiseAt, Operation::BandTurbulence}) {
      noise.Set(unit, constant(0.6));
    }
    for (const Operation signedNoise :
         {Operation::SignedNoise, Operation::Turbulence, Operation::FractalSum,
          Operation::FractalSumPoint, Operation::FractalRidged}) {
      noise.Set(signedNoise, constant(-0.3));
    }
  }

  /// Samples in no pattern; without a footprint.
  Sample Next() {
    const auto next = [this] { return static_cast<float>(20 * random_.NextSigned()); };
    return {.x = next(),
            .y = next(),
            .z = next(),
            .octaves = static_cast<float>(8 * random_.Next01()),
            .time = next()};
  }

  float weights_[22] = {};
  SeededGenerator random_{1};
};

TEST_F(Catalogue, NumbersOffTheTableAreGrey) {
  noise.Record(true);
  for (const std::int32_t type : {-1, 30, 1000, std::numeric_limits<std::int32_t>::min()}) {
    for (const std::int32_t absolute : {0, 1}) {
      EXPECT_EQ(Planar(type, {.absolute = absolute, .footprint = 3}), 0.5f);
      EXPECT_EQ(Solid(type, {.absolute = absolute, .footprint = 3}), 0.5f);
    }
  }
  EXPECT_TRUE(noise.calls().empty());
}

TEST_F(Catalogue, PlanarAndSolidAgreeInTwentyTwoTypesAtAnyZ) {
  for (std::int32_t type = 0; type < kNoiseTypeCount; ++type) {
    bool differ = false;
    for (int i = 0; i < 100; ++i) {
      Sample sample = Next();
      if (i % 2 == 1) sample.footprint = 0.7f;
      if (i % 3 == 0) sample.absolute = 1;
      sharedGenerator.Reset(kNoiseSeed);
      const float planar = Planar(type, sample);
      sharedGenerator.Reset(kNoiseSeed);
      const float solid = Solid(type, sample);
      // Compared as bits, so that a NaN equals itself.
      differ |= std::bit_cast<std::uint32_t>(planar) != std::bit_cast<std::uint32_t>(solid);
    }
    EXPECT_EQ(differ, kTwins.count(type) == 1) << "type " << type;
  }
}

TEST_F(Catalogue, ThePlanarTwinsDoNotReadZ) {
  for (const std::int32_t type : kTwins) {
    if (type == FractalCellType) continue;  // its fractals do
    for (int i = 0; i < 20; ++i) {
      Sample sample = Next();
      const float value = Planar(type, sample);
      sample.z += 1.5f;
      EXPECT_EQ(Planar(type, sample), value) << "type " << type;
    }
  }
}

TEST_F(Catalogue, AbsoluteFoldsAroundTheMiddle) {
  // Turbulence without regard to `absolute`, so that the fold alone is seen.
  for (std::int32_t type = 0; type < kNoiseTypeCount; ++type) {
    for (int i = 0; i < 20; ++i) {
      Sample sample = Next();
      sample.footprint = i % 2 == 0 ? 0.0f : 0.7f;
      sharedGenerator.Reset(kNoiseSeed);
      const float value = Planar(type, sample);
      sample.absolute = -7;  // any nonzero number
      sharedGenerator.Reset(kNoiseSeed);
      const float absolute = Planar(type, sample);
      const float expected = kUnfolded.count(type) == 1 ? value : std::fabs(2 * value - 1);
      EXPECT_NEAR(absolute, expected, kRounding) << "type " << type;
    }
  }
}

/// A type with a common fade, and the mean that it fades to.
struct FadingType {
  NoiseType type;
  float mean;
};

class Fades : public test::NoiseEngine, public ::testing::WithParamInterface<FadingType> {
 protected:
  Fades() {
    // Constants, so that cut octaves change nothing.
    noise.SetConstant(Operation::UnitNoise, 0.8);
    noise.SetConstant(Operation::UnitNoiseAt, 0.6);
    noise.SetConstant(Operation::BandTurbulence, 0.9);
    noise.SetConstant(Operation::Turbulence, 0.3);
    noise.SetConstant(Operation::FractalSum, 0.2);
    noise.SetConstant(Operation::SignedNoise, 0.2);
  }
};

// 0.5 / (footprint * detail) is 1, then 0.5, then 0.25.
TEST_P(Fades, MoveTowardsTheMeanOnceTheFootprintPassesHalfACell) {
  const auto [type, mean] = GetParam();
  for (const auto catalogue : {Planar, Solid}) {
    const float value = catalogue(type, {});
    EXPECT_NE(value, mean);
    EXPECT_EQ(catalogue(type, {.footprint = 0.25f}), value);
    EXPECT_NEAR(catalogue(type, {.footprint = 0.5f}), value, kRounding);
    EXPECT_NEAR(catalogue(type, {.footprint = 1}), (value + mean) / 2, kRounding);
    EXPECT_NEAR(catalogue(type, {.footprint = 1, .detail = 2}), (value + 3 * mean) / 4, kRounding);
  }
}

TEST_P(Fades, EndAtTheMean) {
  const auto [type, mean] = GetParam();
  const float folded = kUnfolded.count(type) == 1 ? mean : std::fabs(2 * mean - 1);
  for (const auto catalogue : {Planar, Solid}) {
    EXPECT_NEAR(catalogue(type, {.footprint = 1e6f}), mean, kRounding);
    // The far field of an absolute type with mean 0.5 is black.
    EXPECT_NEAR(catalogue(type, {.absolute = 1, .footprint = 1e6f}), folded, 2 * kRounding);
  }
}

TEST_P(Fades, NeedAFootprintAndADetail) {
  const auto [type, mean] = GetParam();
  const float value = Planar(type, {});
  EXPECT_EQ(Planar(type, {.footprint = 0, .detail = 5}), value);
  EXPECT_EQ(Planar(type, {.footprint = 5, .detail = 0}), value);
  EXPECT_EQ(Planar(type, {.footprint = -5, .detail = -5}), value);
}

INSTANTIATE_TEST_SUITE_P(
    Types, Fades,
    ::testing::Values(FadingType{AxisWarpType, 0.5f}, FadingType{HashBlockType, 0.5f},
                      FadingType{UnitBlockType, 0.5f}, FadingType{TurbulentThresholdType, 0.5f},
                      FadingType{PlainUnitType, 0.5f}, FadingType{OffsetWarpType, 0.5f},
                      FadingType{BandTurbulenceType, 0.5f}, FadingType{CellValueType, 0.5f},
                      FadingType{FractalCellType, 0.5f}, FadingType{SparseConvolutionType, 0.5f},
                      FadingType{CellNearestType, 0.5f}, FadingType{CellSecondType, 0.75f},
                      FadingType{CellEdgeType, 0.25f}));

// A detail of 0 switches every filter off, whatever the footprint.
TEST_F(Catalogue, WithoutDetailAFootprintChangesNothing) {
  for (std::int32_t type = 0; type < kNoiseTypeCount; ++type) {
    if (type == WhiteRandomType) continue;
    for (int i = 0; i < 10; ++i) {
      Sample sample = Next();
      sample.detail = 0;
      const float value = Planar(type, sample);
      sample.footprint = 100;
      EXPECT_EQ(Planar(type, sample), value) << "type " << type;
    }
  }
}

// No assertion on the values: that each call returns, soon and without a trap, is the test. The
// sanitizer builds watch for conversions out of range.
TEST_F(Catalogue, AnyOctaveCountEnds) {
  noise.Record(true);
  for (std::int32_t type = 0; type < kNoiseTypeCount; ++type) {
    for (const float octaves : {kNan, kInfinity, -kInfinity, 1e30f, 1e9f, -5.0f}) {
      for (const float footprint : {0.0f, 1.0f, kInfinity, kNan}) {
        noise.Clear();
        Planar(type, {.octaves = octaves, .footprint = footprint});
        Solid(type, {.octaves = octaves, .footprint = footprint});
        // 256 turns and a last copy, two calls each, in two catalogues; 81 + 3 in FractalCellType.
        EXPECT_LE(noise.calls().size(), 2u * 2 * 257) << "type " << type << ", " << octaves;
      }
    }
  }
}

TEST_F(Catalogue, HugeCountsTurn256Times) {
  noise.Record(true);
  for (const NoiseType type : {PeakMagnitudeType, InvertedPeakType, SparsePeakType}) {
    noise.Clear();
    Planar(type, {.octaves = 1e30f});
    EXPECT_EQ(noise.callsOf(Operation::SignedNoise).size(), 257u) << "type " << type;
  }
}

// Where the host's noise has a value, so has every type, however wild the point is: a cell search
// finds nothing, and a lattice cell that cannot be numbered counts as empty.
TEST_F(Catalogue, AnyPointGivesAnAnswer) {
  UseConstants();
  for (std::int32_t type = 0; type < kNoiseTypeCount; ++type) {
    for (const float wild : {kNan, kInfinity, -kInfinity, 1e30f, -1e30f, 3e9f}) {
      const Sample sample = {.x = wild, .y = -wild, .z = wild, .octaves = 2.5f, .time = wild};
      EXPECT_TRUE(std::isfinite(Planar(type, sample))) << "type " << type << ", " << wild;
      EXPECT_TRUE(std::isfinite(Solid(type, sample))) << "type " << type << ", " << wild;
    }
  }
}

// A footprint that is no number does not filter. Only RidgeProductType reads the limit of its
// frequencies all the same, and is NaN with it.
TEST_F(Catalogue, AnyFootprintGivesAnAnswer) {
  UseConstants();
  for (std::int32_t type = 0; type < kNoiseTypeCount; ++type) {
    for (const float wild : {kNan, kInfinity, -kInfinity, 1e30f, -1e30f, 3e9f}) {
      const Sample sample = {.absolute = 1, .footprint = wild, .detail = wild};
      const bool isNan = type == RidgeProductType && std::isnan(wild);
      EXPECT_EQ(std::isnan(Planar(type, sample)), isNan) << "type " << type << ", " << wild;
      EXPECT_EQ(std::isfinite(Solid(type, sample)), !isNan) << "type " << type << ", " << wild;
    }
  }
}

/// The values of all types but white noise over a run of samples, as bits.
std::vector<std::uint32_t> ValuesOf(const std::vector<Sample>& samples) {
  std::vector<std::uint32_t> bits;
  for (std::int32_t type = 0; type < kNoiseTypeCount; ++type) {
    for (const Sample& sample : samples) {
      const float planar = Planar(type, sample), solid = Solid(type, sample);
      if (type == WhiteRandomType) continue;  // drawn, to disturb the others if it could
      bits.push_back(std::bit_cast<std::uint32_t>(planar));
      bits.push_back(std::bit_cast<std::uint32_t>(solid));
    }
  }
  return bits;
}

TEST_F(Catalogue, EightThreadsGiveTheValuesOfOne) {
  std::vector<Sample> samples;
  for (int i = 0; i < 20; ++i) samples.push_back(Next());
  std::vector<std::vector<std::uint32_t>> results(8);
  std::vector<std::thread> threads;
  for (auto& result : results) threads.emplace_back([&] { result = ValuesOf(samples); });
  for (std::thread& thread : threads) thread.join();
  const std::vector<std::uint32_t> alone = ValuesOf(samples);
  for (const auto& result : results) EXPECT_EQ(result, alone);
}

// Without a host table the operations answer neutral values, and nothing is called through null.
TEST_F(Catalogue, WithoutAHostEveryTypeStillAnswers) {
  hostApi.render = nullptr;
  for (std::int32_t type = 0; type < kNoiseTypeCount; ++type) {
    EXPECT_TRUE(std::isfinite(Planar(type, {}))) << "type " << type;
    EXPECT_TRUE(std::isfinite(Solid(type, {}))) << "type " << type;
  }
}

// Documents store these numbers.
TEST(NoiseType, NumbersNeverChange) {
  EXPECT_EQ(AxisWarpType, 0);
  EXPECT_EQ(DualScaleBandType, 1);
  EXPECT_EQ(SquaredFractalType, 2);
  EXPECT_EQ(HashBlockType, 3);
  EXPECT_EQ(BiasedSumType, 4);
  EXPECT_EQ(PeakMagnitudeType, 5);
  EXPECT_EQ(TurbulentUnitSumType, 6);
  EXPECT_EQ(SmoothFractalType, 7);
  EXPECT_EQ(InvertedPeakType, 8);
  EXPECT_EQ(HardBandType, 9);
  EXPECT_EQ(UnitBlockType, 10);
  EXPECT_EQ(TurbulentThresholdType, 11);
  EXPECT_EQ(PlainUnitType, 12);
  EXPECT_EQ(WarpedMagnitudeType, 13);
  EXPECT_EQ(RidgedBandType, 14);
  EXPECT_EQ(RidgeProductType, 15);
  EXPECT_EQ(DifferenceOctaveType, 16);
  EXPECT_EQ(WhiteRandomType, 17);
  EXPECT_EQ(SparsePeakType, 18);
  EXPECT_EQ(SoftBandType, 19);
  EXPECT_EQ(RemappedTurbulenceType, 20);
  EXPECT_EQ(OffsetWarpType, 21);
  EXPECT_EQ(BandTurbulenceType, 22);
  EXPECT_EQ(CellValueType, 23);
  EXPECT_EQ(FractalCellType, 24);
  EXPECT_EQ(SparseConvolutionType, 25);
  EXPECT_EQ(CellNearestType, 26);
  EXPECT_EQ(CellSecondType, 27);
  EXPECT_EQ(CellEdgeType, 28);
  EXPECT_EQ(RidgedPeakType, 29);
  EXPECT_EQ(kNoiseTypeCount, 30);
}

}  // namespace
}  // namespace sorvanix
