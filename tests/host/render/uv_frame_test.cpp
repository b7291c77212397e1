#include "host/render/uv_frame.h"

#include <gtest/gtest.h>

#include "tests/host/render/matchers.h"

namespace sorvanix::host {
namespace {

constexpr Vec3 kOut = {0, 0, -1};

TEST(UvFrame, OfATriangle) {
  // 2 wide and 4 high on the wall: u grows to the right, v downwards.
  const Vec3 corners[3] = {{0, 4, 0}, {2, 4, 0}, {0, 0, 0}};
  const Vec3 uvw[3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
  const UvFrame frame = FrameOfTriangle(corners, uvw, 0.5, 0.25, kOut);
  EXPECT_THAT(frame.uvw, Vec(0.5, 0.25, 0));
  EXPECT_THAT(frame.gradientU, Vec(0.5, 0, 0));
  EXPECT_THAT(frame.gradientV, Vec(0, -0.25, 0));
  EXPECT_THAT(frame.tangentU, Vec(1, 0, 0));
  EXPECT_THAT(frame.tangentV, Vec(0, -1, 0));
  EXPECT_THAT(frame.UvwAt({1, -1, 5}), Vec(1, 0.5, 0));
}

TEST(UvFrame, SlantedCoordinatesKeepEachOtherStill) {
  // u = x, v = x + y: along growing u, v stays: (1, -1) / sqrt 2; along growing v, u stays: (0, 1).
  const UvFrame frame = FrameFromGradients({}, {1, 0, 0}, {1, 1, 0}, kOut);
  const double root = std::sqrt(0.5);
  EXPECT_THAT(frame.tangentU, Vec(root, -root, 0));
  EXPECT_THAT(frame.tangentV, Vec(0, 1, 0));
}

TEST(UvFrame, MirroredCoordinatesStillGrowAlongTheirTangents) {
  const UvFrame frame = FrameFromGradients({}, {-2, 0, 0}, {0, -3, 0}, kOut);
  EXPECT_GT(Dot(frame.tangentU, frame.gradientU), 0);
  EXPECT_GT(Dot(frame.tangentV, frame.gradientV), 0);
}

TEST(UvFrame, WhatIsMissingIsOrthonormalToTheNormal) {
  // No coordinates at all; u alone; v alone.
  for (const auto& [u, v] : {std::pair<Vec3, Vec3>{{}, {}}, {{0, 2, 0}, {}}, {{}, {0, 2, 0}}}) {
    const UvFrame frame = FrameFromGradients({}, u, v, kOut);
    EXPECT_NEAR(Length(frame.tangentU), 1, 1e-12);
    EXPECT_THAT(Cross(frame.tangentU, frame.tangentV), Vec(0, 0, -1));
  }
  EXPECT_THAT(FrameFromGradients({}, {0, 2, 0}, {}, kOut).tangentU, Vec(0, 1, 0));
  EXPECT_THAT(FrameFromGradients({}, {}, {0, 2, 0}, kOut).tangentV, Vec(0, 1, 0));
}

TEST(UvFrame, ATriangleWithoutAreaHasNoGradients) {
  const Vec3 corners[3] = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}};
  const Vec3 uvw[3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
  const UvFrame frame = FrameOfTriangle(corners, uvw, 0, 0, kOut);
  EXPECT_EQ(frame.gradientU, Vec3(0, 0, 0));
  EXPECT_NEAR(Length(frame.tangentU), 1, 1e-12);
}

TEST(UvFrame, AxesSpanThePlaneOfAnyNormal) {
  for (const Vec3& normal : {Vec3(1, 0, 0), Vec3(0, -1, 0), Vec3(0, 0, 1), Vec3(0.6, 0, -0.8)}) {
    const SurfaceAxes axes = AnyAxes(normal);
    EXPECT_NEAR(Length(axes.first), 1, 1e-12);
    EXPECT_THAT(Cross(axes.first, axes.second), Vec(normal.x, normal.y, normal.z));
  }
}

TEST(UvFrame, DifferencesOfALinearFunctionAreExact) {
  const auto uvwAt = [](const Vec3& p) { return Vec3(3 * p.x + 1, -2 * p.y, p.z); };
  const auto frame = FrameByDifferences(uvwAt, {1, 1, 1}, kOut, 0.25);
  ASSERT_TRUE(frame);
  EXPECT_THAT(frame->uvw, Vec(4, -2, 1));
  EXPECT_THAT(frame->gradientU, Vec(3, 0, 0));
  EXPECT_THAT(frame->gradientV, Vec(0, -2, 0));
}

TEST(UvFrame, ASeamDoesNotShowInTheDifferences) {
  // u falls back from 1 to 0 at x = 0.
  const auto uvwAt = [](const Vec3& p) { return Vec3(p.x - std::floor(p.x), p.y, 0); };
  for (const double x : {-1e-5, 0.0, 1e-5}) {
    const auto frame = FrameByDifferences(uvwAt, {x, 0, 0}, kOut, 1e-3);
    EXPECT_THAT(frame->gradientU, NearVec(1, 0, 0, 1e-9));
  }
}

TEST(UvFrame, NothingFromNothing) {
  EXPECT_FALSE(FrameByDifferences([](const Vec3&) { return std::nullopt; }, {}, kOut, 1));
}

}  // namespace
}  // namespace sorvanix::host
