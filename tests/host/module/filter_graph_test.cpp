// Graphs of the real filters through the host's links: colours, exchange, documents, depth, short
// memory.
#include <gtest/gtest.h>

#include "host/channels/material_file.h"
#include "host/channels/material_shader.h"
#include "host/services/stream_json.h"
#include "tests/host/module/loaded.h"
#include "tests/host/services/leak_check.h"

namespace sorvanix::host::test {
namespace {

// A noise between two equal colours is that colour everywhere.
std::string Plain(const std::string& colour) {
  return R"({"shader": "2D Noise", "colorLow": )" + colour + R"(, "colorHigh": )" + colour + "}";
}

// Every shader with inputs, several deep, and each kind of parameter.
const std::string kGraph = R"({
  "shader": "Fusion", "mode": "screen", "opacity": 0.5, "useMask": true,
  "baseInput": {"shader": "Hue", "hueShift": 30,
    "input": {"shader": "Posterizer", "levels": 4, "input": {"shader": "2D Noise", "scale": 2}}},
  "blendInput": {"shader": "Distorter", "warpType": "centred", "tile": false,
    "input": {"shader": "Colorizer", "interpolation": "linear",
      "ramp": [{"position": 0, "colour": "#102030"}, {"position": 0.3, "colour": [1, 0, 0]},
               {"position": 0.9, "colour": [0, 1, 0], "bias": 0.25}, {"position": 1, "colour": [0, 0, 1]}],
      "input": {"shader": "2D Noise", "noiseType": "CellEdgeType"}},
    "distortInput": {"shader": "2D Noise", "octaves": 2}},
  "maskInput": {"shader": "Bright/Contrast", "contrast": 0.2, "input": {"shader": "2D Noise"}}})";

class FilterGraphs : public RealModuleTest {
 protected:
  MaterialNode Read(const std::string& text) {
    const MaterialReading reading = ReadMaterial(text, catalogue);
    for (const MaterialProblem& problem : reading.problems) {
      ADD_FAILURE() << Describe("material.json", problem);
    }
    return reading.material.value();
  }
  Shader Make(const std::string& text) {
    return MakeShader(module, Read(text), ChannelColour).value();
  }
  // The same before its first render, which marks inner shaders as nested: a part of Compare.
  Shader MakeUnprepared(const std::string& text) {
    const MaterialNode material = Read(text);
    Shader shader = module.Create(material.shader->id, ChannelColour).value();
    shader.SetParameters(ContainerOf(material));
    return shader;
  }
  static Vector ColourOf(Shader& shader, float u = 0.3f, float v = 0.6f) {
    ChannelSample sample = {};
    sample.uvw = {u, v, 0};
    return shader.Output(sample);
  }
  static void ExpectSamePicture(Shader& first, Shader& second) {
    for (int i = 0; i < 100; ++i) {
      const float u = static_cast<float>(i % 10) / 10, v = static_cast<float>(i) / 100;
      const Vector a = ColourOf(first, u, v), b = ColourOf(second, u, v);
      ASSERT_TRUE(a.x == b.x && a.y == b.y && a.z == b.z) << u << ' ' << v;
    }
  }
};

TEST_F(FilterGraphs, AColorizerShowsItsRampAtTheMeanOfItsInput) {
  // The mean of (0, 0.25, 0.5) is 0.25: a quarter of the way from the first colour to the second.
  Shader shader = Make(R"({"shader": "Colorizer", "interpolation": "linear", "source": "mean",
      "ramp": [{"position": 0, "colour": [0, 1, 0.5]}, {"position": 1, "colour": [1, 0, 0.5]}],
      "input": )" + Plain("[0, 0.25, 0.5]") +
                       "}");
  const Vector colour = ColourOf(shader);
  EXPECT_NEAR(colour.x, 0.25, 1e-6);
  EXPECT_NEAR(colour.y, 0.75, 1e-6);
  EXPECT_NEAR(colour.z, 0.5, 1e-6);
}

TEST_F(FilterGraphs, FusionOfThreeMixesByItsMask) {
  // Mode normal at full opacity is base + mask * (blend - base), with a mask of 0.25.
  Shader shader = Make(R"({"shader": "Fusion", "mode": "normal", "useMask": true, "baseInput": )" +
                       Plain("[1, 0, 0.5]") + R"(, "blendInput": )" + Plain("[0, 1, 0.5]") +
                       R"(, "maskInput": )" + Plain("[0.25, 0.25, 0.25]") + "}");
  const Vector colour = ColourOf(shader);
  EXPECT_NEAR(colour.x, 0.75, 1e-6);
  EXPECT_NEAR(colour.y, 0.25, 1e-6);
  EXPECT_NEAR(colour.z, 0.5, 1e-6);
}

TEST_F(FilterGraphs, ADirectDistorterReadsItsInputAFifthOfTheMeanAway) {
  // Without a surface the move is the mean of the colour times 0.2, along u and v alike.
  Shader distorter = Make(R"({"shader": "Distorter", "warpType": "direct", "tile": false,
      "input": {"shader": "2D Noise"}, "distortInput": )" +
                          Plain("[0.5, 0.5, 0.5]") + "}");
  Shader noise = Make(R"({"shader": "2D Noise"})");
  const Vector moved = ColourOf(distorter, 0.25f, 0.5f);
  const Vector there = ColourOf(noise, 0.25f + 0.1f, 0.5f + 0.1f);
  EXPECT_NEAR(moved.x, there.x, 1e-4);
}

TEST_F(FilterGraphs, AFilterWithoutAnInputIsBlack) {
  Shader shader = Make(R"({"shader": "Hue"})");
  const Vector colour = ColourOf(shader);
  EXPECT_EQ(colour.x + colour.y + colour.z, 0);
}

TEST_F(FilterGraphs, AGraphDescribesItselfToAnEqualOne) {
  const LeakCheck leaks;
  Shader first = MakeUnprepared(kGraph);
  Shader second = module.Create(first.PluginId(), ChannelColour).value();
  EXPECT_FALSE(second.Equals(first));
  second.SetParameters(first.Parameters());
  EXPECT_TRUE(second.Equals(first));
  ExpectSamePicture(first, second);
}

TEST_F(FilterGraphs, ACopyOfAGraphIsEqualAndStandsAlone) {
  const LeakCheck leaks;
  Shader copy = module.Create(PluginIdFusion, ChannelColour).value();
  Shader fresh = Make(kGraph);
  {
    Shader original = MakeUnprepared(kGraph);
    EXPECT_TRUE(copy.CopyFrom(original));
    EXPECT_TRUE(copy.Equals(original));
  }
  ExpectSamePicture(copy, fresh);
}

TEST_F(FilterGraphs, AGraphInADocumentComesBackAsItWas) {
  const LeakCheck leaks;
  Shader original = MakeUnprepared(kGraph);
  Stream written;
  ASSERT_TRUE(original.Write(written));
  const std::string text = WriteJson(StreamToJson(written.Values()));
  Stream read(StreamFromJson(ParseJson(text).value()).value());
  Shader again = module.Create(PluginIdFusion, ChannelColour).value();
  EXPECT_TRUE(again.Read(read));
  EXPECT_TRUE(again.Equals(original));
  ExpectSamePicture(original, again);
}

TEST_F(FilterGraphs, TheSpellingOfAGraphMakesTheSamePicture) {
  Shader first = Make(kGraph);
  Shader second = Make(WriteJson(JsonOf(Read(kGraph))));
  EXPECT_TRUE(second.Equals(first));
  ExpectSamePicture(first, second);
}

TEST_F(FilterGraphs, TheDeepestGraphIsSampledToItsEnd) {
  const LeakCheck leaks;
  // Colours pass a neutral Posterizer of 255 levels without softness but for its rounding; here
  // they are its own levels, 0 and 1.
  std::string text = Plain("[1, 0, 1]");
  for (int i = 0; i < kDeepestGraph; ++i) {
    text = R"({"shader": "Posterizer", "levels": 255, "softness": 0, "input": )" + text + "}";
  }
  Shader shader = Make(text);
  const Vector colour = ColourOf(shader);
  EXPECT_NEAR(colour.x, 1, 1e-6);
  EXPECT_NEAR(colour.y, 0, 1e-6);
}

TEST_F(FilterGraphs, AShortMemoryLeavesPartOfAGraphButNothingBroken) {
  const LeakCheck leaks;
  Container graph = ContainerOf(Read(kGraph));
  const int allocations = WithEveryAllocationFailing([&] {
    auto shader = module.Create(PluginIdFusion, ChannelColour);
    if (!shader) return;
    module.Shaders()
        .Find(PluginIdFusion)
        ->record.Message(&shader->Instance(), MessageSetParameters, graph.Handle());
    ColourOf(*shader);
  });
  EXPECT_GT(allocations, 20);  // ten shaders' blocks and ten links at least
}

TEST_F(FilterGraphs, AShortMemoryMakesAWholeMaterialOrNone) {
  const LeakCheck leaks;
  const MaterialNode material = Read(kGraph);
  Shader whole = Make(kGraph);
  int made = 0;
  WithEveryAllocationFailing([&] {
    try {
      auto shader = MakeShader(module, material, ChannelColour);
      if (!shader) return;
      ++made;
      ExpectSamePicture(*shader, whole);
    } catch (const std::bad_alloc&) {  // in the host's own containers: the program tells it
    }
  });
  EXPECT_GE(made, 1) << "at the latest when no allocation fails";
}

}  // namespace
}  // namespace sorvanix::host::test
