// What all six filters tell of themselves by message is all that makes an equal one; and the steps
// of an input whose bitmap has no size.
#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "tests/support/loaded_module.h"

namespace sorvanix::test {
namespace {

constexpr std::int32_t kFilters[] = {PluginIdBrightContrast, PluginIdColorizer, PluginIdHue,
                                     PluginIdPosterizer,     PluginIdDistorter, PluginIdFusion};

// Another value of the same type. Bools of new shaders are off and on; containers stay.
FakeValue Other(const FakeValue& value) {
  return std::visit(
      [](const auto& held) -> FakeValue {
        using Type = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Type, float>) return held + 0.25f;
        if constexpr (std::is_same_v<Type, bool>) return !held;
        if constexpr (std::is_same_v<Type, Word>) return held + 1;
        if constexpr (std::is_same_v<Type, Vector>) {
          return Vector{held.x + 0.25f, held.y + 0.5f, held.z + 0.75f};
        }
        return held;
      },
      value);
}

TEST(FilterExchange, WhatAFilterTellsMakesANewOneEqual) {
  const StartedModule started;
  for (const std::int32_t id : kFilters) {
    ShaderUnderTest filter(started, id), fresh(started, id);
    FakeContainer defaults, changed, told;
    ASSERT_EQ(filter.Message(MessageGetParameters, defaults), 1);
    for (const auto& [key, value] : defaults.entries) changed.Set(key, Other(value));
    ASSERT_EQ(filter.Message(MessageSetParameters, changed), 1);
    ASSERT_EQ(filter.record.Compare(&filter.instance, &fresh.instance), 0) << id;
    ASSERT_EQ(filter.Message(MessageGetParameters, told), 1);
    ASSERT_EQ(fresh.Message(MessageSetParameters, told), 1);
    EXPECT_EQ(filter.record.Compare(&filter.instance, &fresh.instance), 1) << id;
  }
}

// A host may know of a bitmap before it knows its size. Dividing by it would make infinite steps.
TEST(FilterExchange, ABitmapOfWidthZeroHasTheStepsOfAnInputWithoutPixels) {
  FakeHost host;
  BitmapTable bitmaps = ScriptedBitmapTable();
  bitmaps.width = [](const HostBitmap*) noexcept -> std::int32_t { return 0; };
  host.api.bitmap = &bitmaps;
  LoadedModule module;
  ASSERT_EQ(module.Attach(host), 1);
  ASSERT_EQ(module.Start(), 1);
  for (const Registration& registration : host.registrations) {
    if (registration.id != PluginIdHue) continue;
    const ShaderRecord& hue = registration.record;
    ShaderInstance instance = {};
    ASSERT_EQ(hue.Alloc(&instance), 1);
    ScriptedLink::Of(*static_cast<ChannelLink**>(instance.data)).HoldBitmap(4, 8);
    RenderContext render = {};
    const RenderInit init = {&render, nullptr};
    ASSERT_EQ(hue.InitRender(&instance, &init), 0);
    // Behind the head: an address, a stride, then the steps along u and v.
    float steps[2];
    std::memcpy(steps, static_cast<char*>(instance.slots) + SlotStrideHeadOnly + 12, sizeof steps);
    EXPECT_FLOAT_EQ(steps[0], 0.01f);
    EXPECT_EQ(steps[1], 0.125f);
    hue.FreeRender(&instance);
    hue.Free(&instance);
  }
}

}  // namespace
}  // namespace sorvanix::test
