// Scene files: every part that they may have, every problem with its place, and writing what was
// read.
#include "host/scene/scene_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/channels/channel_link.h"
#include "host/scene/scene_format.h"
#include "tests/host/channels/fake_shaders.h"
#include "tests/host/scene/vector_checks.h"
#include "tests/host/services/leak_check.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// A file of the format with these parts: `"objects": [ ... ]`.
std::string File(const std::string& parts) {
  return "{\"format\": \"sorvanix-scene\", \"version\": 1" + (parts.empty() ? "" : ", " + parts) +
         "}";
}
std::string Objects(const std::string& objects) { return File("\"objects\": [" + objects + "]"); }

std::unique_ptr<Scene> Read(const std::string& text, const SceneReadingOptions& options = {}) {
  SceneReading reading = ReadScene(text, "scene.json", options);
  for (const SceneProblem& problem : reading.problems) {
    ADD_FAILURE() << Describe("scene.json", problem);
  }
  if (reading.scene == nullptr) throw std::runtime_error("no scene");
  return std::move(reading.scene);
}

std::vector<std::string> Problems(const std::string& text,
                                  const SceneReadingOptions& options = {}) {
  std::vector<std::string> lines;
  const SceneReading reading = ReadScene(text, "scene.json", options);
  for (const SceneProblem& problem : reading.problems) lines.push_back(Describe("s", problem));
  EXPECT_EQ(reading.scene == nullptr, !lines.empty()) << "a scene or problems";
  return lines;
}

/// Without the file, line and column.
std::vector<std::string> Messages(const std::string& text) {
  std::vector<std::string> lines = Problems(text);
  for (std::string& line : lines) line.erase(0, line.find(": ") + 2);
  return lines;
}

template <class Content>
const Content& First(const Scene& scene) {
  return std::get<Content>(scene.root.children.at(0)->content);
}

TEST(SceneFile, MayBeEmpty) {
  const auto scene = Read(File(""));
  EXPECT_TRUE(scene->root.children.empty());
  EXPECT_EQ(scene->camera.width, 640);
}

TEST(SceneFile, TellsTheCamera) {
  const auto scene = Read(File(R"("background": "#ff0000", "camera": { "position": [0, 10, -20],
      "rotation": [30, 0, 5], "fieldOfView": 50, "width": 320, "height": 200 })"));
  EXPECT_TRUE(Near(scene->background, {1, 0, 0}));
  EXPECT_TRUE(Near(scene->camera.transform.position, {0, 10, -20}));
  EXPECT_TRUE(Near(scene->camera.transform.rotation, {30, 0, 5}));
  EXPECT_EQ(scene->camera.fieldOfView, 50);
  EXPECT_EQ(scene->camera.width, 320);
  EXPECT_EQ(scene->camera.height, 200);
}

TEST(SceneFile, AimsAtTargets) {
  const auto scene = Read(File(R"("camera": { "position": [5, 0, 0], "target": [4, 0, 0] })"));
  EXPECT_TRUE(Near(scene->camera.ToWorld().v3, {-1, 0, 0}));
}

TEST(SceneFile, TellsPrimitives) {
  const auto scene = Read(Objects(
      R"({ "kind": "torus", "name": "Ring", "radius": 5, "pipeRadius": 1, "segmentsU": 9,
           "position": [1, 2, 3], "scale": [1, 1, 2], "visible": false },
         { "kind": "cylinder", "caps": false }, { "kind": "cube", "depth": 3 })"));
  const Object& ring = *scene->root.children[0];
  EXPECT_EQ(ring.name.text, "Ring");
  EXPECT_FALSE(ring.visible);
  EXPECT_TRUE(Near(ring.world.off, {1, 2, 3}));
  const auto& torus = std::get<Primitive>(ring.content);
  EXPECT_EQ(torus.shape, PrimitiveShape::Torus);
  EXPECT_EQ(torus.pipeRadius, 1);
  EXPECT_EQ(torus.segmentsU, 9);
  EXPECT_EQ(torus.segmentsV, DefaultPrimitive(PrimitiveShape::Torus).segmentsV);
  EXPECT_FALSE(std::get<Primitive>(scene->root.children[1]->content).caps);
  EXPECT_NE(ring.mesh, nullptr) << "up to date";
}

TEST(SceneFile, TellsEveryKindOfObject) {
  for (const ObjectKind& kind : ObjectKinds()) {
    if (kind.name == "mesh") continue;  // needs a file
    const auto scene = Read(Objects("{\"kind\": \"" + std::string(kind.name) + "\"}"));
    EXPECT_EQ(KindOfContent(scene->root.children[0]->content).name, kind.name);
  }
}

TEST(SceneFile, TellsLights) {
  const auto scene = Read(Objects(
      R"({ "kind": "spotLight", "colour": [1, 2, 3], "intensity": 0.5, "contrast": -1,
           "falloff": "inverseSquare", "range": 200, "innerAngle": 1, "outerAngle": 2,
           "shadows": false, "diffuse": false, "specular": false })"));
  const auto& light = First<LightContent>(*scene);
  EXPECT_EQ(light.kind, LightKind::Spot);
  EXPECT_EQ(light.falloff, FalloffInverseSquare);
  EXPECT_TRUE(Near(light.colour, {1, 2, 3}));
  EXPECT_EQ(light.outerAngle, 2);
  EXPECT_FALSE(light.shadows || light.diffuse || light.specular);
}

TEST(SceneFile, TellsHierarchies) {
  const auto scene = Read(Objects(
      R"({ "kind": "null", "position": [1, 0, 0], "children": [
             { "kind": "null", "position": [2, 0, 0], "name": "deep" } ] })"));
  EXPECT_TRUE(Near(scene->FindObject("deep")->world.off, {3, 0, 0}));
}

TEST(SceneFile, TellsParticles) {
  const auto scene = Read(Objects(
      R"({ "kind": "particles", "particles": [ [1, 2, 3],
             { "position": [4, 5, 6], "alive": false } ] })"));
  const auto& particles = First<ParticleContent>(*scene).particles;
  ASSERT_EQ(particles.size(), 2u);
  EXPECT_TRUE(Near(particles[0].position, {1, 2, 3}));
  EXPECT_TRUE(particles[0].alive);
  EXPECT_FALSE(particles[1].alive);
}

TEST(SceneFile, TellsTextures) {
  const auto scene = Read(File(
      R"("materials": [ { "name": "Red" } ],
         "objects": [ { "kind": "cube", "textures": [ { "material": "Red", "projection": "cube",
           "uvwSet": 1, "offsetU": 0.1, "offsetV": 0.2, "lengthU": 0.3, "lengthV": 0.4,
           "tile": false, "mirrored": true, "position": [1, 2, 3], "rotation": [4, 5, 6],
           "scale": [7, 8, 9], "active": true } ] } ])"));
  const TextureTagNode& tag = *scene->root.children[0]->textureTags.at(0);
  EXPECT_EQ(tag.material.lock(), scene->FindMaterial("Red"));
  EXPECT_EQ(tag.projection, Projection::Cube);
  EXPECT_EQ(tag.uvwSet, 1);
  EXPECT_EQ(tag.offsetU, 0.1f);
  EXPECT_EQ(tag.lengthV, 0.4f);
  EXPECT_FALSE(tag.tile);
  EXPECT_TRUE(tag.mirrored);
  EXPECT_TRUE(Near(tag.placement.scale, {7, 8, 9}));
  EXPECT_EQ(scene->activeTag, &tag);
}

TEST(SceneFile, TellsMeshesAndReadsAFileOnce) {
  const TemporaryFolder folder;
  folder.Write("meshes/t.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
  const auto file =
      folder.Write("scene.json", Objects(R"({ "kind": "mesh", "file": "meshes/t.obj" },
                               { "kind": "mesh", "file": "./meshes/../meshes/t.obj" })"));
  const SceneReading reading = LoadScene(file);
  ASSERT_NE(reading.scene, nullptr);
  EXPECT_EQ(reading.scene->root.children[0]->mesh->polygons.size(), 1u);
  EXPECT_EQ(reading.scene->root.children[0]->mesh, reading.scene->root.children[1]->mesh);
}

TEST(SceneFile, TellsMaterialsAndTheirChannels) {
  const auto scene =
      Read(File(R"("materials": [ { "name": "M", "highlightExponent": 7, "channels": {
           "colour": { "colour": "#000000", "strength": 0.5 },
           "bump": { "graph": { "shader": "Probe", "value": 0.5 } },
           "alpha": { "on": false } } } ])"),
           {.catalogue = &fake::Catalogue()});
  const Material& material = *scene->materials.at(0);
  EXPECT_EQ(material.highlightExponent, 7);
  EXPECT_TRUE(material.channels[ChannelColour].on);
  EXPECT_EQ(material.channels[ChannelColour].strength, 0.5f);
  EXPECT_FALSE(material.channels[ChannelAlpha].on);
  EXPECT_FALSE(material.channels[ChannelLuminance].on) << "not named";
  const auto* node = std::get_if<MaterialNode>(&material.channels[ChannelBump].graph);
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(node->shader->name, "Probe");
}

TEST(SceneFile, TakesGraphsFromFiles) {
  const TemporaryFolder folder;
  folder.Write("stone.json", R"({ "shader": "Probe" })");
  folder.Write("photo.png", "not looked into yet");
  const auto file = folder.Write("scene.json", File(R"("materials": [ { "name": "M", "channels": {
        "colour": { "graph": "stone.json" }, "bump": { "graph": "photo.png" } } } ])"));
  const SceneReading reading = LoadScene(file, {.catalogue = &fake::Catalogue()});
  ASSERT_NE(reading.scene, nullptr);
  const auto& channels = reading.scene->materials[0]->channels;
  EXPECT_TRUE(std::holds_alternative<MaterialNode>(channels[ChannelColour].graph));
  EXPECT_TRUE(std::holds_alternative<MaterialBitmap>(channels[ChannelBump].graph));
}

TEST(SceneFile, KeepsGraphsUnreadWithoutACatalogue) {
  const auto scene = Read(File(
      R"("materials": [ { "name": "M", "channels": { "colour": { "graph": { "shader": 1 } } } } ])"));
  EXPECT_TRUE(std::holds_alternative<std::monostate>(scene->materials[0]->channels[0].graph));
  EXPECT_THAT(SceneText(*scene), HasSubstr("\"shader\": 1"));
}

TEST(SceneFile, IsWrittenAsItWasRead) {
  const TemporaryFolder folder;
  folder.Write("t.obj", "v 0 0 0\n");
  const std::string text = File(
      R"("background": [0.1, 0.2, 0.3],
         "camera": { "position": [1, 2, 3], "target": [0, 0, 0], "width": 99 },
         "materials": [ { "name": "M", "channels": {
             "colour": { "on": false, "graph": { "shader": "Probe", "value": 0.125 } },
             "bump": { "strength": 0.3, "state": [ { "int": 5 }, { "float": "NaN" } ] } } },
           { "name": "Empty" } ],
         "objects": [
           { "kind": "null", "rotation": [1, 2, 3], "children": [
             { "kind": "sphere", "name": "Ball", "radius": 12.5, "textures": [
               { "material": "M", "projection": "flat", "active": true }, {} ] },
             { "kind": "mesh", "file": "t.obj" } ] },
           { "kind": "discLight", "falloff": "linear", "width": 3, "shadows": false },
           { "kind": "particles", "particles": [ [0, 1, 2], { "visible": false } ] } ])");
  const auto read = [&](const std::string& content) {
    return LoadScene(folder.Write("scene.json", content), {.catalogue = &fake::Catalogue()});
  };
  const SceneReading first = read(text);
  ASSERT_NE(first.scene, nullptr);
  const std::string written = SceneText(*first.scene);
  const SceneReading second = read(written);
  ASSERT_NE(second.scene, nullptr);
  EXPECT_EQ(SceneText(*second.scene), written);
  for (const char* part : {"\"Ball\"", "12.5", "\"flat\"", "\"active\": true", "\"on\": false",
                           "\"NaN\"", "\"t.obj\"", "\"discLight\"", "\"visible\": false",
                           "\"width\": 99", "\"background\"", "0.125", "\"Empty\""}) {
    EXPECT_THAT(written, HasSubstr(part));
  }
  EXPECT_THAT(written, ::testing::Not(HasSubstr("intensity"))) << "it has its initial value";
}

TEST(SceneFile, AppearsWholeOrNotAtAll) {
  const TemporaryFolder folder;
  const auto scene = Read(Objects(R"({ "kind": "cube" })"));
  ASSERT_TRUE(SaveScene(*scene, folder.Path() / "new.json"));
  EXPECT_NE(LoadScene(folder.Path() / "new.json").scene, nullptr);
  EXPECT_FALSE(SaveScene(*scene, folder.Path() / "none" / "new.json"));
  int files = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    ++files;
  }
  EXPECT_EQ(files, 1);
}

TEST(SceneProblems, NameTheirPlace) {
  EXPECT_THAT(Problems(File("\n \"objects\": [\n  { \"kind\": \"cube\", \"depth\": \"deep\" } ]")),
              ElementsAre("s:3:30: /objects/0/depth: expected a number, found a text"));
}

TEST(SceneProblems, AreAllTold) {
  EXPECT_THAT(
      Messages(File(R"("camera": { "width": 0, "fov": 3 }, "objects": [ { "kind": "cubes" },
                       { "kind": "cube", "radius": 1, "segmentsU": 1e9 } ])")),
      ElementsAre("/camera/width: 0 is below the least value, 1",
                  HasSubstr("/camera/fov: unknown field of a camera \"fov\""),
                  "/objects/0/kind: unknown kind of object \"cubes\"; did you mean \"cube\"?",
                  HasSubstr("/objects/1/radius: unknown field of a cube"),
                  "/objects/1/segmentsU: 1000000000 is above the greatest value, 1024"));
}

TEST(SceneProblems, EndAtAHundred) {
  std::string objects = "0";
  for (int i = 0; i < 50000; ++i) objects += ",0";
  EXPECT_EQ(Problems(Objects(objects)).size(), 100u);
  EXPECT_EQ(ReadScene(Objects(objects), "scene.json").untold.errors, 50001u - 100u);
}

TEST(SceneProblems, OfGraphsEndAtAHundredToo) {
  std::string graph = R"({ "shader": "Probe")";
  for (int i = 0; i < 60; ++i) graph += ", \"wrong " + std::to_string(i) + "\": 1";
  graph += " }";
  const std::string text = File(R"("materials": [ { "name": "A", "channels": {
      "colour": { "graph": )" + graph +
                                R"( }, "bump": { "graph": )" + graph + " } } } ]");
  const SceneReading reading = ReadScene(text, "scene.json", {.catalogue = &fake::Catalogue()});
  EXPECT_EQ(reading.problems.size(), 100u);
  EXPECT_EQ(reading.untold.errors, 20u);
  EXPECT_EQ(reading.scene, nullptr);
}

TEST(SceneProblems, OfNamesThatHoldAZero) {
  EXPECT_THAT(Messages(Objects(R"({ "kind": "mesh", "file": "a\u0000.obj" })")),
              ElementsAre("/objects/0/file: the name of a file cannot hold a zero character"));
  EXPECT_THAT(Messages(File(R"("materials": [ { "name": "A", "channels": {
                               "colour": { "graph": "a\u0000.png" } } } ])")),
              ElementsAre(HasSubstr("/graph: the name of a file cannot hold a zero character")));
}

TEST(SceneProblems, OfNamesThatStandTwiceHaveAPointer) {
  EXPECT_THAT(Problems(File("\"camera\": { \"width\": 1, \"width\": 2 }")),
              ElementsAre(HasSubstr("/camera/width: the name \"width\" stands here twice")));
}

TEST(SceneProblems, OfFilesThatAreNoScenes) {
  EXPECT_THAT(Messages("[]"), ElementsAre(HasSubstr("expected an object, a scene")));
  EXPECT_THAT(Messages("{}"), ElementsAre(HasSubstr("\"format\" must be \"sorvanix-scene\"")));
  for (const char* version : {"0", "-1", "1.5", "\"1\"", "null"}) {
    EXPECT_THAT(
        Messages(R"({ "format": "sorvanix-scene", "version": )" + std::string(version) + "}"),
        ElementsAre("/version: \"version\" must be 1"));
  }
  EXPECT_EQ(Problems("").size(), 1u);
  EXPECT_EQ(Problems("{ \"format\": ").size(), 1u);
  EXPECT_EQ(LoadScene("no/such/scene.json").problems.size(), 1u);
}

TEST(SceneProblems, OfNumbersThatDoNotFit) {
  EXPECT_EQ(Problems(Objects(R"({ "kind": "null", "position": [1e39, 0, 0] })")).size(), 1u);
  EXPECT_EQ(Problems(Objects(R"({ "kind": "null", "position": [1, 2] })")).size(), 1u);
  EXPECT_EQ(Problems(Objects(R"({ "kind": "null", "position": ["NaN", 0, 0] })")).size(), 1u);
  EXPECT_EQ(Problems(Objects(R"({ "kind": "sphere", "radius": -1 })")).size(), 1u);
}

TEST(SceneProblems, OfObjectsPlacedBeyondNumbers) {
  EXPECT_THAT(Messages(Objects(R"({ "kind": "null", "scale": [1e30, 1, 1], "children": [
                                    { "kind": "null", "scale": [1e30, 1, 1] } ] })")),
              ElementsAre("/objects/0/children/0: the object is placed beyond what numbers can "
                          "tell"));
}

TEST(SceneProblems, OfMaterials) {
  EXPECT_THAT(Messages(File(R"("materials": [ {}, { "name": "A" }, { "name": "A" } ])")),
              ElementsAre("/materials/0: a material needs a name",
                          "/materials/2: there are two materials \"A\""));
  EXPECT_THAT(Messages(File(R"("materials": [ { "name": "A", "channels": { "color": {} } } ])")),
              ElementsAre("/materials/0/channels/color: unknown channel \"color\"; did you mean "
                          "\"colour\"?"));
  EXPECT_THAT(Messages(File(R"("materials": [ { "name": "Red" } ], "objects": [
                              { "kind": "cube", "textures": [ { "material": "Rad" } ] } ])")),
              ElementsAre(HasSubstr("unknown material \"Rad\"; did you mean \"Red\"?")));
}

TEST(SceneProblems, OfGraphsHaveTheirPlaceInTheScene) {
  const std::string text = File(
      "\"materials\": [ { \"name\": \"A\", \"channels\": {\n"
      "  \"bump\": { \"graph\": { \"shader\": \"Probe\", \"valu\": 1 } },\n"
      "  \"colour\": { \"graph\": { \"shader\": \"Scale\",\n"
      "    \"factor\": true } } } } ]");
  const auto problems = Problems(text, {.catalogue = &fake::Catalogue()});
  ASSERT_EQ(problems.size(), 2u);
  EXPECT_THAT(problems[0], HasSubstr("s:2:51: /materials/0/channels/bump/graph/valu: unknown"));
  EXPECT_THAT(problems[1], HasSubstr("s:4:15: /materials/0/channels/colour/graph/factor: "));
}

TEST(SceneProblems, OfGraphsInFilesNameTheFile) {
  const TemporaryFolder folder;
  folder.Write("bad.json", "{ \"shader\": \"Nothing\" }");
  const auto file = folder.Write("scene.json", File(R"("materials": [ { "name": "M", "channels": {
      "colour": { "graph": "bad.json" }, "bump": { "graph": "none.png" },
      "alpha": { "graph": 5 } } } ])"));
  const SceneReading reading = LoadScene(file, {.catalogue = &fake::Catalogue()});
  EXPECT_EQ(reading.scene, nullptr);
  std::string all;
  for (const SceneProblem& problem : reading.problems) all += Describe(file, problem) + "\n";
  EXPECT_THAT(all, HasSubstr("bad.json:1:13: /shader: unknown shader \"Nothing\""));
  EXPECT_THAT(all, HasSubstr("there is no file \"none.png\""));
  EXPECT_THAT(all, HasSubstr("/materials/0/channels/alpha/graph: expected a shader"));
}

TEST(SceneProblems, OfMeshes) {
  EXPECT_THAT(Messages(Objects(R"({ "kind": "mesh" })")),
              ElementsAre("/objects/0: a mesh needs a \"file\""));
  EXPECT_THAT(Messages(Objects(R"({ "kind": "mesh", "file": "none.obj" })")),
              ElementsAre("/objects/0/file: none.obj: there is no such file"));
}

TEST(SceneProblems, OfTexturesAndTargets) {
  EXPECT_THAT(Messages(Objects(R"({ "kind": "cube", "textures": [ { "active": true },
                                    { "active": true }, { "material": 3 } ] })")),
              ElementsAre(HasSubstr("two active textures"), HasSubstr("the name of a material")));
  EXPECT_THAT(
      Messages(Objects(R"({ "kind": "cube", "target": [0, 0, 1], "rotation": [0, 0, 0] })")),
      ElementsAre(HasSubstr("exclude one another")));
  EXPECT_THAT(Messages(Objects(R"({ "kind": "spotLight", "innerAngle": 50 })")),
              ElementsAre(HasSubstr("\"innerAngle\" is larger")));
}

TEST(SceneProblems, OfTooManyPolygons) {
  // A sphere of 1024 x 1024 segments counts as 2^20 + 2^11 polygons; the sixteenth goes beyond
  // 2^24. After the first problem nothing is built any more, only counted.
  std::string objects = R"({ "kind": "sphere", "radius": -1 })";
  for (int i = 0; i < 20; ++i) {
    objects += R"(, { "kind": "sphere", "segmentsU": 1024, "segmentsV": 1024 })";
  }
  EXPECT_THAT(Messages(Objects(objects)),
              ElementsAre(HasSubstr("/objects/0/radius"),
                          "/objects/16: the scene has more than 16777216 polygons"));
}

TEST(SceneProblems, OfHierarchiesThatAreTooDeep) {
  std::string text;
  for (int i = 0; i < 10000; ++i) text += R"({ "kind": "null", "children": [ )";
  for (int i = 0; i < 10000; ++i) text += "] }";
  const auto problems = Problems(Objects(text));
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_THAT(problems[0], HasSubstr("s:1:"));
}

TEST(Scenes, AreSaneWithoutLightsAndAreas) {
  const TemporaryFolder folder;
  folder.Write("flat.obj", "v 1 1 1\nf 1 1 1\n");
  folder.Write("empty.ply",
               "ply\nformat ascii 1.0\nelement vertex 0\nproperty float x\nproperty float y\n"
               "property float z\nend_header\n");
  const SceneReading reading =
      LoadScene(folder.Write("scene.json", Objects(R"({ "kind": "mesh", "file": "flat.obj" },
                               { "kind": "mesh", "file": "empty.ply" },
                               { "kind": "cube", "scale": [0, 0, 0] })")));
  ASSERT_NE(reading.scene, nullptr);
  EXPECT_TRUE(Lights(*reading.scene).empty());
}

TEST(Scenes, GiveBackAllMemory) {
  const LeakCheck leaks;
  Read(Objects(R"({ "kind": "null", "children": [ { "kind": "sphere", "textures": [ {} ] } ] })"));
  Problems(Objects(R"({ "kind": "sphere" }, { "kind": "ball" })"));
}

}  // namespace
}  // namespace sorvanix::host
