// Laws that hold for every noise operation of the contract.
#include "host/noise/noise_services.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <limits>
#include <string>
#include <thread>

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

// Every operation as a function of point, time and octaves, for the laws that hold for all.
struct Operation {
  const char* name;
  float (*at)(const Vector& point, float time, float octaves);
  bool hasTime;
};

const Operation AllOperations[] = {
    {"signedNoise", [](const Vector& p, float t, float) { return SignedNoise(&p, t); }, true},
    {"unitNoise", [](const Vector& p, float, float) { return UnitNoise(&p); }, false},
    {"unitNoiseAt", [](const Vector& p, float t, float) { return UnitNoiseAt(&p, t); }, true},
    {"turbulence", [](const Vector& p, float t, float o) { return Turbulence(&p, t, o, 0); }, true},
    {"absolute turbulence",
     [](const Vector& p, float t, float o) { return Turbulence(&p, t, o, 1); }, true},
    {"bandTurbulence",
     [](const Vector& p, float t, float o) { return BandTurbulence(&p, t, o, 0.5F); }, true},
    {"fractalSum",
     [](const Vector& p, float t, float o) { return FractalSum(Usual.data(), &p, t, o); }, true},
    {"fractalSumPoint",
     [](const Vector& p, float, float o) { return FractalSumPoint(Usual.data(), &p, o); }, false},
    {"fractalRidged",
     [](const Vector& p, float, float o) {
       return FractalRidged(Usual.data(), &p, o, 0.25F, 1.0F);
     },
     false},
};

class EveryOperation : public ::testing::TestWithParam<Operation> {};

INSTANTIATE_TEST_SUITE_P(Noise, EveryOperation, ::testing::ValuesIn(AllOperations),
                         [](const auto& info) {
                           std::string name = info.param.name;
                           std::replace(name.begin(), name.end(), ' ', '_');
                           return name;
                         });

// Deviation of increments over a step along direction, which has length 1.
double IncrementDeviation(const Operation& operation, const Vector& direction) {
  constexpr float Step = 0.3F;
  constexpr int Count = 100'000;
  Random random(3);
  double sum = 0.0;
  for (int i = 0; i < Count; ++i) {
    const Vector p = random.Point(500.0F);
    const float t = random.Between(-50.0F, 50.0F);
    const Vector q = {p.x + Step * direction.x, p.y + Step * direction.y, p.z + Step * direction.z};
    const double change = operation.at(q, t, 1.0F) - operation.at(p, t, 1.0F);
    sum += change * change;
  }
  return std::sqrt(sum / Count);
}

// 100 000 increments give a deviation to 0.4 %; 2 % leaves room for the lattice's own 0.4 %.
TEST_P(EveryOperation, PrefersNoDirection) {
  constexpr float F = 0.70710678F, B = 0.57735027F;
  const double along = IncrementDeviation(GetParam(), {1, 0, 0});
  for (const Vector& direction :
       {Vector{0, 1, 0}, Vector{0, 0, 1}, Vector{F, F, 0}, Vector{F, -F, 0}, Vector{F, 0, F},
        Vector{F, 0, -F}, Vector{0, F, F}, Vector{0, F, -F}, Vector{B, B, B}, Vector{B, B, -B},
        Vector{B, -B, B}, Vector{-B, B, B}}) {
    EXPECT_NEAR(IncrementDeviation(GetParam(), direction) / along, 1.0, 0.02)
        << direction.x << ", " << direction.y << ", " << direction.z;
  }
}

// Callers read noise at whole points, along axes and in planes: no such place may be special. The
// deviation of 100 000 samples strays by 0.25 %, but samples that share a cell depend on each
// other, as many do along a line; so 2 %. Quantiles stray more, by up to 1 % of their range.
TEST_P(EveryOperation, IsTheSameAtWholePointsOnAxesAndInPlanes) {
  const auto at = GetParam().at;
  const auto sampled = [](auto noise) { return Samples::Of(noise, 100'000); };
  const Samples anywhere = sampled([&](const Vector& p, float t) { return at(p, t, 1.0F); });
  const float range = anywhere.Quantile(0.9) - anywhere.Quantile(0.1);
  const auto expectSame = [&](const char* place, const Samples& samples) {
    EXPECT_NEAR(samples.Deviation() / anywhere.Deviation(), 1.0, 0.02) << place;
    for (const double share : {0.1, 0.25, 0.5, 0.75, 0.9}) {
      EXPECT_NEAR(samples.Quantile(share), anywhere.Quantile(share), 0.02 * range) << place;
    }
  };
  expectSame("whole points", sampled([&](const Vector& p, float t) {
               return at({std::floor(p.x), std::floor(p.y), std::floor(p.z)}, std::floor(t), 1.0F);
             }));
  expectSame("whole points of the plane z = 0", sampled([&](const Vector& p, float) {
               return at({std::floor(p.x), std::floor(p.y), 0}, 0, 1.0F);
             }));
  expectSame("plane z = 0 at time 0", sampled([&](const Vector& p, float) {
               return at({p.x, p.y, 0}, 0, 1.0F);
             }));
  expectSame("x axis", sampled([&](const Vector& p, float) {
               return at({p.x * 100, 0, 0}, 0, 1.0F);
             }));
  expectSame("y axis", sampled([&](const Vector& p, float) {
               return at({0, p.y * 100, 0}, 0, 1.0F);
             }));
  expectSame("z axis", sampled([&](const Vector& p, float) {
               return at({0, 0, p.z * 100}, 0, 1.0F);
             }));
}

// Correlation of one octave with itself over a step of the point.
double StepCorrelation(const Operation& operation, const Vector& step, bool whole) {
  return testing::Correlation(100'000, [&](Random& random) {
    Vector p = random.Point(1000.0F);
    if (whole) p = {std::floor(p.x), std::floor(p.y), std::floor(p.z)};
    const Vector q = {p.x + step.x, p.y + step.y, p.z + step.z};
    return std::pair(operation.at(p, 0.0F, 1.0F), operation.at(q, 0.0F, 1.0F));
  });
}

// Chance does 5 / sqrt(100000) = 0.016. Besides, magnitudes are a little greater inside a cell than
// at its corners, and far steps may happen to lead from inside to inside; that is below 0.03. A
// period would give 1.
constexpr double Independent = 0.045;

TEST_P(EveryOperation, HasNoPeriod) {
  for (const float period : {16.0F, 255.0F, 256.0F, 257.0F, 4096.0F}) {
    EXPECT_NEAR(StepCorrelation(GetParam(), {period, 0, 0}, false), 0.0, Independent) << period;
    EXPECT_NEAR(StepCorrelation(GetParam(), {0, period, 0}, false), 0.0, Independent) << period;
    EXPECT_NEAR(StepCorrelation(GetParam(), {0, 0, period}, false), 0.0, Independent) << period;
    EXPECT_NEAR(StepCorrelation(GetParam(), {period, period, period}, false), 0.0, Independent)
        << period;
  }
}

// Searches for features draw two and three numbers for a cell from the noise at whole points, moved
// by these steps.
TEST_P(EveryOperation, GivesIndependentNumbersForTheAxesOfACell) {
  for (const Vector& step :
       {Vector{20, -10, 0}, Vector{20, -10, 20}, Vector{-18, -16, 23}, Vector{38, 6, -3}}) {
    EXPECT_NEAR(StepCorrelation(GetParam(), step, true), 0.0, Independent)
        << step.x << ", " << step.y << ", " << step.z;
  }
}

// A blend of ramps has a small negative correlation over one cell: -0.07 in three dimensions,
// -0.015 in four.
TEST_P(EveryOperation, NeighbouringWholePointsAreAlmostIndependent) {
  const double most = GetParam().hasTime ? 0.015 : 0.07;
  for (const Vector& step :
       {Vector{1, 0, 0}, Vector{0, 1, 0}, Vector{0, 0, 1}, Vector{1, 1, 0}, Vector{1, -1, 0}}) {
    EXPECT_NEAR(StepCorrelation(GetParam(), step, true), 0.0, most + Independent)
        << step.x << ", " << step.y << ", " << step.z;
  }
}

// The slope of one octave is below 13 (see the gradient noise) times at most 2.13; of five octaves
// of turbulence, which all add the same slope, five times that. A step of 0.0001 in the point and
// in the time changes the value by at most 0.03.
TEST_P(EveryOperation, IsContinuousInPointAndTime) {
  Random random(4);
  for (int i = 0; i < 20'000; ++i) {
    const Vector p = random.Point(4.0F);
    const float t = random.Between(-2.0F, 2.0F);
    const float value = GetParam().at(p, t, 5.0F);
    EXPECT_NEAR(GetParam().at({p.x + 0.0001F, p.y, p.z}, t, 5.0F), value, 0.03);
    EXPECT_NEAR(GetParam().at(p, t + 0.0001F, 5.0F), value, 0.03);
  }
}

TEST_P(EveryOperation, HasNoSeamAtZero) {
  Random random(5);
  for (int i = 0; i < 10'000; ++i) {
    const Vector p = random.Point(10.0F);
    EXPECT_NEAR(GetParam().at({-1e-6F, p.y, p.z}, -1e-6F, 5.0F),
                GetParam().at({1e-6F, p.y, p.z}, 1e-6F, 5.0F), 0.001);
    EXPECT_EQ(GetParam().at({-0.0F, p.y, p.z}, -0.0F, 5.0F),
              GetParam().at({0.0F, p.y, p.z}, 0.0F, 5.0F));
  }
}

TEST_P(EveryOperation, HeedsTimeExactlyWhenItHasOne) {
  const Vector p = {0.3F, 0.4F, 0.5F};
  const bool heeds = GetParam().at(p, 0.0F, 3.0F) != GetParam().at(p, 0.7F, 3.0F);
  EXPECT_EQ(heeds, GetParam().hasTime);
}

TEST_P(EveryOperation, AnswersFiniteNumbersToAnyInput) {
  const float values[] = {0.0F,    -1.0F,    0.5F,     1e9F,      -1e9F,      1e30F,  -1e30F,
                          3.4e38F, -3.4e38F, Infinity, -Infinity, NotANumber, 1e-40F, -1e-40F};
  for (const float x : values) {
    for (const float y : values) {
      for (const float time : values) {
        for (const float octaves : values) {
          const float answer = GetParam().at({x, y, -x}, time, octaves);
          EXPECT_LE(std::fabs(answer), 6.0F) << x << ", " << y << ", " << time << ", " << octaves;
        }
      }
    }
  }
}

TEST_P(EveryOperation, IsPureOnEightThreadsAtOnce) {
  constexpr int Count = 5'000;
  const auto run = [&] {
    std::vector<uint32_t> bits;
    Random random(6);
    for (int i = 0; i < Count; ++i) {
      const Vector p = random.Point(100.0F);
      bits.push_back(std::bit_cast<uint32_t>(GetParam().at(p, random.Between(0.0F, 9.0F), 4.5F)));
    }
    return bits;
  };
  const std::vector<uint32_t> alone = run();
  std::array<std::vector<uint32_t>, 8> together;
  {
    std::vector<std::jthread> threads;
    for (auto& result : together) threads.emplace_back([&] { result = run(); });
  }
  for (const auto& result : together) EXPECT_EQ(result, alone);
}

}  // namespace
}  // namespace sorvanix::host
