// The module itself, loaded by the standalone host: registration, exchange, persistence, leaks.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/channels/channel_link.h"
#include "host/loader/module.h"
#include "host/services/shader_catalogue.h"
#include "host/services/stream_json.h"
#include "tests/host/services/collecting_sink.h"
#include "tests/host/services/leak_check.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class RealModuleTest : public ::testing::Test {
 protected:
  LeakCheck leaks;
  CollectingSink sink;
  Host host{{.messages = &sink,
             .services = {[](HostTables& t) { InstallChannelLinks(t.channel, t.stream); }}}};
  Module module = Module::Load(host, SORVANIX_MODULE_PATH).value();
  const ShaderCatalogue catalogue =
      ShaderCatalogue::Load(module.Path().parent_path() / "Resources/shaders.json").value();
};

TEST_F(RealModuleTest, EveryShaderOfTheCatalogueIsRegisteredUnderItsTitle) {
  for (const ShaderDescription& shader : catalogue.Shaders()) {
    const RegisteredShader* registered = module.Shaders().Find(shader.id);
    ASSERT_NE(registered, nullptr) << shader.name;
    EXPECT_EQ(registered->name, shader.title);
  }
}

TEST_F(RealModuleTest, EveryParameterAnswersWithItsDefaultAndItsTypeWord) {
  for (const ShaderDescription& description : catalogue.Shaders()) {
    Shader shader = module.Create(description.id, ChannelColour).value();
    const Container values = shader.Parameters();
    const Container types = shader.ParameterTypes();
    for (const ShaderParameter& parameter : description.parameters) {
      if (parameter.type == ParameterType::Ramp)
        continue;  // many keys: see the gate of the catalogue
      SCOPED_TRACE(description.name + " " + parameter.name);
      EXPECT_NE(values.Find(parameter.key), nullptr);
      EXPECT_EQ(types.GetInt(parameter.key), parameter.describe);
      if (const float* real = std::get_if<float>(&parameter.initial)) {
        EXPECT_EQ(values.GetFloat(parameter.key), *real);
      }
      if (const auto* integer = std::get_if<std::int32_t>(&parameter.initial)) {
        EXPECT_EQ(values.GetInt(parameter.key), *integer);
      }
    }
  }
}

TEST_F(RealModuleTest, EveryShaderComesBackFromItsJson) {
  for (const auto& registered : module.Shaders().All()) {
    SCOPED_TRACE(registered->name);
    const Shader written = module.Create(registered->id, ChannelColour).value();
    Stream stream;
    written.Write(stream);
    const std::string text = WriteJson(StreamToJson(stream.Values()));

    Stream again(StreamFromJson(*ParseJson(text)).value());
    Shader read = module.Create(registered->id, ChannelColour).value();
    EXPECT_TRUE(read.Read(again));
    // Fusion writes six longs, `nested` and a bool at the end that its Read leaves there.
    EXPECT_EQ(again.Values().size() - again.Position(), registered->id == PluginIdFusion ? 8u : 0u);
    EXPECT_TRUE(read.Equals(written));
  }
}

// The folder beside a module goes to it as text and comes back as the place of its resources.
TEST(RealModule, ItsFolderMayHaveANameOfSpacesAndLettersOfAnyLanguage) {
  const LeakCheck leaks;
  const TemporaryFolder folder;
  const std::filesystem::path home = folder.Path() / u8"shaders \u00FC \u65E5\u672C" / "sorvaNIX";
  const std::filesystem::path built = SORVANIX_MODULE_PATH;
  std::filesystem::create_directories(home.parent_path());
  std::filesystem::copy(built.parent_path(), home, std::filesystem::copy_options::recursive);

  Host host;
  const auto module = Module::Load(host, home / built.filename());
  ASSERT_TRUE(module.has_value()) << module.error();
  EXPECT_EQ(module->Path(), home / built.filename());
  // The titles stand in Resources/strings.json.
  EXPECT_EQ(module->Shaders().Find(PluginIdGradient)->name, "sorvaNIX Gradient");

  // A new Gradient runs along u from black over red, its knot in the middle, to yellow.
  Shader gradient = module->Create(PluginIdGradient, ChannelColour).value();
  ChannelSample sample = {};
  sample.uvw = {0.5f, 0, 0};
  const Vector colour = gradient.Output(sample);
  EXPECT_EQ(colour.x, 1);
  EXPECT_EQ(colour.y, 0);
  EXPECT_EQ(colour.z, 0);
}

TEST(RealModule, AHostThatIsTooOldToAttachIsRefused) {
  Host host({.version = 6999});
  EXPECT_THAT(Module::Load(host, SORVANIX_MODULE_PATH).error(), HasSubstr("refused to attach"));
}

TEST(RealModule, AHostThatIsTooOldToStartIsToldSo) {
  CollectingSink sink;
  Host host({.version = 7200, .messages = &sink});
  EXPECT_THAT(Module::Load(host, SORVANIX_MODULE_PATH).error(), HasSubstr("did not start"));
  EXPECT_THAT(sink.texts, ElementsAre(HasSubstr("7.201 or higher")));
}

TEST(RealModule, EveryAllocationMayFailFromLoadingToUnloading) {
  const LeakCheck leaks;
  CollectingSink sink;
  Host host({.messages = &sink});
  const int allocations = WithEveryAllocationFailing([&] {
    const auto module = Module::Load(host, SORVANIX_MODULE_PATH);
    if (!module) return;
    for (const auto& registered : module->Shaders().All()) {
      auto shader = module->Create(registered->id, ChannelColour);
      if (shader) shader->SetParameters(shader->Parameters());
    }
  });
  // At least: path, filename, folder, the folder's holder and copy, resources, a name, the fractal
  // weights, a parameter block.
  EXPECT_GE(allocations, 9);
}

TEST(RealModule, AThousandLivesLeaveNothingBehind) {
  const LeakCheck leaks;
  Host host;
  for (int life = 0; life < 1000; ++life) {
    const auto module = Module::Load(host, SORVANIX_MODULE_PATH);
    ASSERT_TRUE(module.has_value()) << module.error();
  }
}

}  // namespace
}  // namespace sorvanix::host
