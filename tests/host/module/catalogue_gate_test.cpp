// Walks every shader that the module registers: what shaders.json says must be what the shader
// does.
#include <set>

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
      EXPECT_EQ(types.GetInt(parameter.key), parameter.describe)
          << description.name << " " << parameter.name;
    }
  }
}

// The container's type of a value, by the catalogue's word for it.
bool HasType(const ContainerValue& value, ParameterType type) {
  switch (type) {
    case ParameterType::Integer:
      return std::holds_alternative<Word>(value);
    case ParameterType::Real:
      return std::holds_alternative<float>(value);
    case ParameterType::Bool:
      return std::holds_alternative<bool>(value);
    case ParameterType::Vector:
      return std::holds_alternative<Vector>(value);
    case ParameterType::Text:
      return std::holds_alternative<Text>(value);
  }
  return false;
}

bool HoldsDefault(const ContainerValue& value, const ParameterValue& initial) {
  if (const auto* integer = std::get_if<std::int32_t>(&initial)) {
    return std::get<Word>(value) == *integer;
  }
  if (const auto* real = std::get_if<float>(&initial)) return std::get<float>(value) == *real;
  if (const auto* truth = std::get_if<bool>(&initial)) return std::get<bool>(value) == *truth;
  if (const auto* vector = std::get_if<Vector>(&initial)) {
    const Vector& held = std::get<Vector>(value);
    return held.x == vector->x && held.y == vector->y && held.z == vector->z;
  }
  return true;
}

TEST_F(CatalogueGate, EveryParameterHasItsTypeAndDefaultInANewShader) {
  for (const ShaderDescription& description : catalogue.Shaders()) {
    Shader shader = module.Create(description.id, ChannelColour).value();
    const Container parameters = shader.Parameters();
    for (const ShaderParameter& parameter : description.parameters) {
      const ContainerValue* value = parameters.Find(parameter.key);
      ASSERT_NE(value, nullptr) << description.name << " " << parameter.name;
      ASSERT_TRUE(HasType(*value, parameter.type)) << description.name << " " << parameter.name;
      EXPECT_TRUE(HoldsDefault(*value, parameter.initial))
          << description.name << " " << parameter.name;
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
