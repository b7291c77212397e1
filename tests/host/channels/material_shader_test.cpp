// Materials with the real module behind them.
#include "host/channels/material_shader.h"

#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include "host/bake/flat_bake.h"
#include "host/channels/material_file.h"
#include "tests/host/module/loaded.h"

namespace sorvanix::host {
namespace {

class MaterialShaders : public test::RealModuleTest {
 protected:
  Shader Make(std::string_view text) {
    const auto material = ReadMaterial(text, catalogue).material;
    return MakeShader(module, material.value(), ChannelColour).value();
  }
  Container ParametersOf(const MaterialNode& node) {
    auto shader = MakeShader(module, node, ChannelColour);
    EXPECT_TRUE(shader) << shader.error();
    return shader ? shader->Parameters() : Container();
  }
  Image Bake(std::string_view text, int side, int threads) {
    Shader shader = Make(text);
    return BakeFlat([&shader](ChannelSample& sample) { return shader.Output(sample); },
                    {.width = side, .height = side}, {.threads = threads})
        .value();
  }
};

TEST_F(MaterialShaders, TheShaderAnswersWithTheParametersThatItWasGiven) {
  Shader shader = Make(R"({"shader": "2D Noise", "noiseType": "CellEdgeType", "octaves": 2.5,
                           "absolute": true, "colorHigh": [0.25, 0.5, 0.75]})");
  const Container parameters = shader.Parameters();
  EXPECT_EQ(parameters.GetInt(1000), 28);
  EXPECT_EQ(parameters.GetFloat(1001), 2.5f);
  EXPECT_EQ(parameters.GetBool(1014), true);
  EXPECT_EQ(parameters.GetVector(1013).y, 0.5f);
}

TEST_F(MaterialShaders, WhatIsNotGivenKeepsItsDefault) {
  Shader given = Make(R"({"shader": "2D Noise", "octaves": 3})");
  Container expected = Make(R"({"shader": "2D Noise"})").Parameters();
  expected.Set(1001, 3.0f);
  EXPECT_EQ(given.Parameters(), expected);
}

TEST_F(MaterialShaders, EveryDefaultOfTheCatalogueIsThatOfTheShader) {
  for (const ShaderDescription& description : catalogue.Shaders()) {
    MaterialNode node = {&description, {}, {}};
    const Container fresh = ParametersOf(node);
    for (const ShaderParameter& parameter : description.parameters) {
      node.values.push_back({&parameter, parameter.initial});
    }
    EXPECT_EQ(ParametersOf(node), fresh) << description.name;
  }
}

// With one colour at both ends, the mix is that colour whatever the noise is.
TEST_F(MaterialShaders, APictureOfOneColourIsThatColour) {
  const Image image = Bake(R"({"shader": "2D Noise", "colorLow": [0.25, 0.5, 1],
                               "colorHigh": [0.25, 0.5, 1]})",
                           32, 2);
  for (std::size_t i = 0; i < image.rgb.size(); i += 3) {
    ASSERT_EQ(image.rgb[i], 0.25f);
    ASSERT_EQ(image.rgb[i + 1], 0.5f);
    ASSERT_EQ(image.rgb[i + 2], 1.0f);
  }
}

// All but the one that draws a random number for each sample.
TEST_F(MaterialShaders, EveryNoiseBakesTheSameOnOneThreadAndOnEight) {
  const ShaderDescription* shader = catalogue.Find("2D Noise");
  const ShaderParameter* type = shader->FindParameter("noiseType");
  int random = 0;
  for (const ParameterChoice& choice : type->choices) {
    if (DrawsRandomNumbers({shader, {{type, choice.value}}, {}})) {
      ++random;
      continue;
    }
    const std::string text = R"({"shader": "2D Noise", "noiseType": ")" + choice.name + "\"}";
    EXPECT_TRUE(Bake(text, 130, 1).rgb == Bake(text, 130, 8).rgb) << choice.name;
  }
  EXPECT_EQ(random, 1);
}

TEST_F(MaterialShaders, AShaderWithoutParametersBakesToo) {
  EXPECT_EQ(Bake(R"({"shader": "Buffy"})", 4, 1).rgb.size(), 48u);
}

}  // namespace
}  // namespace sorvanix::host
