// Links in streams: what a document keeps of a graph, and what a reader makes of it again.
#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include "host/channels/channel_link.h"
#include "host/services/stream_json.h"
#include "tests/host/channels/fake_shaders.h"

namespace sorvanix::host {
namespace {

using fake::BitmapDescription;
using fake::kProbe;
using fake::kScale;
using fake::kUnknown;
using fake::ProbeDescription;
using fake::ScaleDescription;

class LinkStreams : public ::testing::Test {
 protected:
  LinkStreams() : before_(host_.LiveBlocks()) {}
  ~LinkStreams() override { EXPECT_EQ(host_.LiveBlocks(), before_) << "blocks leaked"; }

  static void Tell(Link& link, Container description) {
    ASSERT_EQ(link.Message(MessageSetParameters, description), 1);
  }
  // What a link becomes when it is written, spelled as JSON, and read.
  static void ExpectRoundTrip(const Link& link) {
    Stream written;
    ASSERT_TRUE(link.Write(written));
    const auto text = WriteJson(StreamToJson(written.Values()));
    const auto values = StreamFromJson(ParseJson(text).value());
    ASSERT_TRUE(values) << text;
    EXPECT_EQ(*values, written.Values());
    Stream read(*values);
    Link again;
    again.HoldBitmap("former.png");
    EXPECT_TRUE(again.Read(read));
    EXPECT_TRUE(read.AtEnd());
    EXPECT_TRUE(again.Equals(link)) << text;
  }
  static Vector ColourOf(Link& link) {
    ChannelSample sample = {};
    return link.Sample(sample);
  }
  // A persisted chain of so many Scales, a Probe of 0.25 behind them.
  static StreamLink Chain(int length) {
    StreamLink chain = {kProbe, {}, {{0.25f}}};
    for (int i = 0; i < length; ++i) chain = {kScale, {}, {{std::move(chain)}, {1.0f}}};
    return chain;
  }

  fake::LinkHost host_;
  std::size_t before_;
};

TEST_F(LinkStreams, AnEmptyLinkABitmapAndAGraphComeBackAsTheyWere) {
  Link link;
  ExpectRoundTrip(link);
  Tell(link, BitmapDescription("folder/\xC3\xBC.png"));
  ExpectRoundTrip(link);
  Tell(link, ScaleDescription(2, ScaleDescription(3, ProbeDescription(0.5f))));
  ExpectRoundTrip(link);
}

TEST_F(LinkStreams, AGraphIsPersistedAsIdsWithNestedStreams) {
  Link link;
  Tell(link, ScaleDescription(2, ProbeDescription(0.5f)));
  Stream stream;
  ASSERT_TRUE(link.Write(stream));
  const StreamLink probe = {kProbe, {}, {{0.5f}}};
  const StreamLink scale = {kScale, {}, {{probe}, {2.0f}}};
  ASSERT_EQ(stream.Values().size(), 1u);
  EXPECT_EQ(stream.Values()[0], StreamValue{scale});
}

TEST_F(LinkStreams, AShaderThatIsNotRegisteredIsKeptAndWrittenAgain) {
  const StreamLink unknown = {kUnknown, {}, {{std::int32_t{1}}, {std::string("kept")}}};
  Stream stream;
  stream.Write(unknown);
  stream.Write(0.5f);
  Link link;
  EXPECT_TRUE(link.Read(stream));
  EXPECT_EQ(*stream.Read<float>(), 0.5f) << "the values behind it are in step";
  EXPECT_FALSE(link.IsEmpty());
  EXPECT_EQ(link.PluginId(), 0);
  EXPECT_FALSE(link.InitRender({}));
  EXPECT_EQ(ColourOf(link).x, 0);
  Link copy;
  EXPECT_TRUE(copy.CopyFrom(link));
  EXPECT_TRUE(copy.Equals(link));
  ExpectRoundTrip(copy);
}

TEST_F(LinkStreams, AnUnreadShaderTellsItsIdAndStaysWhenItIsTold) {
  Stream stream;
  stream.Write(StreamLink{kUnknown, {}, {{std::int32_t{1}}}});
  Link link;
  ASSERT_TRUE(link.Read(stream));
  Container told, types;
  EXPECT_EQ(link.Message(MessageGetParameters, told), 1);
  EXPECT_EQ(told.GetInt(KeyLinkPluginId), kUnknown);
  EXPECT_EQ(told.Size(), 1u);
  EXPECT_EQ(link.Message(MessageDescribeParameters, types), 1);
  EXPECT_EQ(types.GetInt(KeyLinkPluginId), DescribeInteger);
  EXPECT_EQ(types.Size(), 1u);
  Link before;
  ASSERT_TRUE(before.CopyFrom(link));
  EXPECT_EQ(link.Message(MessageSetParameters, told), 1);
  EXPECT_TRUE(link.Equals(before));
}

// It may be of a later version, whose values must not be lost.
TEST_F(LinkStreams, AShaderThatRefusesItsValuesIsKeptUnread) {
  const StreamLink refused = {kProbe, {}, {{fake::kRefusedValue}}};
  Stream stream;
  stream.Write(refused);
  Link link;
  EXPECT_TRUE(link.Read(stream));
  EXPECT_EQ(link.HeldShader(), nullptr);
  EXPECT_FALSE(link.InitRender({}));
  Stream again;
  ASSERT_TRUE(link.Write(again));
  EXPECT_EQ(again.Values().at(0), StreamValue{refused});
}

TEST_F(LinkStreams, AnythingButALinkIsLeftInTheStreamAndTheLinkStays) {
  Stream stream;
  stream.Write(std::int32_t{5});
  Link link;
  Tell(link, ProbeDescription(0.5f));
  EXPECT_FALSE(link.Read(stream));
  EXPECT_EQ(stream.Position(), 0u);
  EXPECT_EQ(ColourOf(link).x, 0.5f);
  Stream ended;
  EXPECT_FALSE(link.Read(ended));
}

TEST_F(LinkStreams, AShaderWhoseStreamIsShortKeepsItsDefaults) {
  Stream stream;
  stream.Write(StreamLink{kProbe, {}, {}});
  Link link;
  EXPECT_TRUE(link.Read(stream));
  EXPECT_EQ(ColourOf(link).x, 0.25f);
}

TEST_F(LinkStreams, AGraphDeeperThanAllowedIsReadAsFarAsAllowed) {
  for (const int scales : {kDeepestGraph - 1, kDeepestGraph}) {
    Stream stream;
    stream.Write(Chain(scales));
    Link link;
    EXPECT_TRUE(link.Read(stream));
    EXPECT_EQ(ColourOf(link).x, scales < kDeepestGraph ? 0.25f : 0);
  }
}

TEST_F(LinkStreams, AShortMemoryLeavesTheLinkOrPartOfTheGraph) {
  const StreamLink graph = Chain(2);
  int failures = 0;
  for (bool happened = true; happened; ++failures) {
    Stream stream;
    stream.Write(graph);
    Link link;
    AllocationFailure failure(failures + 1);
    const std::int32_t done = host_.Tables().stream.readChannelLink(stream.Handle(), link.Handle());
    happened = failure.Happened();
    EXPECT_EQ(done, link.IsEmpty() ? 0 : 1);
    if (!happened) {
      EXPECT_EQ(ColourOf(link).x, 0.25f);
    }
  }
  EXPECT_GT(failures, 5);  // three blocks, two links
}

TEST_F(LinkStreams, TheTableAnswersNeutrallyToNull) {
  const StreamTable& stream = host_.Tables().stream;
  Stream values;
  Link link;
  EXPECT_EQ(stream.writeChannelLink(nullptr, link.Handle()), 0);
  EXPECT_EQ(stream.writeChannelLink(values.Handle(), nullptr), 0);
  EXPECT_EQ(stream.readChannelLink(nullptr, link.Handle()), 0);
  EXPECT_EQ(stream.readChannelLink(values.Handle(), nullptr), 0);
}

}  // namespace
}  // namespace sorvanix::host
