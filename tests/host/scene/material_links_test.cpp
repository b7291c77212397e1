// Links made from what a scene file says of its channels.
#include "host/scene/material_links.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include <string>

#include "host/channels/channel_link.h"
#include "host/scene/scene_file.h"
#include "tests/host/channels/fake_shaders.h"

namespace sorvanix::host {
namespace {

class MaterialLinks : public ::testing::Test {
 protected:
  std::unique_ptr<Scene> SceneWith(const std::string& channels) {
    const std::string text = R"({ "format": "sorvanix-scene", "version": 1, "materials": [
        { "name": "M", "channels": {)" +
                             channels + "} } ] }";
    return ReadScene(text, "scene.json", {.catalogue = &fake::Catalogue()}).scene;
  }
  static Link* LinkAt(Scene& scene, std::size_t channel) {
    return scene.materials[0]->channels[channel].link.get();
  }

  fake::LinkHost host_;
};

TEST_F(MaterialLinks, HoldTheShadersOfTheirGraphs) {
  const auto scene = SceneWith(R"("bump": { "graph": { "shader": "Scale", "factor": 0.5,
      "input": { "shader": "Probe", "value": 0.75 } } }, "alpha": {})");
  EXPECT_TRUE(LinkMaterials(*scene).empty());
  Link* link = LinkAt(*scene, ChannelBump);
  ASSERT_NE(link, nullptr);
  ChannelSample sample = {};
  EXPECT_FLOAT_EQ(link->Sample(sample).x, 0.375f) << "0.5 x 0.75";
  EXPECT_EQ(LinkAt(*scene, ChannelAlpha), nullptr) << "no graph, no link";
}

TEST_F(MaterialLinks, TellTheOutermostShaderItsChannel) {
  const auto scene = SceneWith(R"("bump": { "graph": { "shader": "Probe" } },
                                  "colour": { "graph": { "shader": "Probe" } })");
  LinkMaterials(*scene);
  EXPECT_EQ(LinkAt(*scene, ChannelBump)->HeldShader()->Channel(), ChannelBump);
  EXPECT_EQ(LinkAt(*scene, ChannelColour)->HeldShader()->Channel(), ChannelColour);
}

TEST_F(MaterialLinks, TellTheChannelToShadersThatTheModulePutIn) {
  const auto scene = SceneWith(R"("luminance": {})");
  LinkOf(scene->materials[0]->channels[ChannelLuminance]).HoldShader(fake::kProbe);
  EXPECT_TRUE(LinkMaterials(*scene).empty());
  EXPECT_EQ(LinkAt(*scene, ChannelLuminance)->HeldShader()->Channel(), ChannelLuminance);
}

TEST_F(MaterialLinks, AreMadeOnce) {
  const auto scene = SceneWith(R"("colour": { "graph": { "shader": "Probe" } })");
  LinkMaterials(*scene);
  Link* link = LinkAt(*scene, ChannelColour);
  LinkMaterials(*scene);
  EXPECT_EQ(LinkAt(*scene, ChannelColour), link);
}

TEST_F(MaterialLinks, TakeTheStateOfAShaderBack) {
  const auto scene = SceneWith(R"("colour": { "graph": { "shader": "Probe", "value": 0.75 },
                                              "state": [ { "float": 0.5 } ] })");
  EXPECT_TRUE(LinkMaterials(*scene).empty());
  ChannelSample sample = {};
  EXPECT_EQ(LinkAt(*scene, ChannelColour)->Sample(sample).x, 0.5f) << "the state says more";
}

TEST_F(MaterialLinks, StoreStatesThatAreTakenBack) {
  const auto scene = SceneWith(R"("colour": { "graph": { "shader": "Probe", "value": 0.75 } },
                                  "bump": { "state": [ { "int": 1 } ] })");
  LinkMaterials(*scene);
  StoreStates(*scene);
  const auto again =
      ReadScene(SceneText(*scene), "scene.json", {.catalogue = &fake::Catalogue()}).scene;
  ASSERT_NE(again, nullptr);
  const auto& channels = again->materials[0]->channels;
  EXPECT_EQ(WriteJson(channels[ChannelColour].state, -1),
            WriteJson(*ParseJson("[{\"float\": 0.75}]"), -1));
  EXPECT_EQ(WriteJson(channels[ChannelBump].state, -1), WriteJson(*ParseJson("[{\"int\": 1}]"), -1))
      << "without a link it stays";
}

TEST_F(MaterialLinks, NameWhatCannotBeHad) {
  // The catalogue tells of "Colours", but nobody registered it.
  const auto scene = SceneWith(R"("colour": { "graph": { "shader": "Colours" } })");
  ASSERT_NE(scene, nullptr);
  EXPECT_THAT(LinkMaterials(*scene),
              ::testing::ElementsAre("material \"M\", channel colour: its shader cannot be had"));
  EXPECT_EQ(LinkAt(*scene, ChannelColour), nullptr);
}

}  // namespace
}  // namespace sorvanix::host
