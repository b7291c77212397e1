// The gradient noise in the frame of its lattice: gradients, blending, distribution; and the
// rotation.
#include "host/noise/gradient_noise.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>

#include "tests/host/noise/noise_statistics.h"

namespace sorvanix::host {
namespace {

using testing::Random;
using testing::Samples;

template <std::size_t Dimensions>
LatticePoint<Dimensions> DrawPoint(Random& random, float size = 1000.0F) {
  LatticePoint<Dimensions> point;
  for (double& coordinate : point) coordinate = random.Between(-size, size);
  return point;
}

template <std::size_t Dimensions>
LatticePoint<Dimensions> DrawCorner(Random& random) {
  LatticePoint<Dimensions> corner = DrawPoint<Dimensions>(random, 100'000.0F);
  for (double& coordinate : corner) coordinate = std::floor(coordinate);
  return corner;
}

template <std::size_t Dimensions>
LatticePoint<Dimensions> Moved(LatticePoint<Dimensions> point, std::size_t i, double step) {
  point[i] += step;
  return point;
}

// The noise within 1/1024 of a corner is the corner's own ramp: the other corners' weight is at
// most 10 / 1024^3. So the slope along an axis is the gradient's component times the scale of the
// noise.
template <std::size_t Dimensions>
double Slope(const LatticePoint<Dimensions>& corner, std::size_t i) {
  return GradientNoise(Moved<Dimensions>(corner, i, 0x1p-10)) * 1024.0;
}

template <typename Size>
class GradientNoiseTest : public ::testing::Test {};

template <std::size_t Dimensions>
using Size = std::integral_constant<std::size_t, Dimensions>;
using Sizes = ::testing::Types<Size<3>, Size<4>>;
TYPED_TEST_SUITE(GradientNoiseTest, Sizes);

TYPED_TEST(GradientNoiseTest, IsZeroAtLatticeCorners) {
  Random random(1);
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ(GradientNoise(DrawCorner<TypeParam::value>(random)), 0.0F);
  }
}

// Three dimensions: r = 3 + sqrt(10) = 6.162278, shorter = 1 / sqrt(r + 2) = 0.350021, longer =
// sqrt(r / (r + 2)) = 0.868890; times the scale 1.064 they are 0.372 and 0.924.
// Four dimensions: r = 3 + sqrt(12) = 6.464102, shorter = 1 / sqrt(r + 3) = 0.325058, longer =
// sqrt(r / (r + 3)) = 0.826446; times the scale 1.2 they are 0.390 and 0.992.
TYPED_TEST(GradientNoiseTest, GradientsHaveOneLongComponentAndTheLengthOfTheScale) {
  constexpr std::size_t Dimensions = TypeParam::value;
  const double longer = Dimensions == 3 ? 0.924 : 0.992;
  const double shorter = Dimensions == 3 ? 0.372 : 0.390;
  Random random(2);
  for (int n = 0; n < 1000; ++n) {
    const auto corner = DrawCorner<Dimensions>(random);
    int longOnes = 0;
    for (std::size_t i = 0; i < Dimensions; ++i) {
      const double size = std::fabs(Slope<Dimensions>(corner, i));
      const bool isLong = size > 0.6;
      longOnes += isLong;
      EXPECT_NEAR(size, isLong ? longer : shorter, 0.001);
    }
    EXPECT_EQ(longOnes, 1);
  }
}

// The sign of each component, and which is the long one.
template <std::size_t Dimensions>
int GradientNumber(const LatticePoint<Dimensions>& corner) {
  int number = 0;
  for (std::size_t i = 0; i < Dimensions; ++i) {
    const double slope = Slope<Dimensions>(corner, i);
    number += (slope < 0.0) << i;
    if (std::fabs(slope) > 0.6) number += static_cast<int>(i) << Dimensions;
  }
  return number;
}

// A chi-squared sum of n - 1 degrees of freedom has mean n - 1 and variance 2 (n - 1); six standard
// deviations above the mean are 64 for n = 24 and 130 for n = 64.
TYPED_TEST(GradientNoiseTest, AllGradientsAreEquallyFrequent) {
  constexpr std::size_t Dimensions = TypeParam::value;
  constexpr int Gradients = Dimensions == 3 ? 24 : 64;
  constexpr double Expected = 1000.0;
  std::map<int, int> counts;
  Random random(3);
  for (int n = 0; n < Gradients * 1000; ++n) {
    ++counts[GradientNumber<Dimensions>(DrawCorner<Dimensions>(random))];
  }
  EXPECT_EQ(counts.size(), Gradients);
  double chiSquared = 0.0;
  for (const auto& [number, count] : counts) {
    chiSquared += (count - Expected) * (count - Expected) / Expected;
  }
  EXPECT_LT(chiSquared, Gradients - 1 + 6.0 * std::sqrt(2.0 * (Gradients - 1)));
}

// Two independent gradients agree with probability 1 / 24 or 1 / 64. With 20 000 pairs the count
// strays by at most five times sqrt(20000 p).
TYPED_TEST(GradientNoiseTest, GradientsRepeatAtNoDistance) {
  constexpr std::size_t Dimensions = TypeParam::value;
  const double chance = Dimensions == 3 ? 1.0 / 24.0 : 1.0 / 64.0;
  for (const double distance : {1.0, 2.0, 255.0, 256.0, 289.0, 65536.0, 4294967296.0}) {
    for (std::size_t i = 0; i < Dimensions; ++i) {
      Random random(4);
      int equal = 0;
      for (int n = 0; n < 20'000; ++n) {
        const auto corner = DrawCorner<Dimensions>(random);
        equal += GradientNumber<Dimensions>(corner) ==
                 GradientNumber<Dimensions>(Moved<Dimensions>(corner, i, distance));
      }
      EXPECT_NEAR(equal, 20'000 * chance, 5.0 * std::sqrt(20'000 * chance))
          << "distance " << distance << " along dimension " << i;
    }
  }
}

// The words of a rectangle's corners are sums of the same four words. Were the gradients not well
// mixed from them, the product of the four would not average to 0.
TYPED_TEST(GradientNoiseTest, GradientsOfARectangleAreIndependent) {
  constexpr std::size_t Dimensions = TypeParam::value;
  constexpr int Count = 50'000;
  Random random(5);
  std::array<double, Dimensions> sums{};
  for (int n = 0; n < Count; ++n) {
    const auto corner = DrawCorner<Dimensions>(random);
    const auto right = Moved<Dimensions>(corner, 0, 3.0);
    const auto above = Moved<Dimensions>(corner, 1, 2.0);
    const auto across = Moved<Dimensions>(right, 1, 2.0);
    for (std::size_t i = 0; i < Dimensions; ++i) {
      const double product = Slope<Dimensions>(corner, i) * Slope<Dimensions>(right, i) *
                             Slope<Dimensions>(above, i) * Slope<Dimensions>(across, i);
      sums[i] += product < 0.0 ? -1.0 : 1.0;
    }
  }
  for (const double sum : sums) EXPECT_NEAR(sum, 0.0, 5.0 * std::sqrt(Count));
}

// Halfway between two corners along an edge of the lattice, the others have no weight and these two
// have one half each: with slopes a and b the noise is (a / 2 - b / 2) / 2.
TYPED_TEST(GradientNoiseTest, BlendsTheRampsOfTheCorners) {
  constexpr std::size_t Dimensions = TypeParam::value;
  Random random(6);
  for (int n = 0; n < 100; ++n) {
    const auto corner = DrawCorner<Dimensions>(random);
    for (std::size_t i = 0; i < Dimensions; ++i) {
      const double a = Slope<Dimensions>(corner, i);
      const double b = Slope<Dimensions>(Moved<Dimensions>(corner, i, 1.0), i);
      EXPECT_NEAR(GradientNoise(Moved<Dimensions>(corner, i, 0.5)), (a - b) / 4.0, 1e-5);
    }
  }
}

// At a quarter the fade 6t^5 - 15t^4 + 10t^3 is 6/1024 - 15/256 + 10/64 = 0.103515625.
TYPED_TEST(GradientNoiseTest, FadesWithTheQuintic) {
  constexpr std::size_t Dimensions = TypeParam::value;
  Random random(7);
  for (int n = 0; n < 100; ++n) {
    const auto corner = DrawCorner<Dimensions>(random);
    const double a = Slope<Dimensions>(corner, 0);
    const double b = Slope<Dimensions>(Moved<Dimensions>(corner, 0, 1.0), 0);
    EXPECT_NEAR(GradientNoise(Moved<Dimensions>(corner, 0, 0.25)),
                0.25 * a * (1.0 - 0.103515625) - 0.75 * b * 0.103515625, 1e-5);
  }
}

// Values and slopes on both sides of a cell's wall. Between points h = 1/512 apart a slope below 13
// (the gradient's own, and the fade's greatest slope 15/8 times the ramps', in each dimension)
// changes the value by less than 13 h, and a bounded second derivative changes slopes by little.
TYPED_TEST(GradientNoiseTest, HasNoSeamBetweenCells) {
  constexpr std::size_t Dimensions = TypeParam::value;
  constexpr double Step = 1.0 / 512.0;
  Random random(8);
  for (int n = 0; n < 10'000; ++n) {
    auto wall = DrawPoint<Dimensions>(random, 4.0F);
    wall[0] = std::floor(wall[0]);
    const double before = GradientNoise(Moved<Dimensions>(wall, 0, -Step));
    const double at = GradientNoise(wall);
    const double after = GradientNoise(Moved<Dimensions>(wall, 0, Step));
    EXPECT_NEAR(before, at, 13.0 * Step);
    EXPECT_NEAR(after - at, at - before, 0.1 * Step);
  }
}

TYPED_TEST(GradientNoiseTest, HasTheDistributionThatCallersExpect) {
  constexpr std::size_t Dimensions = TypeParam::value;
  Random random(9);
  std::vector<float> values(2 * testing::Million);
  for (float& value : values) value = GradientNoise(DrawPoint<Dimensions>(random));
  const Samples samples(std::move(values));
  EXPECT_NEAR(samples.Mean(), 0.0, 0.001);
  EXPECT_NEAR(samples.Deviation(), 0.203, 0.002);
  EXPECT_NEAR(samples.Skewness(), 0.0, 0.01);
  EXPECT_NEAR(samples.Quantile(0.9999), 0.63, 0.03);
  EXPECT_NEAR(samples.Quantile(0.0001), -0.63, 0.03);
  EXPECT_LE(samples.Highest(), 1.0F);
  EXPECT_GE(samples.Lowest(), -1.0F);
}

TYPED_TEST(GradientNoiseTest, CoordinatesOutOfReachCountAsZero) {
  constexpr std::size_t Dimensions = TypeParam::value;
  LatticePoint<Dimensions> point;
  point.fill(0.3);
  auto atZero = point;
  atZero[1] = 0.0;
  for (const double coordinate :
       {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN(), 0x1p62, -0x1p62, 1e300}) {
    auto beyond = point;
    beyond[1] = coordinate;
    EXPECT_EQ(GradientNoise(beyond), GradientNoise(atZero)) << coordinate;
  }
}

TYPED_TEST(GradientNoiseTest, GreatCellNumbersStillDiffer) {
  constexpr std::size_t Dimensions = TypeParam::value;
  LatticePoint<Dimensions> first;
  first.fill(0.5);
  first[0] = 0x1p50 + 0.5;
  EXPECT_NE(GradientNoise(first), GradientNoise(Moved<Dimensions>(first, 0, 1.0)));
  EXPECT_NE(GradientNoise(first), GradientNoise(Moved<Dimensions>(first, 0, -0x1p50)));
}

// Images of the unit axes are unit vectors at right angles.
template <std::size_t Dimensions, typename Image>
void ExpectOrthonormal(Image image) {
  for (std::size_t i = 0; i < Dimensions; ++i) {
    for (std::size_t j = 0; j < Dimensions; ++j) {
      const LatticePoint<Dimensions> a = image(i);
      const LatticePoint<Dimensions> b = image(j);
      double product = 0.0;
      for (std::size_t k = 0; k < Dimensions; ++k) product += a[k] * b[k];
      EXPECT_NEAR(product, i == j ? 1.0 : 0.0, 1e-15) << i << ", " << j;
    }
  }
}

TEST(RotateToLatticeTest, KeepsLengthsAndAngles) {
  ExpectOrthonormal<3>([](std::size_t i) { return RotateToLattice(i == 0, i == 1, i == 2); });
  ExpectOrthonormal<4>(
      [](std::size_t i) { return RotateToLattice(i == 0, i == 1, i == 2, i == 3); });
}

// The axis is (sqrt 2, sqrt 3, sqrt 5) over sqrt 10; a trace of 1 + 2 cos 0.86 = 2.304875 tells the
// angle.
TEST(RotateToLatticeTest, TurnsAboutTheToldAxis) {
  const double x = std::sqrt(0.2), y = std::sqrt(0.3), z = std::sqrt(0.5);
  const LatticePoint<3> axis = RotateToLattice(x, y, z);
  EXPECT_NEAR(axis[0], x, 1e-15);
  EXPECT_NEAR(axis[1], y, 1e-15);
  EXPECT_NEAR(axis[2], z, 1e-15);
  const double trace =
      RotateToLattice(1, 0, 0)[0] + RotateToLattice(0, 1, 0)[1] + RotateToLattice(0, 0, 1)[2];
  EXPECT_NEAR(trace, 2.304875, 1e-6);
}

TEST(RotateToLatticeTest, TreatsTheFourAxesAlike) {
  for (std::size_t i = 0; i < 4; ++i) {
    LatticePoint<4> image = RotateToLattice(i == 0, i == 1, i == 2, i == 3);
    for (double& component : image) component = std::fabs(component);
    std::sort(image.begin(), image.end());
    EXPECT_NEAR(image[0] * image[0], 2.0 / 21.0, 1e-15);
    EXPECT_NEAR(image[1] * image[1], 3.0 / 21.0, 1e-15);
    EXPECT_NEAR(image[2] * image[2], 6.0 / 21.0, 1e-15);
    EXPECT_NEAR(image[3] * image[3], 10.0 / 21.0, 1e-15);
  }
}

}  // namespace
}  // namespace sorvanix::host
