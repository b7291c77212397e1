// The module's own dialogs in the host without windows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include <algorithm>

#include "host/channels/channel_link.h"
#include "host/channels/material_file.h"
#include "host/channels/material_shader.h"
#include "host/dialogs/dialog_tables.h"
#include "host/dialogs/headless_dialogs.h"
#include "host/dialogs/import_confirmation.h"
#include "host/loader/module.h"
#include "host/noise/noise_services.h"
#include "host/render/document_render.h"
#include "host/render/matrix.h"
#include "host/render/shading_services.h"
#include "host/scene/document_tables.h"
#include "host/scene/material_links.h"
#include "host/scene/object_table.h"
#include "host/services/stream_json.h"

namespace sorvanix::host::test {
namespace {

using ::testing::IsEmpty;

class ModuleDialogs : public ::testing::Test {
 protected:
  static void InstallServices(HostTables& tables) {
    InstallNoiseServices(tables.render);
    InstallShadingServices(tables.render);
    InstallMatrices(tables.matrix);
    InstallChannelLinks(tables.channel, tables.stream);
    InstallBitmaps(tables.bitmap);
    InstallObjects(tables.object);
    InstallMaterials(tables.material);
    InstallDocuments(tables.document, tables.documentList);
    InstallDocumentRender(tables);
    InstallDialogs(tables);
  }
  ~ModuleDialogs() override { SetDialogService(nullptr); }

  MaterialNode Read(std::string_view material) const {
    return ReadMaterial(material, catalogue_).material.value();
  }
  Shader Import(std::string_view material) const {
    return ImportShader(module_, Read(material), ChannelColour).value();
  }
  // Plays a list in the shader's dialog.
  bool Edit(Shader& shader, std::string_view events) {
    headless_ = std::make_unique<HeadlessDialogs>(
        ParseJson(events).and_then(ReadDialogEvents).value(), catalogue_, MaterialPlaces());
    SetDialogService(headless_.get());
    const bool confirmed = shader.Edit();
    headless_->Finish();
    EXPECT_EQ(headless_->Error().value_or(JsonError()).message, "");
    EXPECT_THAT(headless_->Failures(), IsEmpty());
    SetDialogService(nullptr);
    return confirmed;
  }
  // What the shader stores of itself.
  static std::string StoredBy(const Shader& shader) {
    Stream stream;
    shader.Write(stream);
    return WriteJson(StreamToJson(stream.Values()), -1);
  }

  Host host_{{.services = {InstallServices}}};
  Module module_ = Module::Load(host_, SORVANIX_MODULE_PATH).value();
  LinkedShaders links_{module_.Shaders()};
  ShaderCatalogue catalogue_ =
      ShaderCatalogue::Load(module_.Path().parent_path() / "Resources" / "shaders.json").value();
  std::unique_ptr<HeadlessDialogs> headless_;
};

// The exponent of a layer's highlight is 2 / size, and its default size is not 0.5: with that size
// an exponent of 4 is stored once the dialog was confirmed, and not before.
constexpr const char* kLumas = R"({"shader": "Lumas", "layer1Size": 0.5, "layer2On": "off"})";

TEST_F(ModuleDialogs, AnImportIsConfirmedSoThatTheHighlightFollowsItsSize) {
  const std::string plain = StoredBy(Import(kLumas));
  const ConfirmedImports confirmed;
  const std::string derived = StoredBy(Import(kLumas));
  const auto exponents = [](const std::string& stored) {
    std::size_t count = 0;
    for (auto at = stored.find("{\"float\":4.0}"); at != stored.npos;
         at = stored.find("{\"float\":4.0}", at + 1)) {
      ++count;
    }
    return count;
  };
  EXPECT_EQ(exponents(derived), exponents(plain) + 1);
}

TEST_F(ModuleDialogs, AShaderInAnInputIsConfirmedToo) {
  const std::string graph = std::string(R"({"shader": "Hue", "input": )") + kLumas + "}";
  const std::string plain = StoredBy(Import(graph));
  const ConfirmedImports confirmed;
  EXPECT_NE(StoredBy(Import(graph)), plain);
}

TEST_F(ModuleDialogs, AnUnconfirmedImportStaysAsItWasRead) {
  const std::string plain = StoredBy(Import(kLumas));
  const ConfirmedImports confirmed;
  Link link;
  Container description;
  description.Set(KeyLinkPluginId, Word{PluginIdLumas});
  description.Set(KeyLinkParameters, NestedContainer(ContainerOf(Read(kLumas))));
  {
    const UnconfirmedImport state;
    ASSERT_EQ(link.Message(MessageSetParameters, description), 1);
  }
  EXPECT_EQ(StoredBy(*link.HeldShader()), plain);
  ASSERT_EQ(link.Message(MessageSetParameters, description), 1);
  EXPECT_NE(StoredBy(*link.HeldShader()), plain);
}

TEST_F(ModuleDialogs, ConfirmingChangesNoParameterOfAnyShader) {
  for (const ShaderDescription& description : catalogue_.Shaders()) {
    const std::string material = "{\"shader\": \"" + description.name + "\"}";
    Shader plain = Import(material);
    const ConfirmedImports confirmed;
    Shader derived = Import(material);
    EXPECT_EQ(derived.Parameters(), plain.Parameters()) << description.name;
  }
}

TEST_F(ModuleDialogs, CancelLeavesTheBlockWordForWord) {
  Shader shader = Import(R"({"shader": "2D Noise", "speed": 2})");
  const std::string before = StoredBy(shader);
  EXPECT_FALSE(
      Edit(shader, R"([{"set": 19006, "value": 3}, {"key": "M", "qualifier": 2}, "cancel"])"));
  EXPECT_EQ(StoredBy(shader), before);
}

// With ThreadSanitizer this is the test that a dialog may be edited while its preview is drawn:
// flat first, then a scene.
TEST_F(ModuleDialogs, IsEditedWhileThePreviewDraws) {
  Shader shader = Import(R"({"shader": "2D Noise"})");
  std::string events = "[";
  for (const int object : {0, 1, 3}) {
    events += "{\"set\": 19039, \"value\": " + std::to_string(object) + "},";
    for (int i = 0; i < 12; ++i) {
      events += "{\"set\": 19006, \"value\": " + std::to_string(i % 5) + "},";
      events += R"({"set": 19017, "value": [1, 0.5, 0]}, {"save": "a.png", "area": 19021},)";
    }
    events += R"({"wait": "preview"},)";
  }
  EXPECT_TRUE(Edit(shader, events + "\"ok\"]"));
}

// The content of a link goes while the preview reads it.
TEST_F(ModuleDialogs, ALinkIsChangedWhileThePreviewReadsIt) {
  Shader shader = Import(R"({"shader": "Hue", "input": {"shader": "2D Noise"}})");
  std::string events = "[";
  for (int i = 0; i < 8; ++i) {
    events += R"({"set": 24017, "value": {"shader": "Tiles"}}, {"set": 24017, "value": null},)";
  }
  EXPECT_TRUE(Edit(shader, events + R"({"wait": "preview"}, "ok"])"));
}

}  // namespace
}  // namespace sorvanix::host::test
