// Projector: what it asks the host to project and through which tag, and what its input sees.
#include <cstring>
#include <numbers>

#include "module/kit/matrix.h"
#include "tests/module/shaders/surface/projector_fixture.h"

namespace sorvanix::test {
namespace {

TEST_F(ProjectorTest, FillsAllCallbacks) {
  EXPECT_NE(record.Alloc, nullptr);
  EXPECT_NE(record.Free, nullptr);
  EXPECT_NE(record.Copy, nullptr);
  EXPECT_NE(record.Compare, nullptr);
  EXPECT_NE(record.Read, nullptr);
  EXPECT_NE(record.Write, nullptr);
  ASSERT_NE(record.Edit, nullptr);
  EXPECT_EQ(record.Edit(&instance), 0);
  ASSERT_NE(record.GetInfo, nullptr);
  EXPECT_EQ(record.GetInfo(), 0x0220000Fu);
  EXPECT_NE(record.Message, nullptr);
  EXPECT_NE(record.InitRender, nullptr);
  EXPECT_NE(record.FreeRender, nullptr);
  EXPECT_NE(record.Output, nullptr);
}

// --- without a render ---

TEST_F(ProjectorTest, WithoutARenderOrSlotsTheInputGetsTheSampleAsItStands) {
  sample.blurOffset = 0.5f;
  sample.blurScale = 3;
  instance.channel = ChannelBump;
  for (const bool withRender : {false, true}) {
    host.reads.clear();
    sample.render = withRender ? &render : nullptr;
    ExpectExactly(Output(), kInputColour);
    const LinkRead& read = Read();
    ExpectExactly(read.uvw, sample.uvw);
    ExpectExactly(read.delta, sample.delta);
    ExpectExactly(read.normal, sample.normal);
    EXPECT_EQ(read.time, 4);
    EXPECT_EQ(read.tagFlag, 77);
    EXPECT_EQ(read.blurOffset, 0.5f);
    EXPECT_EQ(read.blurScale, 3);
  }
  EXPECT_TRUE(projection.projections.empty());
}

TEST_F(ProjectorTest, WithoutAnInputNothingIsWritten) {
  BeginRender();
  ChannelLink* lost = block.input;
  block.input = nullptr;
  ExpectExactly(Output(), {-1, -1, -1});
  block.input = lost;
}

// --- what is projected ---

TEST_F(ProjectorTest, WithoutATagTheWorldPointsAreProjected) {
  const UvwRecord polygon = {};
  render.uvwRecord = &polygon;
  BeginRender();
  block.uvwIndex = 3;
  Output();
  ASSERT_EQ(projection.setUps.size(), 1u);
  const TextureSetUp& setUp = projection.setUps[0];
  EXPECT_EQ(setUp.uvwIndex, 3);
  ExpectExactly(setUp.points[0], {1, 2, 3});
  ExpectExactly(setUp.points[1], {2, 2, 3});
  ExpectExactly(setUp.points[2], {1, 4, 3});
  ExpectExactly(setUp.points[3], {1, 2, 4});
  // At the defaults a hundred units of the world are 10000 of the projection.
  ASSERT_EQ(projection.projections.size(), 4u);
  ExpectVector(projection.projections[0].point, {100, 200, 300}, 1e-4);
  ExpectVector(projection.projections[1].point, {200, 200, 300}, 1e-4);
  ExpectVector(projection.projections[2].point, {100, 400, 300}, 1e-4);
  ExpectVector(projection.projections[3].point, {100, 200, 400}, 1e-4);
  for (const TextureProjection& asked : projection.projections) {
    EXPECT_EQ(asked.uvwRecord, &polygon) << "of any projection";
    EXPECT_EQ(asked.render, &render);
  }
}

// The tag's second matrix halves and moves by (1, 0, 0): the local hit (4, 5, 6) goes to (3, 2.5,
// 3), times 100; a corner that lies (1, 0, 0) off to (3.5, 2.5, 3).
TEST_F(ProjectorTest, OnATagThePointsAreThoseOfItsSpaceTimesAHundred) {
  tag.matrix2 = {{1, 0, 0}, {0.5f, 0, 0}, {0, 0.5f, 0}, {0, 0, 0.5f}};
  render.textureTag = &tag;
  BeginRender();
  Output();
  const TextureSetUp& setUp = projection.setUps.at(0);
  ExpectVector(setUp.points[0], {300, 250, 300}, 1e-4);
  ExpectVector(setUp.points[1], {350, 250, 300}, 1e-4);
  ExpectVector(setUp.points[2], {300, 350, 300}, 1e-4);
  ExpectVector(setUp.points[3], {300, 250, 350}, 1e-4);
  ExpectVector(projection.projections.at(0).point, {30000, 25000, 30000}, 1e-2);
}

// Hundredths of position and scale: ((1, 2, 3) - (0.1, 0.2, 0.3)) / (0.02, 0.04, 0.05).
TEST_F(ProjectorTest, PointsGoThroughTheInverseOfThePlacement) {
  block.position = {10, 20, 30};
  block.scale = {2, 4, 5};
  BeginRender();
  Output();
  ExpectVector(projection.projections.at(0).point, {45, 45, 54}, 1e-4);
}

// A heading of a right angle takes the projection's x to z and its z to -x: a point at z is at its
// x, one at -x at its z.
TEST_F(ProjectorTest, TheRotationTurnsTheProjection) {
  block.rotation = {std::numbers::pi_v<float> / 2, 0, 0};
  block.scale = {2, 1, 1};
  BeginRender();
  render.hitPoint = {-1, 0, 4};
  Output();
  ExpectVector(projection.projections.at(0).point, {200, 0, 100}, 1e-3);
}

TEST_F(ProjectorTest, InitRenderRebuildsThePlacementAndTheCopies) {
  block.position = {10, 20, 30};
  block.scale = {2, 4, 5};
  block.rotation = {std::numbers::pi_v<float> / 2, 0, 0};
  block.offsetU = 0.25f;
  block.offsetV = 0.5f;
  BeginRender();
  ExpectExactly(block.projectionMatrix.off, {10, 20, 30});
  ExpectVector(block.projectionMatrix.v1, {0, 0, 2});
  ExpectVector(block.projectionMatrix.v2, {0, 4, 0});
  ExpectVector(block.projectionMatrix.v3, {-5, 0, 0});
  EXPECT_EQ(block.offsetUCopy, 0.25f);
  EXPECT_EQ(block.offsetVCopy, 0.5f);
}

TEST_F(ProjectorTest, AFlatPlacementHasNoInverseAndLeavesThePoints) {
  block.scale = {0, 1, 1};
  BeginRender();
  Output();
  ExpectExactly(projection.projections.at(0).point, {1, 2, 3});
}

TEST_F(ProjectorTest, TheProjectionUvwTakesThePointsThemselves) {
  block.projection = 6;
  block.scale = {2, 4, 5};
  const UvwRecord polygon = {};
  render.uvwRecord = &polygon;
  BeginRender();
  Output();
  for (const TextureProjection& asked : projection.projections) {
    EXPECT_EQ(asked.tag.projection, 6);
    EXPECT_EQ(asked.uvwRecord, &polygon);
  }
  ExpectExactly(projection.projections.at(0).point, {1, 2, 3});
  ExpectExactly(projection.projections.at(1).point, {2, 2, 3});
}

// --- the tags ---

TEST_F(ProjectorTest, ThePrivateTagDescribesTheProjection) {
  block.tileFlags = 3;
  block.projection = 5;
  block.offsetU = 0.125f;
  block.offsetV = 0.25f;
  block.lengthU = 0.5f;
  block.lengthV = 0;  // the host's to divide by, or not
  block.position = {10, 20, 30};
  block.scale = {2, 4, 5};
  BeginRender();
  Output();
  const TextureTag& used = projection.projections.at(0).tag;
  ExpectVector(used.matrix1.off, {0.1f, 0.2f, 0.3f});
  ExpectVector(used.matrix1.v1, {0.02f, 0, 0});
  ExpectVector(used.matrix1.v2, {0, 0.04f, 0});
  ExpectVector(used.matrix1.v3, {0, 0, 0.05f});
  ExpectVector(used.matrix2.off, {-5, -5, -6}, 1e-5);
  ExpectVector(used.matrix2.v1, {50, 0, 0}, 1e-5);
  EXPECT_EQ(used.flags, 3);
  EXPECT_EQ(used.projection, 5);
  EXPECT_EQ(used.offsetU, 0.125f);
  EXPECT_EQ(used.offsetV, 0.25f);
  EXPECT_EQ(used.lengthU, 0.5f);
  EXPECT_EQ(used.lengthV, 0);
  EXPECT_EQ(used.flags2, 0);
  EXPECT_EQ(used.opaqueByte, 0);
  for (const Word word : used.opaque) EXPECT_EQ(word, 0);
}

TEST_F(ProjectorTest, WhatTheHostKeepsInATagIsTakenFromTheTagOnTheSurface) {
  tag = {.matrix1 = kIdentityMatrix,
         .matrix2 = kIdentityMatrix,
         .flags = 2,
         .flags2 = 22,
         .projection = 3,
         .opaqueByte = 33,
         .offsetU = 9,
         .offsetV = 9,
         .lengthU = 9,
         .lengthV = 9,
         .opaque = {44, 55, 66}};
  render.textureTag = &tag;
  BeginRender();
  Output();
  const TextureTag& used = projection.projections.at(0).tag;
  EXPECT_EQ(used.flags2, 22);
  EXPECT_EQ(used.opaqueByte, 33);
  EXPECT_EQ(used.opaque[0], 44);
  EXPECT_EQ(used.opaque[1], 55);
  EXPECT_EQ(used.opaque[2], 66);
  EXPECT_EQ(used.flags, 1);
  EXPECT_EQ(used.projection, 0);
  EXPECT_EQ(used.offsetU, 0);
  EXPECT_EQ(used.lengthV, 1);
}

TEST_F(ProjectorTest, ThePrivateTagIsBuiltOnceACpuAndRender) {
  BeginRender(2);
  Output();
  block.projection = 2;
  block.lengthU = 0.5f;
  Output();
  EXPECT_EQ(projection.projections.at(4).tag.projection, 0) << "as on the first sample";
  EXPECT_EQ(projection.projections.at(4).tag.lengthU, 1);
  FakeHost::cpuIndex = 1;
  Output();
  EXPECT_EQ(projection.projections.at(8).tag.projection, 2) << "another CPU, its first sample";
  EXPECT_NE(projection.projections.at(8).address, projection.projections.at(0).address);
  FakeHost::cpuIndex = 0;
  record.FreeRender(&instance);
  BeginRender();
  Output();
  EXPECT_EQ(projection.projections.at(12).tag.projection, 2) << "a new render";
}

TEST_F(ProjectorTest, ASurfaceWithCoordinatesOfItsOwnHasATagOfItsOwnForUvw) {
  ObjectRecord object = {};
  object.kind = 2;
  object.matrix = kIdentityMatrix;
  render.object = &object;
  block.projection = 6;
  block.tileFlags = 3;
  block.offsetU = 0.25f;
  block.lengthU = 0.5f;
  BeginRender();
  Output();
  const TextureTag& used = projection.projections.at(0).tag;
  EXPECT_EQ(used.projection, 0);
  EXPECT_EQ(used.flags, 0);
  EXPECT_EQ(used.offsetU, 0);
  EXPECT_EQ(used.offsetV, 0);
  EXPECT_EQ(used.lengthU, 1);
  EXPECT_EQ(used.lengthV, 1);
  EXPECT_EQ(std::memcmp(&used.matrix1, &kIdentityMatrix, sizeof(Matrix)), 0);
  EXPECT_EQ(std::memcmp(&used.matrix2, &kIdentityMatrix, sizeof(Matrix)), 0);
  ExpectExactly(projection.projections.at(0).point, {1, 2, 3});

  object.kind = 1;
  Output();
  EXPECT_EQ(projection.projections.at(4).tag.projection, 6);
  object.kind = 2;
  block.projection = 5;
  Output();
  EXPECT_EQ(projection.projections.at(8).tag.flags, 3) << "other projections take the private tag";
}

// --- what the input sees ---

// Points at the defaults: 100 times the world's. The box of the four is 100 x 200 x 100.
TEST_F(ProjectorTest, APlainInputGetsTheProjectedCoordinateAndDelta) {
  block.tileFlags = 3;
  sample.blurOffset = 0.5f;
  sample.blurScale = 3;
  BeginRender();
  ExpectExactly(Output(), kInputColour);
  const LinkRead& read = Read();
  ExpectVector(read.uvw, {100, 200, 300}, 1e-4);
  ExpectVector(read.delta, {51.5f, 101.5f, 51.5f}, 1e-4);
  EXPECT_EQ(read.tagFlag, 3);
  ExpectExactly(read.normal, {0, 1, 0});
  EXPECT_EQ(read.time, 4);
  EXPECT_EQ(read.blurOffset, 0.5f);
  EXPECT_EQ(read.blurScale, 3);
}

TEST_F(ProjectorTest, ABitmapIsReadAsAnyPlainInput) {
  input.content = {};
  input.content.colour = kInputColour;
  input.HoldBitmap(50, 25);
  BeginRender();
  ExpectExactly(Output(), kInputColour);
  ExpectVector(Read().uvw, {100, 200, 300}, 1e-4);
  ExpectVector(Read().delta, {50, 100, 50}, 1e-4);
  EXPECT_EQ(Read().tagFlag, 1);
}

TEST_F(ProjectorTest, APlainReadLeavesFlagsAndDeltaInTheSample) {
  BeginRender();
  Output();
  EXPECT_EQ(sample.texFlags, 1);
  ExpectVector(sample.delta, {50, 100, 50}, 1e-4);
  ExpectExactly(sample.uvw, {0.5f, 0.25f, 0.125f});
}

TEST_F(ProjectorTest, AnAwareInputGetsTheFootprintAndTheSamplesOwnDelta) {
  MakeInputAware();
  instance.channel = 3;
  sample.blurOffset = 0.5f;
  sample.blurScale = 3;
  BeginRender();
  ExpectExactly(Output(), kInputColour);
  const LinkRead& read = Read();
  ExpectVector(read.uvw, {100, 200, 300}, 1e-4);
  ExpectExactly(read.delta, {0.01f, 0.02f, 0.03f});
  EXPECT_EQ(read.tagFlag, 77);
  EXPECT_EQ(sample.texFlags, 77);
  ExpectExactly(sample.delta, {0.01f, 0.02f, 0.03f});

  const FootprintBlock& head = read.head;
  ExpectExactly(head.footprint[0], {1, 2, 3});
  ExpectExactly(head.footprint[1], {2, 2, 3});
  ExpectExactly(head.footprint[2], {1, 4, 3});
  ExpectExactly(head.footprint[3], {1, 2, 4});
  ExpectVector(head.footprintRadius, {2, 2.5f, 2});
  for (const Vector* point : {&head.uvwPoint, &head.basePoint}) {
    ExpectVector(*point, {100, 200, 300}, 1e-4);
  }
  for (const Vector* delta : {&head.uvwDelta, &head.baseDelta}) {
    ExpectVector(*delta, {51.5f, 101.5f, 51.5f}, 1e-4);
  }
  for (const Vector* offset : {&head.pointOffset, &head.uvwOffset, &head.baseOffset}) {
    ExpectExactly(*offset, {0, 0, 0});
  }
  EXPECT_EQ(head.tap, 0);
  EXPECT_EQ(head.outerChannel, 3);
}

// The object doubles and stands at x = 4; the placement stands at x = 10 with a scale of 2, 1, 1.
// Inverse of the object after the placement: off ((10 - 4) / 2, 0, 0), v1 (2 / 2, 0, 0), v2 1/2.
// Inverse of the placement after the object: off ((4 - 10) / 2, 0, 0), v1 (2 / 2, 0, 0), v2 2.
TEST_F(ProjectorTest, TheMatricesOfTheHeadLeadBetweenObjectAndPlacement) {
  MakeInputAware();
  ObjectRecord object = {};
  object.matrix = {{4, 0, 0}, {2, 0, 0}, {0, 2, 0}, {0, 0, 2}};
  render.object = &object;
  tag.matrix1 = tag.matrix2 = {{9, 9, 9}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  render.textureTag = &tag;
  block.position = {10, 0, 0};
  block.scale = {2, 1, 1};
  BeginRender();
  Output();
  const FootprintBlock& head = Read().head;
  ExpectVector(head.texMatrix.off, {3, 0, 0});
  ExpectVector(head.texMatrix.v1, {1, 0, 0});
  ExpectVector(head.texMatrix.v2, {0, 0.5f, 0});
  ExpectVector(head.texInverse.off, {-3, 0, 0});
  ExpectVector(head.texInverse.v1, {1, 0, 0});
  ExpectVector(head.texInverse.v2, {0, 2, 0});
}

TEST_F(ProjectorTest, WithoutAnObjectThePlacementStandsInTheWorld) {
  MakeInputAware();
  block.position = {10, 0, 0};
  BeginRender();
  Output();
  const FootprintBlock& head = Read().head;
  ExpectVector(head.texMatrix.off, {10, 0, 0});
  ExpectVector(head.texInverse.off, {-10, 0, 0});
}

TEST_F(ProjectorTest, APointWithoutACoordinateReadsTheInputAtZero) {
  projection.hasCoordinates = false;
  BeginRender();
  Output();
  ExpectExactly(Read().uvw, {0, 0, 0});
  ExpectExactly(Read().delta, {0, 0, 0});
}

TEST_F(ProjectorTest, AnInputThatTakesNoPartIsReadPlainly) {
  input.HoldShader(PluginIdNoise2D);  // aware, but it reports no slots
  BeginRender();
  Output();
  EXPECT_EQ(Read().tagFlag, 1);
}

}  // namespace
}  // namespace sorvanix::test
