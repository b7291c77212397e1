// Walks every shader that the module registers: what shaders.json says must be what the shader
// does.
#include <set>

#include "host/channels/material.h"
#include "tests/host/module/loaded.h"

namespace sorvanix::host::test {
namespace {

using CatalogueGate = RealModuleTest;

TEST_F(CatalogueGate, ListsExactlyTheRegisteredShaders) {
  std::set<std::int32_t> listed, registered;
  for (const ShaderDescription& shader : catalogue.Shaders()) listed.insert(shader.id);
  for (const auto& shader : module.Shaders().All()) registered.insert(shader->id);
  EXPECT_EQ(listed, registered);
  EXPECT_FALSE(registered.empty());
}

TEST_F(CatalogueGate, TitlesAreTheRegisteredNames) {
  for (const auto& shader : module.Shaders().All()) {
    EXPECT_EQ(catalogue.Find(shader->id)->title, shader->name);
  }
}

TEST_F(CatalogueGate, EveryKeyAnswersTheDescribedType) {
  for (const ShaderDescription& description : catalogue.Shaders()) {
    Shader shader = module.Create(description.id, ChannelColour).value();
    const Container types = shader.ParameterTypes();
    for (const ShaderParameter& parameter : description.parameters) {
      if (parameter.type == ParameterType::Ramp) continue;  // has many keys, all of known types
      EXPECT_EQ(types.GetInt(parameter.key), parameter.describe)
          << description.name << " " << parameter.name;
    }
  }
}

// A render with such a shader runs on one thread, so that it repeats.
TEST_F(CatalogueGate, OnlyWhiteNoiseDrawsRandomNumbers) {
  for (const ShaderDescription& description : catalogue.Shaders()) {
    for (const ShaderParameter& parameter : description.parameters) {
      for (const ParameterChoice& choice : parameter.choices) {
        EXPECT_EQ(choice.random, choice.name == "WhiteRandomType")
            << description.name << " " << choice.name;
      }
    }
  }
}

TEST_F(CatalogueGate, EveryParameterHasItsTypeAndDefaultInANewShader) {
  for (const ShaderDescription& description : catalogue.Shaders()) {
    Shader shader = module.Create(description.id, ChannelColour).value();
    const Container parameters = shader.Parameters();
    for (const ShaderParameter& parameter : description.parameters) {
      MaterialNode defaults;
      defaults.values = {{&parameter, parameter.initial}};
      for (const auto& [key, value] : ContainerOf(defaults)) {
        Container expected, held;
        expected.Set(key, value);
        ASSERT_NE(parameters.Find(key), nullptr) << description.name << " " << parameter.name;
        held.Set(key, *parameters.Find(key));
        EXPECT_EQ(held, expected) << description.name << " " << parameter.name << " " << key;
      }
    }
  }
}

TEST_F(CatalogueGate, EveryInputIsEmptyInANewShaderAndTakesAnother) {
  for (const ShaderDescription& description : catalogue.Shaders()) {
    for (const ShaderInput& input : description.inputs) {
      Shader shader = module.Create(description.id, ChannelColour).value();
      const Container fresh = shader.Parameters();
      ASSERT_NE(fresh.GetContainer(input.key), nullptr) << description.name << " " << input.name;
      EXPECT_EQ(fresh.GetContainer(input.key)->Find(KeyLinkPluginId), nullptr);

      MaterialNode inner, outer;
      inner.shader = catalogue.Find(PluginIdNoise2D);
      outer.inputs.push_back({&input, inner});
      shader.SetParameters(ContainerOf(outer));
      const Container fed = shader.Parameters();
      EXPECT_EQ(fed.GetContainer(input.key)->GetInt(KeyLinkPluginId), PluginIdNoise2D);
    }
  }
}

TEST_F(CatalogueGate, EveryParameterIsExplainedInWords) {
  for (const ShaderDescription& description : catalogue.Shaders()) {
    EXPECT_FALSE(description.summary.empty()) << description.name;
    for (const ShaderParameter& parameter : description.parameters) {
      EXPECT_FALSE(parameter.label.empty()) << description.name << " " << parameter.name;
      EXPECT_FALSE(parameter.help.empty()) << description.name << " " << parameter.name;
    }
  }
}

}  // namespace
}  // namespace sorvanix::host::test
