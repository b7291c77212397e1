#include "host/render/shading_record.h"

#include <gtest/gtest.h>

#include "tests/host/render/matchers.h"
#include "tests/host/render/wall.h"

namespace sorvanix::host {
namespace {

TEST(ShadingRecord, EveryFieldOfASampleIsFilled) {
  WallSample wall;
  wall.lights.resize(3);
  wall.Begin();
  const RenderContext& context = *wall.Context();
  EXPECT_THAT(context.hitPoint, FloatVec(0.5, 1, 0));
  EXPECT_THAT(context.localHitPoint, FloatVec(0.5, 1, 0));
  EXPECT_THAT(context.bumpNormal, FloatVec(0, 0, -1));
  EXPECT_THAT(context.faceNormal, FloatVec(0, 0, -1));
  EXPECT_THAT(context.baseNormal, FloatVec(0, 0, -1));
  ASSERT_NE(context.ray, nullptr);
  EXPECT_EQ(context.ray->origin[2], -10);
  EXPECT_EQ(context.ray->direction[2], 1);
  EXPECT_THAT(context.viewPoint, FloatVec(0, 0, 10));  // the hit as seen from the eye
  EXPECT_EQ(context.lightParamA, 5);
  EXPECT_EQ(context.lightParamB, 1);
  EXPECT_EQ(context.lightCount, 3);
  EXPECT_EQ(context.lightsEnabled, 1);
  EXPECT_EQ(context.filteringOn, 1);
  EXPECT_EQ(context.filterScale, 1);
  EXPECT_EQ(context.side, 1);
  EXPECT_EQ(context.object, &wall.object);
  ASSERT_NE(context.uvwRecord, nullptr);
  EXPECT_EQ(context.uvwRecord->cornerCount, 4);
  EXPECT_EQ(context.textureTag, nullptr);
  EXPECT_NEAR(Length(Vec3(context.tangentU)), 1, 1e-6);
  EXPECT_NEAR(Length(Vec3(context.tangentV)), 1, 1e-6);
}

TEST(ShadingRecord, FootprintHasThreeCornersOfTheSample) {
  WallSample wall;
  const RenderContext& context = *wall.Context();
  // Upper left, upper right, lower left of 0.02 x 0.04 around (0.5, 1).
  EXPECT_THAT(context.footprintA, FloatVec(0.49, 1.02, 0));
  EXPECT_THAT(context.footprintB, FloatVec(0.51, 1.02, 0));
  EXPECT_THAT(context.footprintC, FloatVec(0.49, 0.98, 0));
}

TEST(ShadingRecord, TheBackOfAFaceHasSideMinusOne) {
  WallSample wall;
  SurfaceSample sample = wall.Sample();
  sample.direction = {0, 0, -1};
  BeginSample(wall.record, sample);
  EXPECT_EQ(wall.Context()->side, -1);
}

TEST(ShadingRecord, ASampleSeesNothingOfTheFormerOne) {
  WallSample wall;
  const TextureTag tag = UvwTag();
  LayTexture(wall.record, &tag, *FrameOfTag(wall.record, tag, 0), 0);
  wall.Context()->bumpNormal = {1, 0, 0};
  wall.Context()->bumpTint = {1, 1, 1};
  wall.Context()->lightParamB = 0;
  wall.record.isPrepared = true;
  wall.Begin();
  EXPECT_THAT(wall.Context()->bumpNormal, FloatVec(0, 0, -1));
  EXPECT_THAT(wall.Context()->bumpTint, FloatVec(0, 0, 0));
  EXPECT_EQ(wall.Context()->lightParamB, 1);
  EXPECT_EQ(wall.Context()->textureTag, nullptr);
  EXPECT_FALSE(wall.record.isPrepared);
}

TEST(ShadingRecord, UvwAndTangentsOfATag) {
  WallSample wall;
  TextureTag tag = UvwTag();
  tag.flags = 3;
  const auto uv = FrameOfTag(wall.record, tag, 0);
  ASSERT_TRUE(uv);
  LayTexture(wall.record, &tag, *uv, 0);
  EXPECT_EQ(wall.Context()->textureTag, &tag);
  EXPECT_THAT(wall.Context()->tangentU, FloatVec(1, 0, 0));
  EXPECT_THAT(wall.Context()->tangentV, FloatVec(0, -1, 0));
  const ChannelSample sample = SampleAt(wall.record);
  EXPECT_THAT(sample.uvw, FloatVec(0.75, 0.25, 0));
  // Half of 0.02 on a width of 2, half of 0.04 on a height of 4.
  EXPECT_THAT(sample.delta, FloatVec(0.005, 0.005, 0));
  EXPECT_EQ(sample.texFlags, 3);
  EXPECT_EQ(sample.render, wall.Context());
  EXPECT_EQ(sample.blurScale, 1);
}

TEST(ShadingRecord, LengthAndOffsetChangeTheCoordinates) {
  WallSample wall;
  TextureTag tag = UvwTag();
  tag.offsetU = 0.25f;
  tag.lengthU = 0.5f;
  tag.lengthV = -0.25f;
  const auto uv = FrameOfTag(wall.record, tag, 0);
  LayTexture(wall.record, &tag, *uv, 0);
  EXPECT_THAT(SampleAt(wall.record).uvw, FloatVec(1, -1, 0));
  EXPECT_THAT(SampleAt(wall.record).delta, FloatVec(0.01, 0.02, 0));
  EXPECT_THAT(wall.Context()->tangentV, FloatVec(0, 1, 0));  // v grows upwards now
}

TEST(ShadingRecord, AnotherSetOfCoordinates) {
  WallSample wall;
  const TextureTag tag = UvwTag();
  const auto uv = FrameOfTag(wall.record, tag, 1);
  LayTexture(wall.record, &tag, *uv, 1);
  EXPECT_THAT(SampleAt(wall.record).uvw, FloatVec(7.5, 2.5, 0));
  EXPECT_THAT(wall.Context()->uvwRecord->uvw[2], FloatVec(10, 10, 0));
}

TEST(ShadingRecord, ASetThatIsMissingIsAllZero) {
  WallSample wall;
  const TextureTag tag = UvwTag();
  const auto uv = FrameOfTag(wall.record, tag, 2);
  ASSERT_TRUE(uv);
  EXPECT_EQ(uv->uvw, Vec3(0, 0, 0));
  EXPECT_THAT(Cross(uv->tangentU, uv->tangentV), Vec(0, 0, -1));
}

TEST(ShadingRecord, WithoutACameraThereIsNoFrontalProjection) {
  WallSample wall;
  TextureTag tag = UvwTag();
  tag.projection = 4;
  EXPECT_TRUE(FrameOfTag(wall.record, tag, 0));
  wall.frame.view = nullptr;
  EXPECT_FALSE(FrameOfTag(wall.record, tag, 0));
}

TEST(ShadingRecord, AProjectionIsFollowedByDifferences) {
  WallSample wall;
  TextureTag tag = UvwTag();
  tag.projection = 2;  // flat on x, y of -1..1
  const auto uv = FrameOfTag(wall.record, tag, 0);
  ASSERT_TRUE(uv);
  EXPECT_THAT(uv->uvw, Vec(0.75, 0, 0));
  EXPECT_THAT(uv->gradientU, NearVec(0.5, 0, 0, 1e-9));
  EXPECT_THAT(uv->tangentV, NearVec(0, -1, 0, 1e-9));
}

TEST(ShadingRecord, WithoutFilteringSamplesHaveNoSize) {
  WallSample wall;
  wall.frame.filtering = false;
  wall.Begin();
  const TextureTag tag = UvwTag();
  LayTexture(wall.record, &tag, *FrameOfTag(wall.record, tag, 0), 0);
  EXPECT_EQ(wall.Context()->filteringOn, 0);
  EXPECT_THAT(SampleAt(wall.record).delta, FloatVec(0, 0, 0));
}

}  // namespace
}  // namespace sorvanix::host
