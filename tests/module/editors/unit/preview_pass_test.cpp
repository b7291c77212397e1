// What a preview hands to a shader's Output.
#include "module/editors/preview_pass.h"

#include <gtest/gtest.h>

#include "module/shaders/generators/noise_2d.h"
#include "module/shell/block.h"
#include "tests/support/fake_host.h"

namespace sorvanix::test {
namespace {

// 2D Noise with an Output that keeps what it was asked.
std::vector<ChannelSample> samples;
std::vector<ShaderInstance> instances;

void FillRecording(ShaderRecord* record) noexcept {
  Fill2DNoiseRecord(record);
  record->Output = [](Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
    samples.push_back(*sample);
    instances.push_back(*instance);
    *result = {0, 0, 0};
  };
}

constexpr EditorTable RecordingTable() {
  EditorTable table = {};
  table.shader = &kNoise2DTable;
  table.fill = FillRecording;
  table.preview.speed = offsetof(Noise2DBlock, speed);
  return table;
}

struct PreviewPassTest : ::testing::Test {
  PreviewPassTest() {
    hostApi = host.api;
    samples.clear();
    instances.clear();
    Fill2DNoiseRecord(&record);
    record.Alloc(&instance);
    instance.channel = ChannelBump;
    bitmap.Make(4, 2);
  }
  ~PreviewPassTest() override {
    record.Free(&instance);
    bitmap.Clear();
    hostApi = {};
  }
  FakeHost host;
  ShaderRecord record = {};
  ShaderInstance instance = {};
  OwnedBitmap bitmap;
};

// A picture of 4 x 2 at a time of 0.5 and a speed of 3.
TEST_F(PreviewPassTest, AsksForEachPixelAsTheFlatPictureLies) {
  BlockOf<Noise2DBlock>(&instance)->speed = 3;
  const EditorTable table = RecordingTable();
  EditSession session(table, &instance);
  ASSERT_TRUE(session.Begin());
  {
    PreviewPass pass(session, bitmap.get(), 0.5f);
    ASSERT_TRUE(pass.Ready());
    EXPECT_TRUE(pass.DrawFlat());
  }
  ASSERT_EQ(samples.size(), 8u);
  for (std::size_t i = 0; i < 8; ++i) {
    const ChannelSample& sample = samples[i];
    EXPECT_EQ(sample.uvw.x, static_cast<float>(i % 4) / 4);
    EXPECT_EQ(sample.uvw.y, static_cast<float>(i / 4) / 2);
    EXPECT_EQ(sample.uvw.z, 0);
    EXPECT_EQ(sample.normal.x, 0);
    EXPECT_EQ(sample.normal.y, 1);
    EXPECT_EQ(sample.normal.z, 0);
    EXPECT_EQ(sample.delta.x, 0.125f);
    EXPECT_EQ(sample.delta.y, 0.25f);
    EXPECT_EQ(sample.delta.z, 0);
    EXPECT_EQ(sample.time, 1.5f);
    EXPECT_EQ(sample.texFlags, 0);
    EXPECT_EQ(sample.render, nullptr);
    EXPECT_EQ(sample.blurOffset, 0);
    EXPECT_EQ(sample.blurScale, 1);
    // An instance of its own, in no material's channel, whatever the edited one sits in.
    EXPECT_EQ(instances[i].channel, -1);
    EXPECT_EQ(instances[i].slots, nullptr);
    EXPECT_NE(instances[i].data, session.block());
  }
}

TEST_F(PreviewPassTest, WithoutMemoryThereIsNoPass) {
  const EditorTable table = RecordingTable();
  EditSession session(table, &instance);
  ASSERT_TRUE(session.Begin());
  host.failAllocation = 1;
  const PreviewPass pass(session, bitmap.get(), 0);
  EXPECT_FALSE(pass.Ready());
}

}  // namespace
}  // namespace sorvanix::test
