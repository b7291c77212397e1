#include "host/images/quantise.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace sorvanix::host {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(Quantise, EveryWholeNumberComesBackFromItsOwnValue) {
  for (const unsigned maximum : {255u, 65535u}) {
    for (unsigned whole = 0; whole <= maximum; ++whole) {
      const float value = static_cast<float>(static_cast<double>(whole) / maximum);
      ASSERT_EQ(Quantise(value, maximum), whole) << whole << " of " << maximum;
    }
  }
}

TEST(Quantise, TheNearestWholeNumberIsTaken) {
  // 0.25 * 255 = 63.75 and 0.75 * 255 = 191.25; 0.5 * 255 = 127.5, a half, goes up.
  EXPECT_EQ(Quantise(0.25f, 255), 64u);
  EXPECT_EQ(Quantise(0.75f, 255), 191u);
  EXPECT_EQ(Quantise(0.5f, 255), 128u);
  EXPECT_EQ(Quantise(0.5f, 65535), 32768u);
}

TEST(Quantise, WhatLiesOutsideSaturatesAndNanIsBlack) {
  EXPECT_EQ(Quantise(-0.001f, 255), 0u);
  EXPECT_EQ(Quantise(-kInfinity, 255), 0u);
  EXPECT_EQ(Quantise(1.001f, 255), 255u);
  EXPECT_EQ(Quantise(3e38f, 65535), 65535u);
  EXPECT_EQ(Quantise(kInfinity, 255), 255u);
  EXPECT_EQ(Quantise(std::nanf(""), 255), 0u);
  EXPECT_EQ(Quantise(-std::nanf(""), 65535), 0u);
}

TEST(Quantise, JustBelowOneNeverOverflows) {
  EXPECT_EQ(Quantise(std::nextafter(1.0f, 0.0f), 255), 255u);
  EXPECT_EQ(Quantise(std::nextafter(1.0f, 0.0f), 65535), 65535u);
}

}  // namespace
}  // namespace sorvanix::host
