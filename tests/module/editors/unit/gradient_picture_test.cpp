#include "module/editors/gradient_picture.h"

#include <limits>

#include "tests/module/editors/unit/ramp_readings.h"
#include "tests/support/fake_host.h"

namespace sorvanix {
namespace {

using test::FakePixel;
using test::Grey;
using test::ThreeKnots;

constexpr FakePixel kBlack = {0, 0, 0};
constexpr FakePixel kWhite = {255, 255, 255};
constexpr FakePixel kGrey100 = {100, 100, 100};

struct GradientPicture : testing::Test {
  GradientPicture() {
    hostApi.bitmap = &test::FakeBitmapTable();
    EXPECT_TRUE(bitmap.Make(470, 50));
  }
  ~GradientPicture() override {
    bitmap.Clear();
    hostApi.bitmap = nullptr;
  }
  FakePixel At(std::int32_t x, std::int32_t y) {
    return test::FakeBitmap::Of(bitmap.get()).At(x, y);
  }
  void Paint(const Ramp& ramp) { PaintGradient(ramp, bitmap.get()); }

  test::FakeHost host;
  OwnedBitmap bitmap;
};

// A straight line from black to white, with nothing but its two ends.
Ramp BlackToWhite() {
  Ramp ramp;
  InsertKnot(ramp, Grey(0), 0, 0.5f);
  InsertKnot(ramp, Grey(1), 1, 0.5f);
  ramp.interpolation = RampLinear;
  return ramp;
}

TEST_F(GradientPicture, TheStripShowsTheRampInBytes) {
  Paint(BlackToWhite());
  // The byte is trunc(255.99 * (x - 4) / 461): at x 119 63.8, at 234 127.7, at 464 255.43.
  EXPECT_EQ(At(4, 18), kBlack);
  EXPECT_EQ(At(119, 18), (FakePixel{63, 63, 63}));
  EXPECT_EQ(At(234, 18), (FakePixel{127, 127, 127}));
  EXPECT_EQ(At(464, 18), (FakePixel{255, 255, 255}));
  EXPECT_EQ(At(465, 18), kWhite);
}

TEST_F(GradientPicture, TheStripIsTheSamplersInEveryRowAndMode) {
  Ramp ramp = ThreeKnots();
  ramp.knots[1].colour = {0.9f, 0.2f, 0.4f};
  for (std::int32_t mode = RampCubic; mode <= RampStep + 1; ++mode) {
    ramp.interpolation = mode;
    Paint(ramp);
    for (std::int32_t x = 4; x <= 465; ++x) {
      const Vector colour =
          SampleRamp(static_cast<float>((x - 4) * 0.0021691974), ramp.knots, 3, mode);
      const auto byte = [](float c) { return static_cast<int>(c * 255.99); };
      const FakePixel expected = {byte(colour.x), byte(colour.y), byte(colour.z)};
      for (const std::int32_t y : {13, 18, 24}) ASSERT_EQ(At(x, y), expected) << x << " " << mode;
    }
  }
}

TEST_F(GradientPicture, ColoursBeyondWhiteAreLimited) {
  Ramp ramp = BlackToWhite();
  ramp.knots[0].colour = {-1, 2, std::numeric_limits<float>::quiet_NaN()};
  Paint(ramp);
  EXPECT_EQ(At(4, 18), (FakePixel{0, 255, 0}));
}

TEST_F(GradientPicture, AFrameLiesAroundTheStrip) {
  Paint(BlackToWhite());
  for (const std::int32_t x : {3, 100, 466}) {
    EXPECT_EQ(At(x, 11), kBlack) << x;
    EXPECT_EQ(At(x, 25), kBlack) << x;
  }
  for (const std::int32_t y : {11, 18, 25}) {
    EXPECT_EQ(At(3, y), kBlack) << y;
    EXPECT_EQ(At(466, y), kBlack) << y;
  }
  EXPECT_EQ(At(100, 10), kGrey100);
  EXPECT_EQ(At(100, 26), kGrey100);
  EXPECT_EQ(At(2, 18), kGrey100);
  EXPECT_EQ(At(467, 18), kGrey100);
  // Sunken: darker on the side of the light than on the other.
  EXPECT_LT(At(100, 9).red, At(100, 27).red);
  EXPECT_LT(At(1, 18).red, At(468, 18).red);
}

// The knots stand at the pixels 4, 234 and 465.
TEST_F(GradientPicture, PointersWidenDownwardsAndShowTheirColour) {
  Ramp ramp = ThreeKnots();
  ramp.knots[1].colour = {1, 0.5f, 0};  // bytes 255, trunc(127.995), 0
  Paint(ramp);
  EXPECT_EQ(At(234, 26), kBlack) << "the tip";
  for (std::int32_t y = 26; y <= 38; ++y) {
    const std::int32_t half = y < 31 ? y - 26 : 5;
    EXPECT_EQ(At(234 - half, y), kBlack) << y;
    EXPECT_EQ(At(234 + half, y), kBlack) << y;
    EXPECT_NE(At(234 - half - 1, y), kBlack) << y;
    EXPECT_NE(At(234 + half + 1, y), kBlack) << y;
  }
  for (const std::int32_t x : {230, 234, 238}) {
    EXPECT_EQ(At(x, 31), (FakePixel{255, 127, 0})) << x;
    EXPECT_EQ(At(x, 37), (FakePixel{255, 127, 0})) << x;
    EXPECT_EQ(At(x, 38), kBlack) << x;
  }
}

// The biases lie at the pixels 32 and 291.
TEST_F(GradientPicture, DiamondsStandOverTheSpans) {
  Paint(ThreeKnots());
  for (const std::int32_t centre : {32, 291}) {
    for (std::int32_t y = 0; y <= 12; ++y) {
      const std::int32_t half = y <= 6 ? y : 12 - y;
      EXPECT_EQ(At(centre - half, y), kBlack) << y;
      EXPECT_EQ(At(centre + half, y), kBlack) << y;
    }
  }
  EXPECT_EQ(At(465, 3), At(200, 3)) << "none over the last knot";
}

TEST_F(GradientPicture, StepsShowNoDiamonds) {
  Ramp ramp = ThreeKnots();
  ramp.interpolation = RampStep;
  Paint(ramp);
  for (const std::int32_t centre : {32, 291}) EXPECT_EQ(At(centre, 0), At(200, 0));
}

TEST_F(GradientPicture, TheSelectedHandleAloneIsHighlighted) {
  Ramp ramp = ThreeKnots();
  ramp.selected = 1;
  Paint(ramp);
  EXPECT_EQ(At(229, 35), kWhite);
  EXPECT_EQ(At(291, 0), kBlack);
  ramp.selected = 51;
  Paint(ramp);
  EXPECT_EQ(At(229, 35), kBlack);
  EXPECT_EQ(At(291, 0), kWhite);
  EXPECT_EQ(At(32, 0), kBlack);
}

TEST_F(GradientPicture, TheLastOfTheOrderLiesOnTop) {
  Ramp ramp = ThreeKnots();
  ramp.knots[0].colour = {0, 1, 0};
  ramp.knots[1].colour = {1, 0, 0};
  ramp.knots[1].position = 0.0078125f;  // pixel trunc(461 / 128 + 4) = 7: over that at 4
  RaiseKnot(ramp, 1);
  Paint(ramp);
  EXPECT_EQ(At(7, 35), (FakePixel{255, 0, 0}));
  RaiseKnot(ramp, 0);
  Paint(ramp);
  EXPECT_EQ(At(7, 35), (FakePixel{0, 255, 0}));
}

TEST_F(GradientPicture, KnotsFarOutsideAreNotSeen) {
  Ramp ramp = ThreeKnots();
  ramp.knots[0].position = -1e30f;
  ramp.knots[2].position = std::numeric_limits<float>::quiet_NaN();
  Paint(ramp);
  EXPECT_EQ(At(234, 26), kBlack);
}

}  // namespace
}  // namespace sorvanix
