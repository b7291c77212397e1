#include "host/bake/flat_bake.h"

#include <gtest/gtest.h>

#include <mutex>
#include <vector>

namespace sorvanix::host {
namespace {

// A picture of where it was sampled.
Vector WhereAndWhen(ChannelSample& sample) { return {sample.uvw.x, sample.uvw.y, sample.time}; }

Vector PixelOf(const Image& image, int x, int y) {
  const float* pixel = image.rgb.data() + image.IndexOf(x, y);
  return {pixel[0], pixel[1], pixel[2]};
}

TEST(FlatBake, AnotherNumberOfThreadsGivesTheSamePicture) {
  const FlatBakeSettings settings = {.width = 300, .height = 129, .samples = 3, .time = 2};
  const auto one = BakeFlat(WhereAndWhen, settings, {.threads = 1});
  for (const int threads : {2, 3, 8}) {
    EXPECT_EQ(BakeFlat(WhereAndWhen, settings, {.threads = threads})->rgb, one->rgb) << threads;
  }
}

// Pixel (x, y) of w x h is sampled at (x/w, y/h): of 4 x 2, the pixel (3, 1) at (3/4, 1/2).
TEST(FlatBake, OneSampleLiesInThePixelsUpperLeftCorner) {
  const auto image = BakeFlat(WhereAndWhen, {.width = 4, .height = 2, .time = 0.25f}, {});
  const Vector first = PixelOf(*image, 0, 0);
  EXPECT_EQ(first.x, 0.0f);
  EXPECT_EQ(first.y, 0.0f);
  EXPECT_EQ(first.z, 0.25f);
  const Vector last = PixelOf(*image, 3, 1);
  EXPECT_EQ(last.x, 0.75f);
  EXPECT_EQ(last.y, 0.5f);
}

// The coordinate is the double quotient narrowed once: 1/3 of a picture of 3 is the float 1/3.
TEST(FlatBake, CoordinatesAreNarrowedOnce) {
  const auto image = BakeFlat(WhereAndWhen, {.width = 3, .height = 1}, {});
  EXPECT_EQ(PixelOf(*image, 1, 0).x, static_cast<float>(1.0 / 3.0));
}

// Four samples of the pixel (1, 0) of 2 x 1 lie at u = (1 + 1/4)/2 and (1 + 3/4)/2: mean 3/4; at
// v = 1/4 and 3/4: mean 1/2. That is the pixel's middle.
TEST(FlatBake, SeveralSamplesSurroundThePixelsMiddle) {
  const auto image = BakeFlat(WhereAndWhen, {.width = 2, .height = 1, .samples = 2}, {});
  EXPECT_EQ(PixelOf(*image, 1, 0).x, 0.75f);
  EXPECT_EQ(PixelOf(*image, 1, 0).y, 0.5f);
}

TEST(FlatBake, SeveralSamplesAreAveraged) {
  std::mutex mutex;
  std::vector<float> seen;
  const auto steps = [&](ChannelSample& sample) {
    const std::lock_guard lock(mutex);
    seen.push_back(sample.uvw.x);
    return Vector{sample.uvw.x < 0.5f ? 0.0f : 1.0f, 0, 0};
  };
  // Of the four columns of samples at 1/8, 3/8, 5/8 and 7/8, two lie below 1/2.
  const auto image = BakeFlat(steps, {.width = 1, .height = 1, .samples = 4}, {});
  EXPECT_EQ(seen.size(), 16u);
  EXPECT_EQ(PixelOf(*image, 0, 0).x, 0.5f);
}

TEST(FlatBake, ASampleIsFilledAsInTheFlatPreview) {
  const auto check = [](ChannelSample& sample) {
    EXPECT_EQ(sample.uvw.z, 0.0f);
    EXPECT_EQ(sample.normal.x, 0.0f);
    EXPECT_EQ(sample.normal.y, 1.0f);
    EXPECT_EQ(sample.normal.z, 0.0f);
    EXPECT_EQ(sample.delta.x, 0.125f);  // 0.5 / 4
    EXPECT_EQ(sample.delta.y, 0.25f);   // 0.5 / 2
    EXPECT_EQ(sample.delta.z, 0.0f);
    EXPECT_EQ(sample.time, 3.0f);
    EXPECT_EQ(sample.texFlags, 0);
    EXPECT_EQ(sample.render, nullptr);
    EXPECT_EQ(sample.blurOffset, 0.0f);
    EXPECT_EQ(sample.blurScale, 1.0f);
    return Vector{};
  };
  BakeFlat(check, {.width = 4, .height = 2, .time = 3}, {});
}

TEST(FlatBake, OneOfSeveralSamplesIsSmallerThanThePixel) {
  const auto check = [](ChannelSample& sample) {
    EXPECT_EQ(sample.delta.x, 0.0625f);  // 0.5 / (4 * 2)
    EXPECT_EQ(sample.delta.y, 0.125f);   // 0.5 / (2 * 2)
    return Vector{};
  };
  BakeFlat(check, {.width = 4, .height = 2, .samples = 2}, {});
}

TEST(FlatBake, WhatAShaderWritesIntoASampleDoesNotReachTheNext) {
  const auto vandal = [](ChannelSample& sample) {
    EXPECT_EQ(sample.time, 0.0f);
    EXPECT_EQ(sample.normal.y, 1.0f);
    sample.time = 99;
    sample.normal = {};
    return Vector{};
  };
  BakeFlat(vandal, {.width = 8, .height = 8}, {.threads = 1});
}

TEST(FlatBake, ThinPicturesAreWhole) {
  for (const auto& [width, height] : {std::pair{1, 1}, {1, 200}, {200, 1}, {65, 63}}) {
    const auto image = BakeFlat(
        [](ChannelSample&) {
          return Vector{1, 2, 3};
        },
        {.width = width, .height = height}, {});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, width);
    EXPECT_EQ(image->height, height);
    for (std::size_t i = 0; i < image->rgb.size(); ++i) {
      ASSERT_EQ(image->rgb[i], static_cast<float>(i % 3 + 1));
    }
  }
}

TEST(FlatBake, ACancelledBakeGivesNoPicture) {
  for (const int side : {200, 2}) {  // many tiles, or the one that is being painted
    std::atomic<bool> cancelled = false;
    const auto interrupt = [&](ChannelSample&) {
      cancelled = true;
      return Vector{};
    };
    EXPECT_FALSE(BakeFlat(interrupt, {.width = side, .height = side}, {.cancelled = &cancelled}));
  }
}

}  // namespace
}  // namespace sorvanix::host
