// Channel links by themselves and as shaders see them: what they hold, messages, copies, renders,
// samples, depth, short memory.
#include "host/channels/channel_link.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include <thread>
#include <vector>

#include "tests/host/channels/fake_shaders.h"

namespace sorvanix::host {
namespace {

using fake::BitmapDescription;
using fake::kKeyFactor;
using fake::kKeyInput;
using fake::kKeyValue;
using fake::kPing;
using fake::kProbe;
using fake::kScale;
using fake::kUnknown;
using fake::ProbeDescription;
using fake::ScaleDescription;

class ChannelLinks : public ::testing::Test {
 protected:
  ChannelLinks() : before_(host_.LiveBlocks()) {}
  ~ChannelLinks() override {
    EXPECT_EQ(host_.LiveBlocks(), before_) << "blocks leaked";
    EXPECT_EQ(fake::preparedCount, 0) << "a render was left prepared";
  }

  // The answer to a description as a message.
  static std::int32_t Tell(Link& link, Container description) {
    return link.Message(MessageSetParameters, description);
  }
  static Container Describe(Link& link) {
    Container description;
    link.Message(MessageGetParameters, description);
    return description;
  }
  static Vector ColourOf(Link& link) {
    ChannelSample sample = {};
    sample.uvw = {0.125f, 0.5f, 0};
    return link.Sample(sample);
  }
  // The description of so many Scales with factor 1, one behind the other, before a Probe of 0.25.
  static Container Chain(int length) {
    Container description = ProbeDescription(0.25f);
    for (int i = 0; i < length; ++i) description = ScaleDescription(1, description);
    return description;
  }
  static int DepthOf(Link& link) {
    int depth = 0;
    Container held = Describe(link);
    const Container* description = &held;
    while (description != nullptr && description->Find(KeyLinkPluginId) != nullptr) {
      ++depth;
      const Container* parameters = description->GetContainer(KeyLinkParameters);
      description = parameters == nullptr ? nullptr : parameters->GetContainer(kKeyInput);
    }
    return depth;
  }

  fake::LinkHost host_;
  std::size_t before_;
};

// ---- What a link holds

TEST_F(ChannelLinks, ANewLinkIsEmptyAndBlackAndTakesPart) {
  Link link;
  EXPECT_TRUE(link.IsEmpty());
  EXPECT_EQ(link.PluginId(), 0);
  EXPECT_EQ(link.HeldShader(), nullptr);
  EXPECT_EQ(link.Picture(), nullptr);
  EXPECT_TRUE(link.InitRender({}));
  const Vector colour = ColourOf(link);
  EXPECT_EQ(colour.x + colour.y + colour.z, 0);
  EXPECT_EQ(Describe(link).Size(), 0u);
}

TEST_F(ChannelLinks, ADescriptionOfAShaderMakesItAndSetsItsParameters) {
  Link link;
  EXPECT_EQ(Tell(link, ProbeDescription(0.75f)), 1);
  EXPECT_EQ(link.PluginId(), kProbe);
  const Vector colour = ColourOf(link);
  EXPECT_EQ(colour.x, 0.75f);
  EXPECT_EQ(colour.y, 0.125f);
  EXPECT_EQ(colour.z, 0.5f);
}

TEST_F(ChannelLinks, AnInnerShaderSitsInTheColourChannel) {
  Link link;
  Tell(link, ProbeDescription(0.75f));
  EXPECT_EQ(link.HeldShader()->Channel(), ChannelColour);
}

TEST_F(ChannelLinks, WhatADescriptionDoesNotNameStaysAsItIs) {
  Link link;
  Tell(link, ProbeDescription(0.75f));
  const ShaderInstance* const instance = &link.HeldShader()->Instance();
  EXPECT_EQ(Tell(link, Container()), 1);
  EXPECT_EQ(ColourOf(link).x, 0.75f);

  Container onlyParameters = ProbeDescription(0.5f);
  Container nothingNamed;
  nothingNamed.Set(KeyLinkParameters, *onlyParameters.Find(KeyLinkParameters));
  Tell(link, nothingNamed);
  EXPECT_EQ(ColourOf(link).x, 0.5f);

  Container sameShader;
  sameShader.Set(KeyLinkPluginId, Word{kProbe});
  Tell(link, sameShader);
  EXPECT_EQ(ColourOf(link).x, 0.5f);
  EXPECT_EQ(&link.HeldShader()->Instance(), instance) << "the same shader all the time";
}

TEST_F(ChannelLinks, AnotherShaderTakesThePlaceOfTheFormerOne) {
  Link link;
  Tell(link, ProbeDescription(0.75f));
  EXPECT_EQ(Tell(link, ScaleDescription(2, ProbeDescription(0.375f))), 1);
  EXPECT_EQ(link.PluginId(), kScale);
  EXPECT_EQ(ColourOf(link).x, 0.75f);  // 2 * 0.375
}

TEST_F(ChannelLinks, AnUnknownShaderIsRefusedAndNothingChanges) {
  Link link;
  Tell(link, ProbeDescription(0.75f));
  Container unknown = ProbeDescription(0.125f);
  unknown.Set(KeyLinkPluginId, Word{kUnknown});
  EXPECT_EQ(Tell(link, unknown), 0);
  EXPECT_EQ(ColourOf(link).x, 0.75f);
}

TEST_F(ChannelLinks, AnIdBeyond32BitsIsNoneOfTheShaders) {
  Link link;
  Container wide;
  wide.Set(KeyLinkPluginId, static_cast<Word>((std::int64_t{1} << 32) + kProbe));
  EXPECT_EQ(Tell(link, wide), 0);
  EXPECT_TRUE(link.IsEmpty());
}

TEST_F(ChannelLinks, AnIdOfMinusOneEmptiesTheLink) {
  Link link;
  Tell(link, ProbeDescription(0.75f));
  Container nothing;
  nothing.Set(KeyLinkPluginId, Word{-1});
  EXPECT_EQ(Tell(link, nothing), 1);
  EXPECT_TRUE(link.IsEmpty());
}

TEST_F(ChannelLinks, ABitmapIsNamedByIdZeroAndAFilename) {
  Link link;
  EXPECT_EQ(Tell(link, BitmapDescription("a.png")), 1);
  EXPECT_FALSE(link.IsEmpty());
  EXPECT_EQ(link.PluginId(), 0);
  ASSERT_NE(link.Picture(), nullptr);
  EXPECT_EQ(link.Picture()->Width(), 3);
  EXPECT_EQ(link.Picture()->Height(), 2);
  EXPECT_TRUE(link.InitRender({}));
  EXPECT_EQ(ColourOf(link).x, 0.75f);
}

TEST_F(ChannelLinks, AFilenameAloneRenamesABitmapAndNothingElse) {
  Container filename;
  filename.Set(KeyLinkFilename, Filename("b.png"));
  Link link;
  Tell(link, filename);
  EXPECT_TRUE(link.IsEmpty());
  Tell(link, BitmapDescription("a.png"));
  Tell(link, filename);
  EXPECT_EQ(link.HeldBitmap()->filename.path, "b.png");
}

TEST_F(ChannelLinks, AMissingBitmapKeepsItsNameIsBlackAndCannotTakePart) {
  Link link;
  Tell(link, BitmapDescription("missing.png"));
  EXPECT_EQ(Describe(link).GetFilename(KeyLinkFilename)->path, "missing.png");
  EXPECT_EQ(link.Picture(), nullptr);
  EXPECT_FALSE(link.InitRender({}));
  EXPECT_EQ(ColourOf(link).x, 0);
}

TEST_F(ChannelLinks, WithoutALoaderEveryBitmapIsMissing) {
  SetTextureLoader(nullptr);
  Link link;
  Tell(link, BitmapDescription("a.png"));
  EXPECT_FALSE(link.InitRender({}));
}

// ---- Messages

TEST_F(ChannelLinks, TheAnswerToGetParametersDescribesTheWholeGraph) {
  Link link;
  const Container graph = ScaleDescription(2, ScaleDescription(3, ProbeDescription(0.5f)));
  Tell(link, graph);
  Container answer = Describe(link);
  EXPECT_EQ(answer.GetInt(KeyLinkPluginId), kScale);
  Link second;
  Tell(second, answer);
  EXPECT_TRUE(second.Equals(link));
  EXPECT_EQ(ColourOf(second).x, 3.0f);  // 2 * 3 * 0.5
}

TEST_F(ChannelLinks, TheAnswerToDescribeParametersIsTheShadersTypes) {
  Link link;
  Tell(link, ScaleDescription(2, ProbeDescription(0.5f)));
  Container types;
  EXPECT_EQ(link.Message(MessageDescribeParameters, types), 1);
  EXPECT_EQ(types.GetInt(KeyLinkPluginId), DescribeInteger);
  const Container* inner = types.GetContainer(KeyLinkParameters)->GetContainer(kKeyInput);
  ASSERT_NE(inner, nullptr);
  EXPECT_EQ(inner->GetContainer(KeyLinkParameters)->GetInt(kKeyValue), DescribeReal);
}

TEST_F(ChannelLinks, OtherMessagesAreTheShadersToAnswer) {
  Link link;
  Container payload;
  EXPECT_EQ(link.Message(kPing, payload), 0) << "nobody is there";
  Tell(link, BitmapDescription("a.png"));
  EXPECT_EQ(link.Message(kPing, payload), 0) << "a bitmap takes no messages";
  Tell(link, ProbeDescription(0));
  EXPECT_EQ(link.Message(kPing, payload), 78);
}

// ---- Copies and comparison

TEST_F(ChannelLinks, ACopyStandsAlone) {
  Link original;
  Tell(original, ScaleDescription(2, ProbeDescription(0.5f)));
  Link copy;
  Tell(copy, BitmapDescription("a.png"));
  EXPECT_TRUE(copy.CopyFrom(original));
  EXPECT_TRUE(copy.Equals(original));
  original.Clear();
  EXPECT_EQ(ColourOf(copy).x, 1.0f);
}

TEST_F(ChannelLinks, CopiesOfNothingOfABitmapAndOfItself) {
  Link empty;
  Link link;
  Tell(link, BitmapDescription("a.png"));
  EXPECT_TRUE(link.CopyFrom(link));
  EXPECT_EQ(link.HeldBitmap()->filename.path, "a.png");
  Link copy;
  EXPECT_TRUE(copy.CopyFrom(link));
  EXPECT_EQ(ColourOf(copy).x, 0.75f);
  EXPECT_TRUE(copy.CopyFrom(empty));
  EXPECT_TRUE(copy.IsEmpty());
}

TEST_F(ChannelLinks, LinksAreEqualWhenTheyHoldEqualThings) {
  Link probe, samePro, otherProbe, scale, bitmap, sameBitmap, otherBitmap, empty;
  Tell(probe, ProbeDescription(0.5f));
  Tell(samePro, ProbeDescription(0.5f));
  Tell(otherProbe, ProbeDescription(0.625f));
  Tell(scale, ScaleDescription(1, ProbeDescription(0.5f)));
  Tell(bitmap, BitmapDescription("a.png"));
  Tell(sameBitmap, BitmapDescription("a.png"));
  Tell(otherBitmap, BitmapDescription("b.png"));
  EXPECT_TRUE(probe.Equals(samePro));
  EXPECT_FALSE(probe.Equals(otherProbe));
  EXPECT_FALSE(probe.Equals(scale));
  EXPECT_FALSE(probe.Equals(empty));
  EXPECT_TRUE(empty.Equals(Link()));
  EXPECT_TRUE(bitmap.Equals(sameBitmap));
  EXPECT_FALSE(bitmap.Equals(otherBitmap));
  EXPECT_FALSE(empty.Equals(bitmap));
}

// ---- Renders and samples

TEST_F(ChannelLinks, ARenderIsPreparedThroughTheChainAndUndone) {
  Link link;
  Tell(link, ScaleDescription(1, ProbeDescription(0.5f)));
  RenderContext render = {};
  EXPECT_TRUE(link.InitRender({&render, nullptr}));
  EXPECT_EQ(fake::preparedRender, &render);
  EXPECT_EQ(fake::preparedCount, 1);
  link.FreeRender();
  EXPECT_EQ(fake::preparedCount, 0);
  link.FreeRender();
  EXPECT_EQ(fake::preparedCount, 0) << "freeing twice is freeing once";
}

TEST_F(ChannelLinks, AShaderThatCannotTakePartFailsTheChain) {
  Link link;
  Tell(link, ScaleDescription(1, ProbeDescription(-1)));
  EXPECT_FALSE(link.InitRender({}));
  link.FreeRender();
}

TEST_F(ChannelLinks, TheSampleReachesTheInnerShaderAsItIs) {
  const ChannelTable& channel = host_.Tables().channel;
  Link link;
  Tell(link, ScaleDescription(1, ProbeDescription(0.5f)));
  RenderContext render = {};
  const Vector uvw = {1, 2, 3}, delta = {4, 5, 6}, normal = {7, 8, 9};
  Vector result = {};
  EXPECT_EQ(channel.sample(&result, link.Handle(), &render, &uvw, &delta, &normal, 10, -11, 12, 13),
            &result);
  EXPECT_EQ(result.x, 0.5f);
  EXPECT_EQ(result.y, 1);
  EXPECT_EQ(result.z, 2);
  const ChannelSample& sample = fake::lastSample;
  EXPECT_EQ(sample.uvw.z, 3);
  EXPECT_EQ(sample.delta.x, 4);
  EXPECT_EQ(sample.delta.z, 6);
  EXPECT_EQ(sample.normal.y, 8);
  EXPECT_EQ(sample.time, 10);
  EXPECT_EQ(sample.texFlags, -11);
  EXPECT_EQ(sample.render, &render);
  EXPECT_EQ(sample.blurOffset, 12);
  EXPECT_EQ(sample.blurScale, 13);
}

TEST_F(ChannelLinks, ABitmapIsReadWithTheSamplesDeltaBlurAndTagFlag) {
  const ChannelTable& channel = host_.Tables().channel;
  Link link;
  Tell(link, BitmapDescription("a.png"));
  const Vector uvw = {0.25f, 0.5f, 0}, delta = {0.1f, 0.2f, 0};
  Vector result = {};
  channel.sample(&result, link.Handle(), nullptr, &uvw, &delta, nullptr, 0, 3, 0.5f, 0.25f);
  EXPECT_EQ(result.y, 0.25f);
  EXPECT_EQ(fake::lastLookup.delta.y, 0.2f);
  EXPECT_EQ(fake::lastLookup.tagFlag, 3);
  EXPECT_EQ(fake::lastLookup.blur, 0.125f);  // 0.5 * 0.25
}

// ---- Depth

TEST_F(ChannelLinks, AGraphAsDeepAsAllowedStandsWhole) {
  Link link;
  // 63 Scales and the Probe are 64 shaders below the one that the link belongs to.
  EXPECT_EQ(Tell(link, Chain(kDeepestGraph - 1)), 1);
  EXPECT_EQ(DepthOf(link), kDeepestGraph);
  EXPECT_EQ(ColourOf(link).x, 0.25f);
  Link copy;
  EXPECT_TRUE(copy.CopyFrom(link));
  EXPECT_TRUE(copy.Equals(link));
}

TEST_F(ChannelLinks, WhatStandsDeeperThanAllowedIsRefusedWhereItEnters) {
  Link link;
  Tell(link, Chain(kDeepestGraph + 5));
  EXPECT_EQ(DepthOf(link), kDeepestGraph);
  EXPECT_EQ(ColourOf(link).x, 0) << "the last Scale's input stays empty";
}

// ---- Short memory

TEST_F(ChannelLinks, AShortMemoryRefusesADescriptionOrLeavesPartOfIt) {
  const Container graph = ScaleDescription(2, ProbeDescription(0.5f));
  int failures = 0;
  for (bool happened = true; happened; ++failures) {
    Link link;
    Tell(link, ProbeDescription(0.75f));
    Container payload = graph;
    {
      AllocationFailure failure(failures + 1);
      host_.Tables().channel.message(link.Handle(), MessageSetParameters, payload.Handle());
      happened = failure.Happened();
    }
    // Either the old shader or the new one, never half of one.
    EXPECT_TRUE(link.PluginId() == kProbe || link.PluginId() == kScale);
    if (!happened) {
      EXPECT_EQ(ColourOf(link).x, 1.0f);
    }
  }
  EXPECT_GT(failures, 3);  // block and link of the Scale, block of the Probe
}

TEST_F(ChannelLinks, AShortMemoryFailsACopyAndKeepsTheDestination) {
  Link original;
  Tell(original, ScaleDescription(2, ProbeDescription(0.5f)));
  int failures = 0;
  for (bool happened = true; happened; ++failures) {
    Link copy;
    Tell(copy, ProbeDescription(0.75f));
    AllocationFailure failure(failures + 1);
    const std::int32_t done = host_.Tables().channel.copy(original.Handle(), copy.Handle());
    happened = failure.Happened();
    EXPECT_EQ(done, happened ? 0 : 1);
    EXPECT_EQ(ColourOf(copy).x, happened ? 0.75f : 1.0f);
  }
  EXPECT_GT(failures, 3);
}

// ---- The table

TEST_F(ChannelLinks, TheTableMakesAndReleasesLinks) {
  const ChannelTable& channel = host_.Tables().channel;
  ChannelLink* link = channel.create();
  ASSERT_NE(link, nullptr);
  EXPECT_EQ(host_.LiveBlocks(), before_ + 1);
  channel.release(link);
  AllocationFailure failure(1);
  EXPECT_EQ(channel.create(), nullptr);
}

TEST_F(ChannelLinks, TheTableAnswersNeutrallyToNull) {
  const ChannelTable& channel = host_.Tables().channel;
  Link link;
  Tell(link, ProbeDescription(0.5f));
  const RenderInit init = {};
  Vector black = {1, 1, 1};
  channel.release(nullptr);
  EXPECT_EQ(channel.copy(nullptr, link.Handle()), 0);
  EXPECT_EQ(channel.copy(link.Handle(), nullptr), 0);
  EXPECT_EQ(channel.compare(nullptr, link.Handle()), 0);
  EXPECT_EQ(channel.compare(nullptr, nullptr), 1);
  EXPECT_EQ(channel.initRender(nullptr, &init), RenderInitFailed);
  EXPECT_EQ(channel.initRender(link.Handle(), nullptr), RenderInitFailed);
  channel.freeRender(nullptr);
  EXPECT_EQ(channel.sample(&black, nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0),
            &black);
  EXPECT_EQ(black.x + black.y + black.z, 0);
  EXPECT_EQ(channel.sample(nullptr, link.Handle(), nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0),
            nullptr);
  EXPECT_EQ(channel.bitmap(nullptr), nullptr);
  EXPECT_EQ(channel.message(nullptr, MessageGetParameters, nullptr), 0);
  EXPECT_EQ(channel.message(link.Handle(), MessageGetParameters, nullptr), 0);
  EXPECT_EQ(channel.pluginId(nullptr), 0);
  EXPECT_EQ(channel.instance(nullptr), nullptr);
}

TEST_F(ChannelLinks, TheTableReachesTheInnerShaderAndThePicture) {
  const ChannelTable& channel = host_.Tables().channel;
  Link link;
  EXPECT_EQ(channel.instance(link.Handle()), nullptr);
  Tell(link, ProbeDescription(0.5f));
  EXPECT_EQ(channel.pluginId(link.Handle()), kProbe);
  EXPECT_EQ(channel.instance(link.Handle()), &link.HeldShader()->Instance());
  EXPECT_EQ(channel.bitmap(link.Handle()), nullptr);
  Tell(link, BitmapDescription("a.png"));
  const BitmapTable& bitmap = host_.Tables().bitmap;
  EXPECT_EQ(bitmap.width(channel.bitmap(link.Handle())), 3);
  EXPECT_EQ(bitmap.height(channel.bitmap(link.Handle())), 2);
}

}  // namespace
}  // namespace sorvanix::host
