#include "host/services/shader_catalogue.h"

#include <gtest/gtest.h>

#include "host/services/filenames.h"
#include "host/services/json.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

constexpr std::string_view kCatalogue = R"({
  "format": "sorvanix-shaders",
  "version": 1,
  "shaders": [
    {
      "id": 1001231, "name": "2D Noise", "title": "sorvaNIX 2D Noise",
      "category": "generator", "summary": "Thirty kinds of noise.",
      "inputs": [],
      "parameters": [
        { "key": 1000, "name": "noiseType", "label": "Type", "help": "The recipe.", "type": "int",
          "default": 12, "describe": 1, "minimum": 0, "maximum": 29, "step": 1,
          "choices": [ { "value": 0, "name": "AxisWarpType", "label": "Axis Warp" },
                       { "value": 12, "name": "CellEdgeType", "label": "Cell Edge" } ] },
        { "key": 1001, "name": "scale", "label": "Scale", "type": "float", "default": 2,
          "unit": "percent", "describe": 2, "minimum": 0.5 }
      ]
    },
    {
      "id": 1001216, "name": "Colorizer", "title": "sorvaNIX Colorizer", "category": "filter",
      "summary": "Colours by a ramp.",
      "inputs": [ { "key": 1010, "name": "input", "label": "Input" } ],
      "parameters": [
        { "key": 1, "name": "colour", "label": "Colour", "type": "vector",
          "default": [1, 0.5, 0], "describe": 2 },
        { "key": 2, "name": "invert", "label": "Invert", "type": "bool", "default": true,
          "describe": 1 },
        { "key": 3, "name": "target", "label": "Target", "type": "string", "default": "",
          "describe": 1 }
      ]
    }
  ]
})";

// The catalogue with its first `from` replaced by `to`, and what is wrong with that: the error
// behind line and column.
std::string ErrorWith(std::string_view from, std::string_view to) {
  std::string text(kCatalogue);
  const std::size_t at = text.find(from);
  if (at == text.npos) return "the test replaces what is not there";
  const auto catalogue = ShaderCatalogue::Parse(text.replace(at, from.size(), to));
  if (catalogue) return "no error";
  return catalogue.error().substr(catalogue.error().find(": ") + 2);
}

TEST(ShaderCatalogue, EveryShaderIsFoundByIdAndName) {
  const auto catalogue = ShaderCatalogue::Parse(kCatalogue);
  ASSERT_TRUE(catalogue.has_value()) << catalogue.error();
  ASSERT_EQ(catalogue->Shaders().size(), 2u);
  EXPECT_EQ(catalogue->Find(1001231), &catalogue->Shaders()[0]);
  EXPECT_EQ(catalogue->Find("Colorizer"), &catalogue->Shaders()[1]);
  EXPECT_EQ(catalogue->Find(5), nullptr);
  EXPECT_EQ(catalogue->Find("colorizer"), nullptr);
}

TEST(ShaderCatalogue, AShaderTellsAllThatTheFileSays) {
  const auto catalogue = ShaderCatalogue::Parse(kCatalogue);
  const ShaderDescription& noise = *catalogue->Find("2D Noise");
  EXPECT_EQ(noise.id, 1001231);
  EXPECT_EQ(noise.title, "sorvaNIX 2D Noise");
  EXPECT_EQ(noise.category, "generator");
  EXPECT_EQ(noise.summary, "Thirty kinds of noise.");
  EXPECT_TRUE(noise.inputs.empty());
  EXPECT_EQ(noise.parameters.size(), 2u);

  const ShaderDescription& colorizer = *catalogue->Find("Colorizer");
  ASSERT_NE(colorizer.FindInput("input"), nullptr);
  EXPECT_EQ(colorizer.FindInput("input")->key, 1010);
  EXPECT_EQ(colorizer.FindInput("mask"), nullptr);
}

TEST(ShaderCatalogue, AParameterTellsAllThatTheFileSays) {
  const auto catalogue = ShaderCatalogue::Parse(kCatalogue);
  const ShaderParameter& type = *catalogue->Find("2D Noise")->FindParameter("noiseType");
  EXPECT_EQ(type.key, 1000);
  EXPECT_EQ(type.label, "Type");
  EXPECT_EQ(type.help, "The recipe.");
  EXPECT_EQ(type.type, ParameterType::Integer);
  EXPECT_EQ(std::get<std::int32_t>(type.initial), 12);
  EXPECT_EQ(type.minimum, 0.0);
  EXPECT_EQ(type.maximum, 29.0);
  EXPECT_EQ(type.step, 1.0);
  EXPECT_EQ(type.describe, 1);
  ASSERT_NE(type.FindChoice("CellEdgeType"), nullptr);
  EXPECT_EQ(type.FindChoice("CellEdgeType")->value, 12);
  EXPECT_EQ(type.FindChoice("CellEdgeType")->label, "Cell Edge");
  EXPECT_EQ(type.FindChoice("Cell Edge"), nullptr);

  const ShaderParameter& scale = *catalogue->Find("2D Noise")->FindParameter(1001);
  EXPECT_EQ(scale.unit, "percent");
  EXPECT_EQ(scale.minimum, 0.5);
  EXPECT_EQ(scale.maximum, std::nullopt);
  EXPECT_EQ(scale.step, std::nullopt);
}

TEST(ShaderCatalogue, ADefaultHasTheTypeOfItsParameter) {
  const auto catalogue = ShaderCatalogue::Parse(kCatalogue);
  // Written without a fraction, and a real number all the same.
  EXPECT_EQ(std::get<float>(catalogue->Find("2D Noise")->FindParameter("scale")->initial), 2.0f);
  const ShaderDescription& colorizer = *catalogue->Find("Colorizer");
  EXPECT_EQ(std::get<Vector>(colorizer.FindParameter("colour")->initial).y, 0.5f);
  EXPECT_TRUE(std::get<bool>(colorizer.FindParameter("invert")->initial));
  EXPECT_EQ(std::get<std::string>(colorizer.FindParameter("target")->initial), "");
}

TEST(ShaderCatalogue, AnEntryIsThereAsJson) {
  const auto catalogue = ShaderCatalogue::Parse(kCatalogue);
  const auto entry = ParseJson(catalogue->Find("Colorizer")->json);
  ASSERT_TRUE(entry.has_value());
  EXPECT_EQ(std::get<std::string>(entry->Find("name")->value), "Colorizer");
  EXPECT_EQ(std::get<Json::Array>(entry->Find("parameters")->value).size(), 3u);
}

TEST(ShaderCatalogue, ABrokenTextIsAnErrorWithItsPlace) {
  EXPECT_EQ(ShaderCatalogue::Parse("{\n  ]").error().substr(0, 5), "2:3: ");
  EXPECT_EQ(ShaderCatalogue::Parse("[]").error(), "1:1: expected an object");
}

// The 5 is the 13th character of the second line.
TEST(ShaderCatalogue, AnErrorBeginsWithLineAndColumn) {
  EXPECT_EQ(ShaderCatalogue::Parse(R"({"format": "sorvanix-shaders", "version": 1,
 "shaders": 5})")
                .error(),
            "2:13: /shaders: expected an array");
}

TEST(ShaderCatalogue, AnotherFormatOrVersionIsRefused) {
  EXPECT_EQ(ErrorWith("sorvanix-shaders", "sorvanix-scene"), "this is no sorvanix-shaders file");
  EXPECT_EQ(ErrorWith("\"version\": 1", "\"version\": 2"), "unknown version 2");
}

TEST(ShaderCatalogue, AnUnknownNameIsAnError) {
  EXPECT_EQ(ErrorWith("\"unit\"", "\"units\""),
            "/shaders/0/parameters/1/units: this name is unknown");
}

TEST(ShaderCatalogue, AMissingNameIsAnError) {
  EXPECT_EQ(ErrorWith("\"label\": \"Input\"", "\"key2\": 0"),
            "/shaders/1/inputs/0/key2: this name is unknown");
  EXPECT_EQ(ErrorWith(", \"label\": \"Input\"", ""), "/shaders/1/inputs/0: \"label\" is missing");
}

TEST(ShaderCatalogue, AWrongTypeIsAnError) {
  EXPECT_EQ(ErrorWith("\"id\": 1001231", "\"id\": 1.5"), "/shaders/0/id: expected an integer");
  EXPECT_EQ(ErrorWith("\"name\": \"input\"", "\"name\": 5"),
            "/shaders/1/inputs/0/name: expected a text");
  EXPECT_EQ(ErrorWith("\"inputs\": []", "\"inputs\": {}"), "/shaders/0/inputs: expected an array");
  EXPECT_EQ(ErrorWith("\"minimum\": 0,", "\"minimum\": \"0\","),
            "/shaders/0/parameters/0/minimum: expected a number");
  EXPECT_EQ(ErrorWith("\"type\": \"int\"", "\"type\": \"double\""),
            "/shaders/0/parameters/0/type: expected int, float, bool, vector, string or ramp");
}

TEST(ShaderCatalogue, ADefaultOfAnotherTypeIsAnError) {
  EXPECT_EQ(ErrorWith("\"default\": 12", "\"default\": true"),
            "/shaders/0/parameters/0/default: expected an integer");
  EXPECT_EQ(ErrorWith("\"default\": 2", "\"default\": [2]"),
            "/shaders/0/parameters/1/default: expected a number");
  EXPECT_EQ(ErrorWith("[1, 0.5, 0]", "[1, 0.5]"),
            "/shaders/1/parameters/0/default: expected three numbers");
  EXPECT_EQ(ErrorWith("\"default\": true", "\"default\": 1"),
            "/shaders/1/parameters/1/default: expected true or false");
  EXPECT_EQ(ErrorWith("\"default\": \"\"", "\"default\": 0"),
            "/shaders/1/parameters/2/default: expected a text");
}

TEST(ShaderCatalogue, WhatMustDifferDiffers) {
  EXPECT_EQ(ErrorWith("1001216", "1001231"), "id 1001231 stands here twice");
  EXPECT_EQ(ErrorWith("\"name\": \"Colorizer\"", "\"name\": \"2D Noise\""),
            "name 2D Noise stands here twice");
  EXPECT_EQ(ErrorWith("\"key\": 1001", "\"key\": 1000"), "/shaders/0: key 1000 stands here twice");
  EXPECT_EQ(ErrorWith("\"name\": \"scale\"", "\"name\": \"noiseType\""),
            "/shaders/0: name noiseType stands here twice");
  EXPECT_EQ(ErrorWith("\"value\": 12", "\"value\": 0"),
            "/shaders/0/parameters/0: value 0 stands here twice");
}

TEST(ShaderCatalogue, AFileIsReadAndNamedInItsErrors) {
  const TemporaryFolder folder;
  EXPECT_EQ(ShaderCatalogue::Load(folder.Write("shaders.json", kCatalogue))->Shaders().size(), 2u);
  const auto broken = folder.Write("broken.json", "[]");
  EXPECT_EQ(ShaderCatalogue::Load(broken).error(),
            Utf8FromPath(broken) + ":1:1: expected an object");
  const auto missing = folder.Path() / "missing.json";
  EXPECT_EQ(ShaderCatalogue::Load(missing).error(), Utf8FromPath(missing) + ": cannot be read");
}

}  // namespace
}  // namespace sorvanix::host
