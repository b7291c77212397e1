// Range and behaviour of each noise operation of the contract.
#include "host/noise/noise_services.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>

#include "tests/host/noise/noise_statistics.h"

namespace sorvanix::host {
namespace {

using testing::Random;
using testing::Samples;

constexpr float Infinity = std::numeric_limits<float>::infinity();
constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();

using Weights = std::array<float, FractalWeightsSize / sizeof(float)>;

Weights UsualWeights() {
  Weights weights{};
  FractalInit(weights.data(), 21, 2.1F, 0.5F);
  return weights;
}

const Weights Usual = UsualWeights();

TEST(SignedNoiseTest, TopsOutNearTwoThirds) {
  const Samples samples = Samples::Of([](const Vector& p, float t) { return SignedNoise(&p, t); });
  EXPECT_NEAR(samples.Mean(), 0.0, 0.0011);
  EXPECT_NEAR(samples.Skewness(), 0.0, 0.02);
  EXPECT_GT(samples.Share(-0.65F, 0.65F), 0.9998);
  EXPECT_LT(samples.Share(-0.55F, 0.55F), 0.9985);
  // Contrast: a good part lies in the outer half of -0.65..0.65.
  EXPECT_LT(samples.Share(-0.325F, 0.325F), 0.92);
  EXPECT_GE(samples.Lowest(), -1.0F);
  EXPECT_LE(samples.Highest(), 1.0F);
}

void ExpectUnitRange(const Samples& samples) {
  EXPECT_NEAR(samples.Mean(), 0.5, 0.0005);
  EXPECT_NEAR(samples.Skewness(), 0.0, 0.02);
  EXPECT_GT(samples.Share(0.3F, 0.7F), 0.98);
  EXPECT_LT(samples.Share(0.3F, 0.7F), 0.995);
  EXPECT_LT(samples.Share(0.4F, 0.6F), 0.75);
  EXPECT_GE(samples.Lowest(), 0.0F);
  EXPECT_LE(samples.Highest(), 1.0F);
}

TEST(UnitNoiseTest, IsNearlyAllWithinThreeTenthsToSevenTenths) {
  ExpectUnitRange(Samples::Of([](const Vector& p, float) { return UnitNoise(&p); }));
}

TEST(UnitNoiseAtTest, IsNearlyAllWithinThreeTenthsToSevenTenths) {
  ExpectUnitRange(Samples::Of([](const Vector& p, float t) { return UnitNoiseAt(&p, t); }));
}

TEST(UnitNoiseAtTest, IsSignedNoiseAroundAHalf) {
  Random random(7);
  for (int i = 0; i < 1000; ++i) {
    const Vector p = random.Point(100.0F);
    EXPECT_NEAR(UnitNoiseAt(&p, 0.4F), 0.5 + 0.44 * SignedNoise(&p, 0.4F), 1e-7);
  }
}

// Sums of five octaves have deviation 0.5 and nearly the tails of a normal distribution: beyond 1.5
// lies one in 400, beyond 2 one in 10 000.
void ExpectSumRange(const Samples& samples) {
  EXPECT_NEAR(samples.Mean(), 0.0, 0.0025);
  EXPECT_NEAR(samples.Deviation(), 0.5, 0.01);
  EXPECT_NEAR(samples.Skewness(), 0.0, 0.02);
  EXPECT_GT(samples.Share(-1.5F, 1.5F), 0.995);
  EXPECT_LT(samples.Share(-1.0F, 1.0F), 0.97);
  EXPECT_GT(samples.Share(-1.75F, 1.75F), 0.9995);
  EXPECT_GT(samples.Share(-2.0F, 2.0F), 0.9999);
}

TEST(TurbulenceTest, FillsAboutThreeHalvesEachWay) {
  ExpectSumRange(Samples::Of([](const Vector& p, float t) { return Turbulence(&p, t, 5.0F, 0); }));
}

TEST(TurbulenceTest, AbsoluteFormIsNotNegative) {
  const Samples samples =
      Samples::Of([](const Vector& p, float t) { return Turbulence(&p, t, 5.0F, 1); });
  EXPECT_GE(samples.Lowest(), 0.0F);
  EXPECT_GT(samples.Share(0.0F, 2.0F), 0.9998);
  EXPECT_GT(samples.Share(1.0F, 2.0F), 0.1);
  EXPECT_GT(samples.Share(0.0F, 0.4F), 0.1);
}

// Of a normal distribution of deviation 0.2 a mean magnitude of 0.16 is expected, times 2.13: 0.34;
// the noise is close to it.
TEST(TurbulenceTest, AnyNonzeroFlagIsAbsolute) {
  const Vector p = {0.7F, 0.1F, 0.9F};
  EXPECT_EQ(Turbulence(&p, 0.2F, 4.0F, -7), Turbulence(&p, 0.2F, 4.0F, 1));
  const Samples samples =
      Samples::Of([](const Vector& q, float t) { return Turbulence(&q, t, 1.0F, 2); }, 100'000);
  EXPECT_NEAR(samples.Mean(), 0.34, 0.02);
}

TEST(BandTurbulenceTest, IsCentredAndUsesMostOfTheBand) {
  const Samples samples =
      Samples::Of([](const Vector& p, float t) { return BandTurbulence(&p, t, 5.0F, 0.5F); });
  EXPECT_NEAR(samples.Mean(), 0.5, 0.001);
  EXPECT_NEAR(samples.Skewness(), 0.0, 0.02);
  EXPECT_GE(samples.Lowest(), 0.0F);
  EXPECT_LE(samples.Highest(), 1.0F);
  EXPECT_LT(samples.Quantile(0.01), 0.2F);
  EXPECT_GT(samples.Quantile(0.99), 0.8F);
  EXPECT_LT(samples.Share(0.0F, 0.0F) + samples.Share(1.0F, 1.0F), 0.001);
}

TEST(BandTurbulenceTest, StaysWithinZeroToOneWhateverTheBand) {
  const Vector p = {0.7F, 0.1F, 0.9F};
  EXPECT_EQ(BandTurbulence(&p, 0.0F, 5.0F, 0.0F), 0.5F);
  EXPECT_EQ(BandTurbulence(&p, 0.0F, 5.0F, NotANumber), 0.5F);
  EXPECT_EQ(BandTurbulence(&p, 0.0F, 0.0F, 0.5F), 0.5F);
  Random random(8);
  for (int i = 0; i < 1000; ++i) {
    const Vector q = random.Point(100.0F);
    for (const float band : {-1.0F, 1.0F, 1e30F, Infinity}) {
      const float value = BandTurbulence(&q, 0.0F, 5.0F, band);
      EXPECT_GE(value, 0.0F);
      EXPECT_LE(value, 1.0F);
    }
  }
}

// 2.1^(-1/2) = 0.690066, 2.1^-1 = 0.476190, 2.1^(-3/2) = 0.690066 * 0.476190 = 0.328603,
// 2.1^-2 = 0.226757, 2.1^-10 = 1 / 1667.98810 = 0.000599525.
TEST(FractalInitTest, FillsTheSpectrum) {
  Weights weights{};
  EXPECT_EQ(FractalInit(weights.data(), 21, 2.1F, 0.5F), 1);
  EXPECT_EQ(weights[0], 1.0F);
  EXPECT_NEAR(weights[1], 0.690066, 1e-6);
  EXPECT_NEAR(weights[2], 0.476190, 1e-6);
  EXPECT_NEAR(weights[3], 0.328603, 1e-6);
  EXPECT_NEAR(weights[4], 0.226757, 1e-6);
  EXPECT_NEAR(weights[20], 0.000599525, 1e-9);
  EXPECT_NEAR(weights[21], 0.000599525 * 0.690066, 1e-9);
}

TEST(FractalInitTest, WritesTheBlockAndNothingElse) {
  std::array<unsigned char, FractalWeightsSize + 16> memory;
  memory.fill(0xA5);
  EXPECT_EQ(FractalInit(memory.data() + 8, 21, 2.1F, 0.5F), 1);
  for (std::size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(memory[i], 0xA5);
    EXPECT_EQ(memory[memory.size() - 1 - i], 0xA5);
  }
}

TEST(FractalInitTest, CapacityLimitsTheOctaves) {
  Weights weights;
  for (const int32_t capacity : {22, 1000, std::numeric_limits<int32_t>::max()}) {
    weights.fill(-1.0F);
    EXPECT_EQ(FractalInit(weights.data(), capacity, 2.1F, 0.5F), 1);
    EXPECT_EQ(weights, Usual);
  }
  weights.fill(-1.0F);
  EXPECT_EQ(FractalInit(weights.data(), 2, 2.0F, 1.0F), 1);
  EXPECT_EQ(weights, (Weights{1.0F, 0.5F, 0.25F}));
  for (const int32_t capacity : {0, -1, std::numeric_limits<int32_t>::min()}) {
    weights.fill(-1.0F);
    EXPECT_EQ(FractalInit(weights.data(), capacity, 2.0F, 1.0F), 1);
    EXPECT_EQ(weights, Weights{1.0F});
  }
}

TEST(FractalInitTest, RefusesWhatHasNoSpectrum) {
  EXPECT_EQ(FractalInit(nullptr, 21, 2.1F, 0.5F), 0);
  Weights weights;
  for (const float step : {0.0F, -2.1F, NotANumber}) {
    weights.fill(-1.0F);
    EXPECT_EQ(FractalInit(weights.data(), 21, step, 0.5F), 0);
    EXPECT_EQ(weights, Weights{1.0F});
  }
  EXPECT_EQ(FractalInit(weights.data(), 21, 2.1F, NotANumber), 0);
  EXPECT_EQ(weights, Weights{1.0F});
}

TEST(FractalInitTest, KeepsTheSumsFiniteWhateverTheExponent) {
  const Vector p = {0.7F, 0.1F, 0.9F};
  for (const float exponent : {-1e30F, -100.0F, 100.0F, 1e30F, Infinity, -Infinity}) {
    Weights weights;
    EXPECT_EQ(FractalInit(weights.data(), 21, 2.1F, exponent), 1);
    EXPECT_TRUE(std::isfinite(FractalSum(weights.data(), &p, 0.0F, 21.0F)));
    EXPECT_TRUE(std::isfinite(FractalSumPoint(weights.data(), &p, 21.0F)));
    EXPECT_TRUE(std::isfinite(FractalRidged(weights.data(), &p, 21.0F, 0.25F, 1.0F)));
  }
}

TEST(FractalTest, NullWeightsHaveNoOctaves) {
  const Vector p = {0.7F, 0.1F, 0.9F};
  EXPECT_EQ(FractalSum(nullptr, &p, 0.0F, 5.0F), 0.0F);
  EXPECT_EQ(FractalSumPoint(nullptr, &p, 5.0F), 0.0F);
  EXPECT_EQ(FractalRidged(nullptr, &p, 5.0F, 0.25F, 1.0F), 0.0F);
}

// Exactly 22 floats at the very end of an allocation: a sanitizer would see a read beyond.
TEST(FractalTest, ReadsNothingBeyondTheBlock) {
  const std::vector<float> block(Usual.begin(), Usual.end());
  const Vector p = {0.7F, 0.1F, 0.9F};
  EXPECT_EQ(FractalSum(block.data(), &p, 0.0F, 1000.0F), FractalSum(block.data(), &p, 0.0F, 21.0F));
}

TEST(FractalSumPointTest, FillsSevenQuartersEachWay) {
  ExpectSumRange(
      Samples::Of([](const Vector& p, float) { return FractalSumPoint(Usual.data(), &p, 5.0F); }));
}

// Half of it, squared and scaled by 2.857143, reaches 1 at a magnitude of 2 / sqrt(2.857143)
// = 1.1832.
TEST(FractalSumTest, HalfOfItSquaredFillsZeroToOne) {
  const auto fractal = [](const Vector& p, float t) {
    return FractalSum(Usual.data(), &p, t, 5.0F);
  };
  const Samples samples = Samples::Of(fractal);
  ExpectSumRange(samples);
  const double clipped = 1.0 - samples.Share(-1.1832F, 1.1832F);
  EXPECT_GT(clipped, 0.005);
  EXPECT_LT(clipped, 0.025);
}

TEST(FractalRidgedTest, ReachesFromAboutMinusAHalfToSixTenths) {
  const Samples samples = Samples::Of(
      [](const Vector& p, float) { return FractalRidged(Usual.data(), &p, 5.0F, 0.25F, 1.0F); });
  EXPECT_NEAR(samples.Quantile(0.005), -0.5F, 0.05F);
  EXPECT_NEAR(samples.Quantile(0.9999), 0.55F, 0.05F);
  EXPECT_GT(samples.Quantile(0.99), 0.35F);
  // Its user takes the zero crossings, so they must run through the middle of the distribution.
  EXPECT_NEAR(samples.Quantile(0.5), 0.0F, 0.05F);
}

TEST(NullPointTest, IsTheOrigin) {
  const Vector origin = {0.0F, 0.0F, 0.0F};
  EXPECT_EQ(SignedNoise(nullptr, 0.3F), SignedNoise(&origin, 0.3F));
  EXPECT_EQ(UnitNoise(nullptr), UnitNoise(&origin));
  EXPECT_EQ(FractalSumPoint(Usual.data(), nullptr, 3.0F),
            FractalSumPoint(Usual.data(), &origin, 3.0F));
}

TEST(InstallNoiseServicesTest, SetsTheNineEntriesAndNoOther) {
  RenderTable expected{};
  expected.signedNoise = SignedNoise;
  expected.unitNoise = UnitNoise;
  expected.unitNoiseAt = UnitNoiseAt;
  expected.turbulence = Turbulence;
  expected.bandTurbulence = BandTurbulence;
  expected.fractalInit = FractalInit;
  expected.fractalSum = FractalSum;
  expected.fractalSumPoint = FractalSumPoint;
  expected.fractalRidged = FractalRidged;
  RenderTable table{};
  InstallNoiseServices(table);
  EXPECT_EQ(std::memcmp(&table, &expected, sizeof(table)), 0);
}

}  // namespace
}  // namespace sorvanix::host
