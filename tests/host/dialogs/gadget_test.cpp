#include "host/dialogs/gadget.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace sorvanix::host {
namespace {

using ::testing::HasSubstr;

Gadget Make(ElementKind kind, std::vector<ChoiceEntry> entries = {}) {
  LayoutElement element;
  element.kind = kind;
  element.id = 1;
  element.entries = std::move(entries);
  return Gadget(element);
}

// As the module's setFloat leaves it.
Gadget MakeReal(float value, float minimum, float maximum, float step = 1,
                std::int32_t format = FormatReal) {
  Gadget gadget = Make(ElementKind::Real);
  gadget.SetNumber(value);
  gadget.minimum = minimum;
  gadget.maximum = maximum;
  gadget.step = step;
  gadget.format = format;
  return gadget;
}

Json Number(double value) { return Json(value); }
Json Whole(std::int64_t value) { return Json(value); }

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

TEST(Gadget, AChoiceIsMadeByValueOrLabel) {
  const Gadget gadget = Make(ElementKind::Choice, {{0, "Flat"}, {3, "Plane"}});
  EXPECT_EQ(std::get<std::int32_t>(TypedValue(gadget, Whole(3)).value()), 3);
  EXPECT_EQ(std::get<std::int32_t>(TypedValue(gadget, Json(std::string("Plane"))).value()), 3);
  EXPECT_THAT(TypedValue(gadget, Json(std::string("Plan"))).error(),
              HasSubstr("unknown entry \"Plan\"; did you mean \"Plane\"?"));
  EXPECT_THAT(TypedValue(gadget, Whole(1)).error(),
              HasSubstr("none of the entries has the value 1"));
  EXPECT_THAT(TypedValue(gadget, Json(true)).error(), HasSubstr("expected an entry"));
}

TEST(Gadget, AColourIsKeptWithinItsRange) {
  const Gadget gadget = Make(ElementKind::Colour);
  const auto colour = std::get<Vector>(
      TypedValue(gadget, Json(Json::Array{Number(-1), Number(0.5), Whole(7)})).value());
  EXPECT_EQ(colour.x, 0);
  EXPECT_EQ(colour.y, 0.5f);
  EXPECT_EQ(colour.z, 1);
  const auto hex = std::get<Vector>(TypedValue(gadget, Json(std::string("#ff0000"))).value());
  EXPECT_EQ(hex.x, 1);
  EXPECT_EQ(hex.y, 0);
  EXPECT_THAT(TypedValue(gadget, Json(Json::Array{Number(1)})).error(),
              HasSubstr("expected three numbers, found 1"));
}

TEST(Gadget, ValuesOfTheWrongKindAreRefused) {
  EXPECT_THAT(TypedValue(Make(ElementKind::Real), Json(std::string("1"))).error(),
              HasSubstr("expected a number, found a text"));
  EXPECT_THAT(TypedValue(Make(ElementKind::Check), Whole(1)).error(),
              HasSubstr("expected true or false"));
  EXPECT_THAT(TypedValue(Make(ElementKind::Button), Json(false)).error(),
              HasSubstr("presses the button"));
  EXPECT_THAT(TypedValue(Make(ElementKind::Text), Json()).error(), HasSubstr("expected a text"));
  EXPECT_THAT(TypedValue(Make(ElementKind::Label), Json(std::string("x"))).error(),
              HasSubstr("label takes no value"));
  EXPECT_THAT(TypedValue(Make(ElementKind::Area), Whole(1)).error(),
              HasSubstr("area takes no value"));
}

TEST(Gadget, ShowsComparesAsTheUserSees) {
  const Gadget percent = MakeReal(0.1f, 0, 1, 0.01f, FormatPercent);
  EXPECT_TRUE(Shows(percent, Whole(10)));
  EXPECT_FALSE(Shows(percent, Number(10.001)));
  const Gadget large = MakeReal(9e18f, 0, 1e19f);
  EXPECT_TRUE(Shows(large, Number(9e18)));
  Gadget choice = Make(ElementKind::Choice, {{0, "Flat"}, {3, "Plane"}});
  choice.SetNumber(std::int32_t{3});
  EXPECT_TRUE(Shows(choice, Json(std::string("Plane"))));
  EXPECT_FALSE(Shows(choice, Whole(0)));
  Gadget colour = Make(ElementKind::Colour);
  colour.value = Vector{2, 0, 0};  // as a file may hold it
  EXPECT_TRUE(Shows(colour, Json(Json::Array{Whole(2), Whole(0), Whole(0)})));
  EXPECT_FALSE(Shows(colour, Json(Json::Array{Whole(1), Whole(0), Whole(0)})));
  const Gadget check = Make(ElementKind::Check);
  EXPECT_TRUE(Shows(check, Json(false)));
  EXPECT_FALSE(Shows(check, Whole(0))) << "false is not 0";
}

}  // namespace
}  // namespace sorvanix::host
