#include "host/dialogs/gadget.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/host/dialogs/gadget_maker.h"

namespace sorvanix::host::test {
namespace {

using ::testing::HasSubstr;

float TypedReal(const Gadget& gadget, double shown) {
  return std::get<float>(TypedValue(gadget, Number(shown)).value());
}

TEST(Gadget, ANumberIsKeptWithinItsLimitsWhenItIsTyped) {
  const Gadget gadget = MakeReal(1, 0, 20);
  EXPECT_EQ(TypedReal(gadget, 0), 0);
  EXPECT_EQ(TypedReal(gadget, 20), 20);
  EXPECT_EQ(TypedReal(gadget, -0.001), 0);
  EXPECT_EQ(TypedReal(gadget, 20.001), 20);
  EXPECT_EQ(TypedReal(gadget, 1e300), 20);
}

TEST(Gadget, ANumberOutsideTheLimitsStaysWhenTheModuleSetsIt) {
  const Gadget gadget = MakeReal(50, 0, 20);
  EXPECT_EQ(gadget.ShownNumber(), 50);
}

TEST(Gadget, ALimitThatIsNoWholeBinaryFractionCanBeTyped) {
  // 0.1 is nearer to 0 than the float 0.1f: compared as doubles it would be raised to the limit.
  const Gadget gadget = MakeReal(1, 0.1f, 1);
  EXPECT_EQ(TypedReal(gadget, 0.1), 0.1f);
}

TEST(Gadget, NumbersWithoutLimitsSaturateAtTheLargestFloat) {
  Gadget gadget = Make(ElementKind::Real);
  EXPECT_EQ(TypedReal(gadget, 1e300), std::numeric_limits<float>::max());
  EXPECT_EQ(TypedReal(gadget, -1e300), -std::numeric_limits<float>::max());
}

TEST(Gadget, PercentShowsAHundredfold) {
  const Gadget gadget = MakeReal(0.5f, -1, 10, 0.01f, FormatPercent);
  EXPECT_EQ(gadget.ShownNumber(), 50);
  EXPECT_EQ(TypedReal(gadget, 33), 0.33f);
  EXPECT_EQ(TypedReal(gadget, 2000), 10);
  EXPECT_EQ(TypedReal(gadget, -200), -1);
}

TEST(Gadget, DegreesShowRadians) {
  const auto pi = static_cast<float>(std::numbers::pi);
  const Gadget gadget = MakeReal(pi / 2, 0, 2 * pi, 0.1f, FormatDegrees);
  EXPECT_NEAR(gadget.ShownNumber(), 90, 1e-5);
  EXPECT_FLOAT_EQ(TypedReal(gadget, 180), pi);
  EXPECT_EQ(TypedReal(gadget, 400), 2 * pi);
}

TEST(Gadget, ArrowsGoBySteps) {
  // 50 % and three steps of 1 %.
  const Gadget percent = MakeReal(0.5f, 0, 1, 0.01f, FormatPercent);
  EXPECT_FLOAT_EQ(std::get<float>(percent.Stepped(3)), 0.53f);
  EXPECT_EQ(std::get<float>(percent.Stepped(1000)), 1);
  Gadget whole = Make(ElementKind::Integer);
  whole.SetNumber(std::int32_t{7});
  whole.step = 2;
  EXPECT_EQ(std::get<std::int32_t>(whole.Stepped(-3)), 1);
}

TEST(Gadget, WholeNumbersStayWhole) {
  Gadget gadget = Make(ElementKind::Integer);
  gadget.SetNumber(std::int32_t{5});
  gadget.minimum = 0;
  gadget.maximum = 10;
  EXPECT_EQ(std::get<std::int32_t>(TypedValue(gadget, Whole(11)).value()), 10);
  EXPECT_EQ(std::get<std::int32_t>(TypedValue(gadget, Number(4.0)).value()), 4);
  EXPECT_THAT(TypedValue(gadget, Number(4.5)).error(), HasSubstr("expected a whole number"));
}

TEST(Gadget, WholeNumbersSaturateAtTheLargest) {
  const Gadget gadget = Make(ElementKind::Integer);
  EXPECT_EQ(std::get<std::int32_t>(TypedValue(gadget, Number(1e20)).value()), INT32_MAX);
  EXPECT_EQ(std::get<std::int32_t>(TypedValue(gadget, Number(-1e20)).value()), INT32_MIN);
}

TEST(Gadget, ASliderIsWholeWhenTheModuleSetsAWholeNumber) {
  Gadget gadget = Make(ElementKind::Slider);
  gadget.SetNumber(std::int32_t{3});
  EXPECT_EQ(std::get<std::int32_t>(gadget.value), 3);
  gadget.SetNumber(0.25f);
  EXPECT_EQ(std::get<float>(gadget.value), 0.25f);
}

TEST(Gadget, NumbersOfOtherTypesAreConverted) {
  Gadget check = Make(ElementKind::Check);
  check.SetNumber(std::int32_t{7});
  EXPECT_EQ(std::get<bool>(check.value), true);
  EXPECT_EQ(check.Integer(), 1);
  Gadget whole = Make(ElementKind::Integer);
  whole.SetNumber(2.9f);
  EXPECT_EQ(whole.Integer(), 2);
  whole.SetNumber(std::nanf(""));
  EXPECT_EQ(whole.Integer(), 0);
  whole.SetNumber(1e30f);
  EXPECT_EQ(whole.Integer(), INT32_MAX);
  Gadget text = Make(ElementKind::Text);
  text.SetNumber(1.0f);
  EXPECT_EQ(text.Integer(), std::nullopt);
}

TEST(Gadget, NaNIsShownAndLimitsOfNaNLimitNothing) {
  const float nan = std::nanf("");
  const Gadget gadget = MakeReal(nan, nan, nan);
  EXPECT_EQ(WriteJson(ShownValue(gadget)), "\"NaN\"");
  EXPECT_EQ(TypedReal(gadget, -5), -5);
}

}  // namespace
}  // namespace sorvanix::host::test
