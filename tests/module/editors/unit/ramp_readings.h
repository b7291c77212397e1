// What tests of the gradient editor share: ramps to edit, and their knots as lists.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

#include "module/kit/ramp.h"
#include "module/kit/ramp_edit.h"

namespace sorvanix::test {

constexpr Vector Grey(float v) { return {v, v, v}; }

/// Knots at 0, 0.5 and 1, that is at the pixels 4, trunc(461 * 0.5 + 4) = 234 and 465, with greys
/// 0, 0.25 and 1 and biases 0.125, 0.25 and 0.75. Knot 0 is on top and selected.
constexpr Ramp ThreeKnots() {
  Ramp ramp = DefaultRamp({Grey(0), 0, 0.125f}, {Grey(0.25f), 0.5f, 0.25f}, {Grey(1), 1, 0.75f});
  ramp.interpolation = RampLinear;
  return ramp;
}

/// The same with a knot of grey 0.5 and bias 0.375 at 0.25, pixel trunc(461 * 0.25 + 4) = 119.
/// It is knot 1, on top and selected: the order is 3, 2, 0, 1.
inline Ramp FourKnots() {
  Ramp ramp = ThreeKnots();
  ramp.selected = InsertKnot(ramp, Grey(0.5f), 0.25f, 0.375f);
  return ramp;
}

/// As many black knots from 0 on, 1/64 apart.
inline Ramp ManyKnots(std::int32_t count) {
  Ramp ramp;
  for (std::int32_t i = 0; i < count; ++i) {
    InsertKnot(ramp, Grey(0), static_cast<float>(i) / 64, 0.5f);
  }
  return ramp;
}

inline std::vector<float> Positions(const Ramp& ramp) {
  std::vector<float> values;
  for (std::int32_t i = 0; i < ramp.count; ++i) values.push_back(ramp.knots[i].position);
  return values;
}
inline std::vector<float> Biases(const Ramp& ramp) {
  std::vector<float> values;
  for (std::int32_t i = 0; i < ramp.count; ++i) values.push_back(ramp.knots[i].bias);
  return values;
}
/// The red components: enough to tell grey knots apart.
inline std::vector<float> Colours(const Ramp& ramp) {
  std::vector<float> values;
  for (std::int32_t i = 0; i < ramp.count; ++i) values.push_back(ramp.knots[i].colour.x);
  return values;
}
inline std::vector<std::int32_t> Order(const Ramp& ramp) {
  return {ramp.order, ramp.order + ramp.count};
}

/// Knots ascend within 0..1, the order names each once, and the selected one is on top.
inline void ExpectSound(const Ramp& ramp) {
  const std::vector<float> positions = Positions(ramp);
  EXPECT_TRUE(std::is_sorted(positions.begin(), positions.end()));
  EXPECT_THAT(positions, testing::Each(testing::AllOf(testing::Ge(0.0f), testing::Le(1.0f))));
  EXPECT_THAT(Biases(ramp), testing::Each(testing::AllOf(testing::Ge(0.0f), testing::Le(1.0f))));
  std::vector<std::int32_t> all(static_cast<std::size_t>(ramp.count));
  std::iota(all.begin(), all.end(), 0);
  EXPECT_THAT(Order(ramp), testing::UnorderedElementsAreArray(all));
  EXPECT_EQ(ramp.selected % RampMaxKnots, ramp.order[ramp.count - 1]);
}

/// The ramps are the same in every word of their live part.
inline void ExpectSame(const Ramp& actual, const Ramp& expected) {
  EXPECT_EQ(Positions(actual), Positions(expected));
  EXPECT_EQ(Biases(actual), Biases(expected));
  EXPECT_EQ(Colours(actual), Colours(expected));
  EXPECT_EQ(Order(actual), Order(expected));
  EXPECT_EQ(actual.interpolation, expected.interpolation);
  EXPECT_EQ(actual.selected, expected.selected);
}

}  // namespace sorvanix::test
