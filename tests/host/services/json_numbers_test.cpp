#include "host/services/json_numbers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace sorvanix::host {
namespace {

std::string Written(float value) { return WriteJson(JsonOf(value), -1); }

TEST(JsonNumbers, AFloatTakesItsShortestForm) {
  EXPECT_EQ(Written(0.1f), "0.1");
  EXPECT_EQ(Written(2.1f), "2.1");
  EXPECT_EQ(Written(16777216.0f), "16777216.0");
  EXPECT_EQ(Written(-0.0f), "-0.0");
}

TEST(JsonNumbers, NumbersThatJsonCannotSayAreTexts) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(Written(kInfinity), R"("Infinity")");
  EXPECT_EQ(Written(-kInfinity), R"("-Infinity")");
  EXPECT_EQ(Written(std::bit_cast<float>(0x7FC00000u)), R"("NaN")");
  EXPECT_EQ(Written(std::bit_cast<float>(0xFFC00001u)), R"("NaN:ffc00001")");
}

RC_GTEST_PROP(JsonNumbers, EveryFloatComesBackBitForBit, ()) {
  const auto bits = *rc::gen::resize(200, rc::gen::arbitrary<std::uint32_t>());
  const auto again = FloatIn(JsonOf(std::bit_cast<float>(bits)));
  RC_ASSERT(again.has_value());
  RC_ASSERT(std::bit_cast<std::uint32_t>(*again) == bits);
}

// The limits of every binade are where decimal and binary rounding disagree most easily.
TEST(JsonNumbers, TheNeighboursOfEveryPowerOfTwoComeBack) {
  for (std::uint32_t exponent = 0; exponent < 255; ++exponent) {
    for (const std::uint32_t mantissa : {0u, 1u, 0x7FFFFFu}) {
      const auto value = std::bit_cast<float>((exponent << 23) | mantissa);
      ASSERT_EQ(FloatIn(*ParseJson(Written(value))), value);
    }
  }
}

TEST(JsonNumbers, AnIntegerIsAFloatTooButNotTheOtherWayRound) {
  EXPECT_EQ(FloatIn(*ParseJson("3")), 3.0f);
  EXPECT_EQ(IntegerIn(*ParseJson("3.0")), std::nullopt);
}

TEST(JsonNumbers, WhatDoesNotFitIsNothing) {
  EXPECT_EQ(IntegerIn(*ParseJson("2147483647")), 2147483647);
  EXPECT_EQ(IntegerIn(*ParseJson("2147483648")), std::nullopt);
  EXPECT_EQ(IntegerIn(*ParseJson("-2147483649")), std::nullopt);
  EXPECT_EQ(FloatIn(*ParseJson("3.5e38")), std::nullopt);
  EXPECT_EQ(FloatIn(*ParseJson("-3.5e38")), std::nullopt);
  EXPECT_EQ(FloatIn(*ParseJson("true")), std::nullopt);
}

TEST(JsonNumbers, OnlyItsOwnNamesAreNumbers) {
  for (const char* name :
       {R"("")", R"("nan")", R"("Inf")", R"("NaN:")", R"("NaN:7fc0000")", R"("NaN:7fc000000")",
        R"("NaN:3f800000")", R"("NaN:7f800000")", R"("NaN:7fc0000g")"}) {
    EXPECT_EQ(FloatIn(*ParseJson(name)), std::nullopt) << name;
  }
  EXPECT_TRUE(std::isnan(*FloatIn(*ParseJson(R"("NaN")"))));
}

TEST(JsonNumbers, AVectorIsThreeNumbers) {
  EXPECT_EQ(VectorIn(*ParseJson("[1, 0.5, \"Infinity\"]"))->y, 0.5f);
  EXPECT_FALSE(VectorIn(*ParseJson("[1, 2]")).has_value());
  EXPECT_FALSE(VectorIn(*ParseJson("[1, 2, true]")).has_value());
  EXPECT_FALSE(VectorIn(*ParseJson("1")).has_value());
}

}  // namespace
}  // namespace sorvanix::host
