// The contract's table of objects as a shader uses it: walking, flags, tags, polygons, textures.
#include "host/scene/object_table.h"

#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include <cmath>
#include <numbers>
#include <set>
#include <string>

#include "host/scene/document_tables.h"
#include "tests/host/scene/vector_checks.h"
#include "tests/host/services/leak_check.h"

namespace sorvanix::host {
namespace {

class ObjectTables : public ::testing::Test {
 protected:
  ObjectTables() {
    InstallObjects(objects_);
    InstallDocuments(document_, documents_);
    scene_ = ReadScene(R"({ "format": "sorvanix-scene", "version": 1, "objects": [
        { "kind": "null", "name": "group", "position": [0, 5, 0], "children": [
            { "kind": "sphere", "name": "ball", "radius": 10, "segmentsU": 8, "segmentsV": 4,
              "textures": [ { "projection": "flat", "offsetU": 0.25, "lengthV": 2, "tile": false,
                              "mirrored": true, "position": [1, 2, 3], "rotation": [90, 0, 0],
                              "active": true } ] },
            { "kind": "particles", "name": "cloud", "particles": [ [1, 0, 0] ] } ] },
        { "kind": "ambientLight", "name": "light" } ] })",
                       "scene.json")
                 .scene;
  }

  HostObject* Find(const char* name) {
    const Text text(name);
    return document_.findObject(scene_->Handle(), text.Handle());
  }
  std::string NameOf(const HostObject* object) {
    return std::string(TextOf(objects_.name(object)));
  }

  const LeakCheck leaks_;
  ObjectTable objects_ = {};
  DocumentTable document_ = {};
  DocumentListTable documents_ = {};
  std::unique_ptr<Scene> scene_;
};

TEST_F(ObjectTables, AreComplete) {
  // Every word of the table holds a function.
  void* const* words = reinterpret_cast<void* const*>(&objects_);
  for (std::size_t i = 0; i < sizeof objects_ / sizeof(void*); ++i) EXPECT_NE(words[i], nullptr);
}

TEST_F(ObjectTables, WalkTheTree) {
  HostObject* group = document_.firstObject(scene_->Handle());
  EXPECT_EQ(NameOf(group), "group");
  EXPECT_EQ(NameOf(objects_.next(group)), "light");
  EXPECT_EQ(NameOf(objects_.down(group)), "ball");
  EXPECT_EQ(NameOf(objects_.next(objects_.down(group))), "cloud");
  EXPECT_EQ(objects_.next(Find("light")), nullptr);
  EXPECT_EQ(objects_.next(Find("cloud")), nullptr) << "not on to the parent's siblings";
  EXPECT_EQ(objects_.down(Find("ball")), nullptr);
}

TEST_F(ObjectTables, TellTypesFlagsAndPlaces) {
  EXPECT_EQ(objects_.type(Find("cloud")), ObjectTypeParticles);
  EXPECT_EQ(objects_.infoFlags(Find("ball")), ObjectHasGeometry | ObjectNeedsPolygonise);
  EXPECT_EQ(objects_.infoFlags(Find("group")), 0);
  EXPECT_EQ(objects_.infoFlags(Find("cloud")), 0);
  Matrix matrix;
  objects_.globalMatrix(Find("ball"), &matrix);
  EXPECT_TRUE(Near(matrix.off, {0, 5, 0}));
}

TEST_F(ObjectTables, PolygonisePrimitives) {
  HostObject* ball = Find("ball");
  EXPECT_EQ(objects_.tag(ball, TagTypePoints), nullptr) << "it has none itself";
  HostObject* polygons = objects_.polygonise(ball, 1);
  ASSERT_NE(polygons, nullptr);
  EXPECT_EQ(NameOf(polygons), "ball");
  EXPECT_EQ(objects_.infoFlags(polygons), ObjectHasGeometry);
  const HostTag* points = objects_.tag(polygons, TagTypePoints);
  ASSERT_NE(points, nullptr);
  EXPECT_EQ(objects_.tagItemCount(points), 8 * 3 + 2);
  const auto* items = static_cast<const Vector*>(objects_.tagData(points));
  for (int i = 0; i < 26; ++i) EXPECT_NEAR(Length(items[i]), 10, 1e-5) << "local";
  const HostTag* faces = objects_.tag(polygons, TagTypePolygons);
  EXPECT_EQ(objects_.tagItemCount(faces), 8 * 4);
  const auto* records = static_cast<const PolygonRecord*>(objects_.tagData(faces));
  EXPECT_LT(records[31].a, 26);
  Matrix matrix;
  objects_.globalMatrix(polygons, &matrix);
  EXPECT_TRUE(Near(matrix.off, {0, 5, 0})) << "it stands where the ball does";
  objects_.free(polygons);
}

TEST_F(ObjectTables, PolygoniseAtALevelOfDetail) {
  HostObject* polygons = objects_.polygonise(Find("ball"), 0.5f);
  // Half of 8 x 4 segments.
  EXPECT_EQ(objects_.tagItemCount(objects_.tag(polygons, TagTypePolygons)), 4 * 2);
  objects_.free(polygons);
}

TEST_F(ObjectTables, PolygoniseMeshesAndNothingElse) {
  HostObject* mesh = objects_.polygonise(Find("ball"), 1);
  HostObject* again = objects_.polygonise(mesh, 1);
  EXPECT_EQ(objects_.tagData(objects_.tag(again, TagTypePoints)),
            objects_.tagData(objects_.tag(mesh, TagTypePoints)));
  objects_.free(mesh);
  EXPECT_NE(objects_.tagData(objects_.tag(again, TagTypePoints)), nullptr) << "it stands alone";
  objects_.free(again);
  for (const char* name : {"group", "cloud", "light"}) {
    EXPECT_EQ(objects_.polygonise(Find(name), 1), nullptr);
  }
}

TEST_F(ObjectTables, FreeOnlyWhatWasMade) {
  objects_.free(Find("ball"));
  EXPECT_EQ(NameOf(Find("ball")), "ball");
}

TEST_F(ObjectTables, TellParticles) {
  const HostTag* tag = objects_.tag(Find("cloud"), TagTypeParticles);
  ASSERT_NE(tag, nullptr);
  EXPECT_EQ(objects_.tagItemCount(tag), 1);
  EXPECT_TRUE(Near(objects_.particleAt(tag, 0)->position, {1, 5, 0})) << "in world space";
  EXPECT_EQ(objects_.particleAt(tag, 1), nullptr);
  EXPECT_EQ(objects_.particleAt(tag, -1), nullptr);
  EXPECT_EQ(objects_.tagData(tag), nullptr);
}

TEST_F(ObjectTables, TellTheSettingsOfTextures) {
  const HostTag* tag = document_.activeTag(scene_->Handle());
  ASSERT_NE(tag, nullptr);
  EXPECT_EQ(tag, objects_.tag(Find("ball"), TagTypeTexture));
  const Container* settings = Container::From(objects_.tagContainer(tag));
  ASSERT_NE(settings, nullptr);
  EXPECT_EQ(settings->GetInt(KeyTagProjection), 2);
  EXPECT_EQ(settings->GetFloat(KeyTagOffsetU), 0.25f);
  EXPECT_EQ(settings->GetFloat(KeyTagOffsetV), 0);
  EXPECT_EQ(settings->GetFloat(KeyTagLengthU), 1);
  EXPECT_EQ(settings->GetFloat(KeyTagLengthV), 2);
  EXPECT_FALSE(settings->GetBool(KeyTagTile, true));
  EXPECT_TRUE(settings->GetBool(KeyTagSeamless));
  Vector value;
  objects_.tagPosition(tag, &value);
  EXPECT_TRUE(Near(value, {1, 2, 3}));
  objects_.tagScale(tag, &value);
  EXPECT_TRUE(Near(value, {100, 100, 100}));
  objects_.tagRotation(tag, &value);
  EXPECT_TRUE(Near(value, {static_cast<float>(std::numbers::pi / 2), 0, 0})) << "radians";
}

TEST_F(ObjectTables, MakeTextureTagsAndNoOthers) {
  HostTag* tag = objects_.makeTag(Find("group"), TagTypeTexture);
  ASSERT_NE(tag, nullptr);
  EXPECT_EQ(objects_.tag(Find("group"), TagTypeTexture), tag);
  EXPECT_EQ(objects_.makeTag(Find("group"), TagTypePoints), nullptr);
}

TEST_F(ObjectTables, AnswerNeutrallyToNullHandles) {
  EXPECT_EQ(objects_.next(nullptr), nullptr);
  EXPECT_EQ(objects_.down(nullptr), nullptr);
  EXPECT_EQ(objects_.name(nullptr), nullptr);
  EXPECT_EQ(objects_.type(nullptr), 0);
  EXPECT_EQ(objects_.infoFlags(nullptr), 0);
  Matrix matrix = {};
  objects_.globalMatrix(nullptr, &matrix);
  EXPECT_EQ(matrix.v2.y, 1) << "the identity";
  objects_.globalMatrix(Find("ball"), nullptr);
  EXPECT_EQ(objects_.tag(nullptr, TagTypePoints), nullptr);
  EXPECT_EQ(objects_.tagData(nullptr), nullptr);
  EXPECT_EQ(objects_.tagItemCount(nullptr), 0);
  EXPECT_EQ(objects_.particleAt(nullptr, 0), nullptr);
  EXPECT_EQ(objects_.polygonise(nullptr, 1), nullptr);
  objects_.free(nullptr);
  EXPECT_EQ(objects_.makeTag(nullptr, TagTypeTexture), nullptr);
  objects_.setTagMaterial(nullptr, nullptr);
  EXPECT_EQ(objects_.tagContainer(nullptr), nullptr);
  Vector value = {1, 1, 1};
  objects_.tagPosition(nullptr, &value);
  EXPECT_TRUE(Near(value, {0, 0, 0}));
  objects_.tagScale(objects_.tag(Find("cloud"), TagTypeParticles), &value);
  EXPECT_TRUE(Near(value, {0, 0, 0})) << "a tag of another type";
}

TEST_F(ObjectTables, SurviveShortMemory) {
  WithEveryAllocationFailing([&] {
    HostObject* polygons = objects_.polygonise(Find("ball"), 1);
    objects_.free(polygons);
    objects_.tagContainer(document_.activeTag(scene_->Handle()));
    objects_.makeTag(Find("group"), TagTypeTexture);
  });
}

}  // namespace
}  // namespace sorvanix::host
