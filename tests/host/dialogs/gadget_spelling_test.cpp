#include "host/dialogs/gadget_spelling.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/host/dialogs/gadget_maker.h"

namespace sorvanix::host::test {
namespace {

using ::testing::HasSubstr;

TEST(GadgetSpelling, AChoiceIsMadeByValueOrLabel) {
  const Gadget gadget = Make(ElementKind::Choice, {{0, "Flat"}, {3, "Plane"}});
  EXPECT_EQ(std::get<std::int32_t>(TypedValue(gadget, Whole(3)).value()), 3);
  EXPECT_EQ(std::get<std::int32_t>(TypedValue(gadget, Json(std::string("Plane"))).value()), 3);
  EXPECT_THAT(TypedValue(gadget, Json(std::string("Plan"))).error(),
              HasSubstr("unknown entry \"Plan\"; did you mean \"Plane\"?"));
  EXPECT_THAT(TypedValue(gadget, Whole(1)).error(),
              HasSubstr("none of the entries has the value 1"));
  EXPECT_THAT(TypedValue(gadget, Json(true)).error(), HasSubstr("expected an entry"));
}

TEST(GadgetSpelling, AColourIsKeptWithinItsRange) {
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

TEST(GadgetSpelling, ValuesOfTheWrongKindAreRefused) {
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

TEST(GadgetSpelling, ShowsComparesAsTheUserSees) {
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
}  // namespace sorvanix::host::test
