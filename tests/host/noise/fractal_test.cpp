// The sums of octaves against their formulas, and how octaves are counted.
#include "host/noise/fractal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/host/noise/noise_statistics.h"

namespace sorvanix::host {
namespace {

using testing::Random;

constexpr float Infinity = std::numeric_limits<float>::infinity();
constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();

OctavePoint<3> Draw3(Random& random) {
  const Vector point = random.Point(100.0F);
  return MakeOctavePoint(point.x, point.y, point.z);
}

OctavePoint<4> Draw4(Random& random) {
  const Vector point = random.Point(100.0F);
  return MakeOctavePoint(point.x, point.y, point.z, random.Between(-10.0F, 10.0F));
}

// Weights 1, 1/2, 1/4 and so on, so that expected sums can be written down.
OctaveWeights Halves() {
  OctaveWeights weights;
  for (std::size_t i = 0; i < weights.size(); ++i)
    weights[i] = std::ldexp(1.0F, -static_cast<int>(i));
  return weights;
}

TEST(OctaveNoiseTest, NoOctaveIsZeroAtTheOrigin) {
  const OctavePoint<3> origin3 = MakeOctavePoint(0.0, 0.0, 0.0);
  const OctavePoint<4> origin4 = MakeOctavePoint(0.0, 0.0, 0.0, 0.0);
  int small = 0;
  for (int octave = 0; octave < MaximumOctaves; ++octave) {
    EXPECT_NE(OctaveNoise(origin3, octave, 1.0), 0.0F);
    EXPECT_NE(OctaveNoise(origin4, octave, 1.0), 0.0F);
    small += std::fabs(OctaveNoise(origin4, octave, 1.0)) < 0.02F;
  }
  // With deviation 0.2 a value is that small with a chance of 0.08; most of 21 are not.
  EXPECT_LE(small, 6);
}

// Neighbouring octaves at points near the origin, where equal cells would be met.
TEST(OctaveNoiseTest, OctavesAreIndependentOfEachOtherNearTheOrigin) {
  Random random(1);
  for (int octave = 0; octave < 6; ++octave) {
    double product = 0.0;
    constexpr int Count = 20'000;
    for (int i = 0; i < Count; ++i) {
      const Vector p = random.Point(20.0F);
      const auto point = MakeOctavePoint(p.x, p.y, p.z, random.Between(-20.0F, 20.0F));
      product += OctaveNoise(point, octave, 1.0) * OctaveNoise(point, octave + 1, 1.0);
    }
    // A product of two has deviation 0.203^2 = 0.041; the mean of 20 000 strays by five times
    // 0.041 / sqrt(20000) = 0.0015.
    EXPECT_NEAR(product / Count, 0.0, 0.0015) << octave;
  }
}

TEST(OctaveNoiseTest, FrequencyEnlargesThePoint) {
  const auto near = MakeOctavePoint(0.5, -1.25, 3.0, 0.75);
  const auto far = MakeOctavePoint(2.0, -5.0, 12.0, 0.75);
  EXPECT_EQ(OctaveNoise(near, 3, 4.0), OctaveNoise(far, 3, 1.0));
}

TEST(OctaveNoiseTest, TimeRunsAtOnePaceInAllOctaves) {
  const auto before = MakeOctavePoint(0.0, 0.0, 0.0, 1.0);
  const auto after = MakeOctavePoint(0.0, 0.0, 0.0, 1.0 + 1e-4);
  for (int octave = 0; octave < MaximumOctaves; ++octave) {
    const double frequency = std::ldexp(1.0, octave);
    EXPECT_NEAR(OctaveNoise(before, octave, frequency), OctaveNoise(after, octave, frequency),
                13e-4);
  }
}

TEST(TurbulenceSumTest, HalvesTheAmplitudeAndDoublesTheFrequency) {
  Random random(2);
  for (int i = 0; i < 100; ++i) {
    const auto point = Draw4(random);
    const double a = OctaveNoise(point, 0, 1.0);
    const double b = OctaveNoise(point, 1, 2.0);
    const double c = OctaveNoise(point, 2, 4.0);
    EXPECT_DOUBLE_EQ(TurbulenceSum(point, 1.0F, false), a);
    EXPECT_DOUBLE_EQ(TurbulenceSum(point, 3.0F, false), a + b / 2.0 + c / 4.0);
    EXPECT_DOUBLE_EQ(TurbulenceSum(point, 3.0F, true),
                     std::fabs(a) + std::fabs(b) / 2.0 + std::fabs(c) / 4.0);
  }
}

TEST(TurbulenceSumTest, LastOctaveCountsByItsFraction) {
  Random random(3);
  for (int i = 0; i < 100; ++i) {
    const auto point = Draw4(random);
    const double a = OctaveNoise(point, 0, 1.0);
    const double b = OctaveNoise(point, 1, 2.0);
    EXPECT_DOUBLE_EQ(TurbulenceSum(point, 0.25F, false), 0.25 * a);
    EXPECT_DOUBLE_EQ(TurbulenceSum(point, 1.5F, false), a + 0.5 * b / 2.0);
  }
}

TEST(SpectralSumTest, TakesTheWeightsAndTheLacunarity) {
  Random random(4);
  const OctaveWeights weights = Halves();
  for (int i = 0; i < 100; ++i) {
    const auto point3 = Draw3(random);
    const auto point4 = Draw4(random);
    EXPECT_DOUBLE_EQ(SpectralSum(weights, point3, 2.5F),
                     OctaveNoise(point3, 0, 1.0) + OctaveNoise(point3, 1, 2.1) / 2.0 +
                         0.5 * OctaveNoise(point3, 2, 2.1 * 2.1) / 4.0);
    EXPECT_DOUBLE_EQ(SpectralSum(weights, point4, 2.5F),
                     OctaveNoise(point4, 0, 1.0) + OctaveNoise(point4, 1, 2.1) / 2.0 +
                         0.5 * OctaveNoise(point4, 2, 2.1 * 2.1) / 4.0);
  }
}

TEST(RidgedSumTest, OneOctaveIsOffsetLessMagnitude) {
  Random random(5);
  for (int i = 0; i < 100; ++i) {
    const auto point = Draw3(random);
    EXPECT_NEAR(RidgedSum(Halves(), point, 1.0F, 0.25F, 1.0F),
                0.25 - std::fabs(OctaveNoise(point, 0, 1.0)) / 0.65, 1e-15);
  }
}

// The second of two octaves is let through by the first one's 1 - depth times gain, within 0..1.
TEST(RidgedSumTest, CrestsLetTheNextOctaveThrough) {
  Random random(6);
  for (int i = 0; i < 1000; ++i) {
    const auto point = Draw3(random);
    const double depth = std::fabs(OctaveNoise(point, 0, 1.0)) / 0.65;
    const double next = 0.25 - std::fabs(OctaveNoise(point, 1, 2.1)) / 0.65;
    const auto sum = [&](float gain) { return RidgedSum(Halves(), point, 2.0F, 0.25F, gain); };
    EXPECT_NEAR(sum(0.0F), 0.25 - depth, 1e-15);
    EXPECT_NEAR(sum(0.5F), 0.25 - depth + next / 2.0 * std::fmax(0.0, (1.0 - depth) / 2.0), 1e-15);
    EXPECT_NEAR(sum(1.0F), 0.25 - depth + next / 2.0 * std::fmax(0.0, 1.0 - depth), 1e-15);
    EXPECT_NEAR(sum(1e9F), 0.25 - depth + (depth < 1.0 ? next / 2.0 : 0.0), 1e-15);
  }
}

// A hollow deeper than 1, which a point in ten thousand has, closes the sum to all later octaves.
TEST(RidgedSumTest, DeepestHollowsAreSmooth) {
  Random random(7);
  int closed = 0;
  for (int i = 0; i < 100'000; ++i) {
    const auto point = Draw3(random);
    if (std::fabs(OctaveNoise(point, 0, 1.0)) < 0.65F) continue;
    ++closed;
    EXPECT_EQ(RidgedSum(Halves(), point, 5.0F, 0.25F, 1.0F),
              RidgedSum(Halves(), point, 1.0F, 0.25F, 1.0F));
  }
  EXPECT_GT(closed, 0);
}

TEST(RidgedSumTest, OffsetLiftsTheCrests) {
  Random random(8);
  const auto point = Draw3(random);
  EXPECT_NEAR(RidgedSum(Halves(), point, 1.0F, 1.0F, 1.0F),
              RidgedSum(Halves(), point, 1.0F, 0.25F, 1.0F) + 0.75, 1e-15);
}

// Every sum, at a point given by its x and at every count of interest.
struct Sum {
  const char* name;
  double (*of)(double x, float octaves);
};

OctavePoint<3> Point3(double x) { return MakeOctavePoint(x, 4.1, -2.7); }
OctavePoint<4> Point4(double x) { return MakeOctavePoint(x, 4.1, -2.7, 0.6); }

const Sum AllSums[] = {
    {"turbulence", [](double x, float n) { return TurbulenceSum(Point4(x), n, false); }},
    {"absolute turbulence", [](double x, float n) { return TurbulenceSum(Point4(x), n, true); }},
    {"spectral sum of a point",
     [](double x, float n) { return SpectralSum(Halves(), Point3(x), n); }},
    {"spectral sum", [](double x, float n) { return SpectralSum(Halves(), Point4(x), n); }},
    {"ridged sum",
     [](double x, float n) { return RidgedSum(Halves(), Point3(x), n, 0.25F, 1.0F); }},
};

TEST(OctaveCountTest, NothingCountsAsNothing) {
  constexpr double X = 0.3;
  for (const Sum& sum : AllSums) {
    for (const float octaves : {0.0F, -0.0F, -1.0F, -Infinity, NotANumber}) {
      EXPECT_EQ(sum.of(X, octaves), 0.0) << sum.name << ", " << octaves;
    }
  }
}

TEST(OctaveCountTest, IsBounded) {
  constexpr double X = 0.3;
  for (const Sum& sum : AllSums) {
    for (const float octaves : {21.5F, 22.0F, 1e9F, Infinity}) {
      EXPECT_EQ(sum.of(X, octaves), sum.of(X, 21.0F)) << sum.name << ", " << octaves;
    }
  }
}

// A change of the count by 1/256 adds at most that share of an octave, whose value is at most 1 /
// 0.65.
TEST(OctaveCountTest, SumsAreContinuousInIt) {
  constexpr float Step = 1.0F / 256.0F;
  constexpr double X = 0.3;
  for (const Sum& sum : AllSums) {
    for (float octaves = 0.0F; octaves < 6.0F; octaves += Step) {
      EXPECT_NEAR(sum.of(X, octaves), sum.of(X, octaves + Step), Step * 1.54)
          << sum.name << ", " << octaves;
    }
  }
}

// At one of 100 points at least: the deepest hollows close the ridged sum to later octaves.
TEST(OctaveCountTest, EachOctaveChangesTheSum) {
  for (const Sum& sum : AllSums) {
    for (const float octaves : {0.0F, 1.0F, 2.0F, 10.0F, 20.0F}) {
      int changed = 0;
      for (int x = 0; x < 100; ++x) changed += sum.of(x, octaves) != sum.of(x, octaves + 1.0F);
      EXPECT_GE(changed, 1) << sum.name << ", " << octaves;
    }
  }
}

}  // namespace
}  // namespace sorvanix::host
