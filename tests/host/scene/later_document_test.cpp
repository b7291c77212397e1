// Documents of later programs: what is known is loaded, what is not is kept and written back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include "host/scene/material_links.h"
#include "host/scene/scene_file.h"
#include "tests/host/channels/fake_shaders.h"

namespace sorvanix::host {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

const SceneReadingOptions kOptions = {.catalogue = &fake::Catalogue()};

SceneReading Read(const std::string& text) { return ReadScene(text, "scene.json", kOptions); }

std::vector<std::string> Messages(const SceneReading& reading) {
  std::vector<std::string> lines;
  for (const SceneProblem& problem : reading.problems) {
    lines.push_back((problem.isError ? "error " : "warning ") + problem.pointer + ": " +
                    problem.message);
  }
  return lines;
}

// As it is written again, on one line.
std::string Written(const std::string& text) {
  const SceneReading reading = Read(text);
  for (const SceneProblem& problem : reading.problems) {
    if (problem.isError) ADD_FAILURE() << Describe("scene.json", problem);
  }
  if (reading.scene == nullptr) return "no scene";
  return WriteJson(*ParseJson(SceneText(*reading.scene)), -1);
}

std::string Later(const std::string& parts) {
  return R"({"format":"sorvanix-scene","version":2)" + parts + "}";
}
std::string LaterObjects(const std::string& objects) {
  return Later(R"(,"materials":[],"objects":[)" + objects + "]");
}
std::string LaterChannels(const std::string& channels) {
  return Later(R"(,"materials":[{"name":"M","channels":{)" + channels + R"(}}],"objects":[])");
}

TEST(LaterDocument, IsTold) {
  EXPECT_THAT(Messages(Read(Later(""))),
              ElementsAre(HasSubstr("warning /version: the scene is of a later program")));
}

// Every record with an unknown member in front, in the middle and at the end.
TEST(LaterDocument, KeepsUnknownMembersOfEveryPartAtTheirPlaces) {
  const std::string text = Later(
      R"(,"mood":"blue","background":[0.5,0.5,0.5],)"
      R"("camera":{"lens":{"blades":5},"fieldOfView":50.0,"shutter":[1,2.5,null]},)"
      R"("materials":[{"layers":[],"name":"M","channels":{"colour":{"mask":1,"strength":0.5},)"
      R"("sheen":{"strength":0.25}},"id":7}],)"
      R"("objects":[{"kind":"sphere","rigid":true,"radius":50.0,"soft":false,)"
      R"("textures":[{"layer":3,"material":"M","blend":"add"}],)"
      R"("children":[{"kind":"particles","emitter":{},)"
      R"("particles":[[1.0,2.0,3.0],{"mass":2,"position":[0.0,0.0,1.0]}]}]}],"history":[{"by":"me"}])");
  EXPECT_EQ(Written(text), text);
}

TEST(LaterDocument, KeepsValuesThatAreNotKnownOfMembersThatAre) {
  const std::string text = LaterObjects(
      R"({"kind":"sphere","name":5,"radius":"wide","textures":[{"projection":"spline"}],)"
      R"("visible":"sometimes"})");
  EXPECT_EQ(Written(text), text);
  const SceneReading reading = Read(text);
  const Object& object = *reading.scene->root.children.at(0);
  EXPECT_EQ(std::get<Primitive>(object.content).radius, 100) << "as if it were not told";
  EXPECT_THAT(Messages(reading), Contains(HasSubstr("warning /objects/0/textures/0/projection")));
}

TEST(LaterDocument, KeepsParentsOfAnUnknownKindWithTheirChildren) {
  const std::string text = LaterObjects(
      R"({"kind":"cloth","position":[10.0,0.0,0.0],"weave":"plain","children":[{"kind":"cube"}]})");
  EXPECT_EQ(Written(text), text);
  const SceneReading reading = Read(text);
  const Object& cloth = *reading.scene->root.children.at(0);
  EXPECT_TRUE(std::holds_alternative<NullContent>(cloth.content));
  EXPECT_EQ(cloth.children.at(0)->world.off.x, 10) << "the child stands where it should";
}

TEST(LaterDocument, KeepsMembersThatShouldHoldOthers) {
  const std::string text = Later(R"(,"camera":"main","materials":[],"objects":[])");
  EXPECT_EQ(Written(text), text);
  const std::string channels = Later(
      R"(,"materials":[{"name":"M","channels":"all"}],"objects":[{"kind":"cube","children":3}])");
  EXPECT_EQ(Written(channels), channels);
}

TEST(LaterDocument, LoadsWhatItKnowsOfAGraph) {
  const std::string text = LaterChannels(
      R"("colour":{"graph":{"shader":"Scale","factor":0.5,"gain":2,)"
      R"("input":{"shader":"Probe","value":0.75}}},"bump":{"graph":{"shader":"Swirl","turns":3}},)"
      R"("alpha":{"graph":{"shader":"Scale","input":{"shader":"Swirl"}}},"diffusion":{"graph":5})");
  const std::string sorted =
      LaterChannels(R"("colour":{"graph":{"shader":"Scale","factor":0.5,"gain":2,)"
                    R"("input":{"shader":"Probe","value":0.75}}},"diffusion":{"graph":5},)"
                    R"("bump":{"graph":{"shader":"Swirl","turns":3}},)"
                    R"("alpha":{"graph":{"shader":"Scale","input":{"shader":"Swirl"}}})");
  EXPECT_EQ(Written(text), sorted) << "known channels stand in the order of their numbers";
  fake::LinkHost host;
  SceneReading reading = Read(text);
  EXPECT_TRUE(LinkMaterials(*reading.scene).empty());
  const auto& channels = reading.scene->materials.at(0)->channels;
  ChannelSample sample = {};
  EXPECT_FLOAT_EQ(channels[ChannelColour].link->Sample(sample).x, 0.375f) << "0.5 x 0.75";
  EXPECT_EQ(channels[ChannelBump].link, nullptr);
  EXPECT_EQ(channels[ChannelAlpha].link->Sample(sample).x, 0) << "its input is empty";
}

TEST(LaterDocument, StillHasErrors) {
  EXPECT_THAT(Messages(Read(LaterObjects("5"))), Contains(HasSubstr("error /objects/0")));
  EXPECT_THAT(Messages(Read(LaterObjects("{}"))), Contains(HasSubstr("error /objects/0")));
  EXPECT_THAT(Messages(Read(LaterObjects(R"({"kind":"mesh","file":"none.obj"})"))),
              Contains(HasSubstr("error /objects/0/file")));
  EXPECT_THAT(Messages(Read(Later(R"(,"materials":[{}])"))),
              Contains(HasSubstr("error /materials/0: a material needs a name")));
}

// Today's documents hold nothing unknown: there it is a slip of the pen.
TEST(LaterDocument, IsOneWhoseVersionSaysSo) {
  const SceneReading reading = Read(R"({"format":"sorvanix-scene","version":1,"mood":"blue"})");
  EXPECT_EQ(reading.scene, nullptr);
  EXPECT_THAT(Messages(reading), ElementsAre(HasSubstr("error /mood")));
}

TEST(SavedDocument, KeepsItsSchema) {
  const std::string text =
      R"({"$schema":"scene.schema.json","format":"sorvanix-scene","version":1,"materials":[],)"
      R"("objects":[]})";
  EXPECT_EQ(Written(text), text);
}

}  // namespace
}  // namespace sorvanix::host
