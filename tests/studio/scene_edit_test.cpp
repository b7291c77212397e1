#include "apps/studio/document/scene_edit.h"

#include "apps/studio/document/graph_edit.h"
#include "host/scene/scene_file.h"
#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {
namespace {

using SceneEditTest = StudioTest;

constexpr const char* kScene = R"({"format":"sorvanix-scene","version":1,
  "materials":[{"name":"Red"},{"name":"Blue"}],
  "objects":[{"kind":"null","children":[{"kind":"sphere",
    "textures":[{"material":"Red"},{"material":"Blue"}]}]}]})";

TEST_F(SceneEditTest, ANewSceneCanBeReadAndShowsItsMaterial) {
  const auto reading = host::ReadScene(OneLine(NewScene()), {}, {.catalogue = &Catalogue()});
  ASSERT_NE(reading.scene, nullptr);
  ASSERT_EQ(reading.scene->materials.size(), 1U);
  EXPECT_EQ(reading.scene->FindObject("Object")->textureTags.front()->material.lock(),
            reading.scene->materials.front());
}

TEST_F(SceneEditTest, NamesThatAreTakenGetANumber) {
  const Json scene = Parsed(kScene);
  EXPECT_EQ(FreeMaterialName(scene, "Green"), "Green");
  EXPECT_EQ(FreeMaterialName(scene, "Red"), "Red 2");
  const Json two = RenameMaterial(scene, 1, "Red 2");
  EXPECT_EQ(FreeMaterialName(two, "Red"), "Red 3");
  EXPECT_EQ(FreeMaterialName(two, "Red 2"), "Red 3") << "the copy of a copy";
}

TEST_F(SceneEditTest, TexturesFollowTheNameOfTheirMaterial) {
  const Json renamed = RenameMaterial(Parsed(kScene), 0, "Crimson");
  EXPECT_NE(OneLine(renamed).find(R"("textures":[{"material":"Crimson"},{"material":"Blue"}])"),
            std::string::npos);
  EXPECT_EQ(OneLine(RenameMaterial(renamed, 0, "Red")), OneLine(Parsed(kScene)));
}

TEST_F(SceneEditTest, TexturesGoWithTheirMaterial) {
  const Json scene = RemoveMaterial(Parsed(kScene), 0);
  EXPECT_EQ(MaterialNames(scene), std::vector<std::string>{"Blue"});
  EXPECT_NE(OneLine(scene).find(R"("textures":[{"material":"Blue"}])"), std::string::npos);
  EXPECT_NE(host::ReadScene(OneLine(scene), {}, {.catalogue = &Catalogue()}).scene, nullptr);
}

// Seen from /a/scenes the file lies in ../m, seen from /a in m.
TEST_F(SceneEditTest, NamesOfFilesFollowTheSceneToAnotherFolder) {
  const Json graph = Parsed(R"({"shader":"Fusion","mode":"screen","baseInput":"../m/x.json"})");
  const Json moved = MoveGraph(graph, {Catalogue(), "/a/scenes", "/a"});
  EXPECT_EQ(OneLine(moved), R"({"shader":"Fusion","mode":"screen","baseInput":"m/x.json"})");
  EXPECT_EQ(OneLine(MoveGraph(moved, {Catalogue(), "/a", "/a/scenes"})), OneLine(graph));
}

TEST_F(SceneEditTest, WithoutAFolderNamesAreWhole) {
  const Json moved = MoveGraph(Json(std::string("x.png")), {Catalogue(), "/a", ""});
  EXPECT_EQ(OneLine(moved), R"("/a/x.png")");
  EXPECT_EQ(OneLine(MoveGraph(moved, {Catalogue(), "", "/b"})), R"("/a/x.png")");
}

TEST_F(SceneEditTest, NamesOfMeshesFollowToo) {
  const Json scene = Parsed(R"({"objects":[{"kind":"null","children":[
    {"kind":"mesh","file":"leaf.obj"}]}],"materials":[]})");
  EXPECT_NE(OneLine(MoveScene(scene, {Catalogue(), "/a/b", "/a"})).find(R"("file":"b/leaf.obj")"),
            std::string::npos);
}

TEST_F(SceneEditTest, ListsInAFormOfLaterProgramsAreKept) {
  const Json scene = Parsed(R"({"materials":[{"name":"A"}],"objects":{"later":true}})");
  EXPECT_EQ(OneLine(RenameMaterial(scene, 0, "B")),
            R"({"materials":[{"name":"B"}],"objects":{"later":true}})");
}

TEST_F(SceneEditTest, NamesOfStoredBitmapsFollowToo) {
  const Json material = Parsed(R"({"name":"M","channels":{"colour":{"state":[{"int":1},
    {"link":{"bitmap":"b/x.png"}},
    {"link":{"shader":5,"values":[{"link":{"bitmap":"y.png"}}]}}]}}})");
  const std::string moved = OneLine(MoveMaterial(material, {Catalogue(), "/a", "/a/b"}));
  EXPECT_NE(moved.find(R"({"bitmap":"x.png"})"), std::string::npos) << moved;
  EXPECT_NE(moved.find(R"({"bitmap":"../y.png"})"), std::string::npos) << moved;
}

}  // namespace
}  // namespace sorvanix::studio
