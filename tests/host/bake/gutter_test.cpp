#include "host/bake/gutter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace sorvanix::host {
namespace {

TEST(Gutter, RepeatsTheEdge) {
  UvChart chart = {
      .width = 5, .height = 3, .tile = {}, .triangle = std::vector<std::int32_t>(15, -1)};
  chart.triangle[5] = 0;  // the left texel of the middle row
  std::vector<float> rgb(45, 0);
  rgb[15] = 1;
  rgb[16] = 0.5f;
  DilateGutter(chart, 2, rgb);
  const auto red = [&](std::size_t x, std::size_t y) { return rgb[(y * 5 + x) * 3]; };
  for (std::size_t y = 0; y < 3; ++y) {
    EXPECT_EQ(red(0, y), 1);
    EXPECT_EQ(red(1, y), 1);
    EXPECT_EQ(red(2, y), 1);
    EXPECT_EQ(red(3, y), 0);
  }
}

TEST(Gutter, BetweenTwoChartsIsTheirMean) {
  UvChart chart = {.width = 3, .height = 1, .tile = {}, .triangle = {0, -1, 0}};
  std::vector<float> rgb = {1, 0, 0, 9, 9, 9, 0, 0.5f, 0};
  DilateGutter(chart, 1, rgb);
  EXPECT_EQ(rgb, (std::vector<float>{1, 0, 0, 0.5f, 0.25f, 0, 0, 0.5f, 0}));
}

TEST(Gutter, NoneLeavesAllAsItIs) {
  const UvChart chart = {.width = 2, .height = 1, .tile = {}, .triangle = {0, -1}};
  std::vector<float> rgb = {1, 1, 1, 7, 7, 7};
  DilateGutter(chart, 0, rgb);
  EXPECT_EQ(rgb[3], 7);
}

TEST(Gutter, GrowsRoundCornersAndStopsAtTheBorder) {
  // A chart of one texel in the corner: what is n texels away, along rows or columns, is reached by
  // the nth ring, and rings beyond the picture find nothing to do.
  UvChart chart = {
      .width = 9, .height = 6, .tile = {}, .triangle = std::vector<std::int32_t>(54, -1)};
  chart.triangle[53] = 0;
  for (const int rings : {1, 3, 8, 1000000}) {
    std::vector<float> rgb(54 * 3, 0);
    rgb[53 * 3] = 1;
    DilateGutter(chart, rings, rgb);
    for (int i = 0; i < 54; ++i) {
      const int away = std::max(8 - i % 9, 5 - i / 9);
      EXPECT_EQ(rgb[static_cast<std::size_t>(i) * 3], away <= rings ? 1 : 0) << rings << ' ' << i;
    }
  }
}

TEST(Gutter, WithoutAChartNothingGrows) {
  const UvChart chart = {.width = 2, .height = 1, .tile = {}, .triangle = {-1, -1}};
  std::vector<float> rgb = {1, 2, 3, 4, 5, 6};
  DilateGutter(chart, 3, rgb);
  EXPECT_EQ(rgb, (std::vector<float>{1, 2, 3, 4, 5, 6}));
}

}  // namespace
}  // namespace sorvanix::host
