// Documents and materials through the contract's tables, as a preview uses them.
#include "host/scene/document_tables.h"

#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include <string>

#include "host/channels/channel_link.h"
#include "host/scene/object_table.h"
#include "tests/host/channels/fake_shaders.h"
#include "tests/host/services/leak_check.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

constexpr const char* kScene = R"({ "format": "sorvanix-scene", "version": 1,
    "materials": [ { "name": "Stone" } ],
    "objects": [ { "kind": "sphere", "name": "Object", "segmentsU": 4, "segmentsV": 2,
                   "textures": [ { "material": "Stone" } ] } ] })";

class DocumentTables : public ::testing::Test {
 protected:
  DocumentTables() {
    InstallObjects(objects_);
    InstallMaterials(materials_);
    InstallDocuments(documents_, list_);
    file_ = Filename(folder_.Write("scene.c4d", kScene).string());
  }

  HostDocument* Load() { return list_.load(file_.Handle()); }
  HostObject* FindObject(HostDocument* document, const char* name) {
    const Text text(name);
    return documents_.findObject(document, text.Handle());
  }
  HostMaterial* FindMaterial(HostDocument* document, const char* name) {
    const Text text(name);
    return documents_.findMaterial(document, text.Handle());
  }

  const TemporaryFolder folder_;
  Filename file_;
  const LeakCheck leaks_;
  ObjectTable objects_ = {};
  MaterialTable materials_ = {};
  DocumentTable documents_ = {};
  DocumentListTable list_ = {};
};

TEST_F(DocumentTables, LoadAndFree) {
  HostDocument* document = Load();
  ASSERT_NE(document, nullptr);
  EXPECT_NE(documents_.firstObject(document), nullptr);
  EXPECT_NE(FindObject(document, "Object"), nullptr);
  EXPECT_EQ(FindObject(document, "Subject"), nullptr);
  EXPECT_NE(FindMaterial(document, "Stone"), nullptr);
  EXPECT_EQ(FindMaterial(document, "Wood"), nullptr);
  EXPECT_EQ(documents_.activeTag(document), nullptr);
  list_.free(document);
}

TEST_F(DocumentTables, AnswerNullForWhatCannotBeLoaded) {
  const Filename folder(folder_.Path().string());  // as a preview without an object asks for
  EXPECT_EQ(list_.load(folder.Handle()), nullptr);
  const Filename none((folder_.Path() / "none.c4d").string());
  EXPECT_EQ(list_.load(none.Handle()), nullptr);
  const Filename broken(folder_.Write("broken.c4d", "{").string());
  EXPECT_EQ(list_.load(broken.Handle()), nullptr);
}

TEST_F(DocumentTables, PreviewAMaterial) {
  const fake::LinkHost host;
  HostDocument* document = Load();
  HostMaterial* material = materials_.create(MaterialTypeStandard);
  ASSERT_NE(material, nullptr);
  materials_.enableChannel(material, ChannelLuminance, 1);
  materials_.enableChannel(material, ChannelColour, 0);
  materials_.enableChannel(material, ChannelSpecularColour, 0);
  ChannelLink* link = materials_.channel(material, ChannelLuminance);
  Container description;
  description.Set(KeyLinkPluginId, Word{fake::kProbe});
  EXPECT_EQ(host.Tables().channel.message(link, MessageSetParameters, description.Handle()), 1);
  EXPECT_NE(host.Tables().channel.instance(link), nullptr);
  EXPECT_EQ(materials_.channel(material, ChannelLuminance), link) << "the material's own";

  documents_.insertMaterial(document, material);
  HostTag* tag = objects_.makeTag(FindObject(document, "Object"), TagTypeTexture);
  objects_.setTagMaterial(tag, material);
  const Scene& scene = *Scene::From(document);
  const TextureTagNode& node = *scene.root.children[0]->textureTags.back();
  EXPECT_EQ(node.material.lock().get(), Material::From(material));
  for (std::size_t i = 0; i < kMaterialChannelCount; ++i) {
    EXPECT_EQ(node.material.lock()->channels[i].on, i == ChannelLuminance) << i;
  }

  materials_.free(material);
  EXPECT_TRUE(node.material.expired()) << "gone from the document and from the object";
  EXPECT_EQ(scene.materials.size(), 1u);
  list_.free(document);
}

TEST_F(DocumentTables, FreeMaterialsWithTheirDocument) {
  HostDocument* document = Load();
  documents_.insertMaterial(document, materials_.create(MaterialTypeStandard));
  list_.free(document);
}

TEST_F(DocumentTables, GiveRemovedMaterialsBack) {
  HostDocument* document = Load();
  HostMaterial* stone = FindMaterial(document, "Stone");
  documents_.removeMaterial(document, stone);
  EXPECT_EQ(FindMaterial(document, "Stone"), nullptr);
  list_.free(document);
  materials_.enableChannel(stone, ChannelBump, 1);  // it lives on
  materials_.free(stone);
}

TEST_F(DocumentTables, InsertAMaterialOnce) {
  HostDocument* document = Load();
  HostMaterial* material = materials_.create(MaterialTypeStandard);
  documents_.insertMaterial(document, material);
  documents_.insertMaterial(document, material);
  EXPECT_EQ(Scene::From(document)->materials.size(), 2u);
  list_.free(document);
}

TEST_F(DocumentTables, MakeOnlyMaterialsOfTheKnownType) {
  EXPECT_EQ(materials_.create(0), nullptr);
  HostMaterial* material = materials_.create(MaterialTypeStandard);
  EXPECT_TRUE(Material::From(material)->channels[ChannelColour].on);
  EXPECT_TRUE(Material::From(material)->channels[ChannelSpecularColour].on);
  EXPECT_EQ(materials_.channel(material, -1), nullptr);
  EXPECT_EQ(materials_.channel(material, 9), nullptr);
  materials_.enableChannel(material, 8427, 1);
  materials_.free(material);
}

TEST_F(DocumentTables, MergeFiles) {
  HostDocument* document = Load();
  const Filename more(folder_
                          .Write("more.c4d", R"({ "format": "sorvanix-scene", "version": 1,
      "objects": [ { "kind": "null", "name": "More" } ] })")
                          .string());
  EXPECT_EQ(list_.merge(document, more.Handle()), 1);
  EXPECT_EQ(objects_.next(FindObject(document, "Object")), FindObject(document, "More"));
  const Filename none((folder_.Path() / "none.c4d").string());
  EXPECT_EQ(list_.merge(document, none.Handle()), 0);
  list_.free(document);
}

TEST_F(DocumentTables, KnowTheActiveDocument) {
  EXPECT_EQ(list_.active(), nullptr);
  Scene scene;
  {
    OpenDocuments open({}, &scene);
    EXPECT_EQ(list_.active(), scene.Handle());
    HostDocument* other = Load();
    open.SetActive(Scene::From(other));
    EXPECT_EQ(list_.active(), other);
    list_.free(other);
    EXPECT_EQ(list_.active(), nullptr) << "a freed document is not active";
  }
  EXPECT_EQ(list_.active(), nullptr);
}

TEST_F(DocumentTables, ReadGraphsWithTheCatalogueOfTheOpenDocuments) {
  const OpenDocuments open({.catalogue = &fake::Catalogue()});
  const Filename file(folder_
                          .Write("graph.c4d", R"({ "format": "sorvanix-scene", "version": 1,
      "materials": [ { "name": "M", "channels": {
        "colour": { "graph": { "shader": "Probe" } } } } ] })")
                          .string());
  HostDocument* document = list_.load(file.Handle());
  ASSERT_NE(document, nullptr);
  const auto& channel = Scene::From(document)->materials[0]->channels[ChannelColour];
  EXPECT_TRUE(std::holds_alternative<MaterialNode>(channel.graph));
  list_.free(document);
}

TEST_F(DocumentTables, AnswerNeutrallyToNullHandles) {
  EXPECT_EQ(documents_.firstObject(nullptr), nullptr);
  EXPECT_EQ(FindObject(nullptr, "Object"), nullptr);
  EXPECT_EQ(FindMaterial(nullptr, "Stone"), nullptr);
  EXPECT_EQ(documents_.activeTag(nullptr), nullptr);
  documents_.insertMaterial(nullptr, nullptr);
  documents_.removeMaterial(nullptr, nullptr);
  materials_.free(nullptr);
  materials_.enableChannel(nullptr, 0, 1);
  EXPECT_EQ(materials_.channel(nullptr, 0), nullptr);
  EXPECT_EQ(list_.load(nullptr), nullptr);
  EXPECT_EQ(list_.merge(nullptr, nullptr), 0);
  list_.free(nullptr);
  HostDocument* document = Load();
  EXPECT_EQ(documents_.findObject(document, nullptr), nullptr);
  EXPECT_EQ(documents_.findMaterial(document, nullptr), nullptr);
  list_.free(document);
}

TEST_F(DocumentTables, SurviveShortMemory) {
  const int allocations = WithEveryAllocationFailing([&] {
    HostDocument* document = Load();
    HostMaterial* material = materials_.create(MaterialTypeStandard);
    materials_.channel(material, ChannelBump);
    documents_.insertMaterial(document, material);
    list_.merge(document, file_.Handle());
    if (document == nullptr) materials_.free(material);
    list_.free(document);
  });
  EXPECT_GT(allocations, 5);
}

}  // namespace
}  // namespace sorvanix::host
