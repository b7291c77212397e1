// Material graphs: inputs by object, by another material file, by a bitmap; and what must be
// refused, with the place that is told.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include "host/channels/channel_link.h"
#include "host/channels/material_file.h"
#include "host/services/filenames.h"
#include "tests/host/channels/fake_shaders.h"
#include "tests/host/services/leak_check.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

class MaterialGraphs : public ::testing::Test {
 protected:
  MaterialReading Read(const std::string& file) const {
    const auto path = folder_.Path() / file;
    return ReadMaterial(ReadMaterialText(path).value(), fake::Catalogue(),
                        {.file = path, .imageFolders = imageFolders_});
  }
  MaterialReading ReadText(std::string_view text) const {
    folder_.Write("material.json", text);
    return Read("material.json");
  }
  // The errors as people see them, with the folder's own name left out.
  std::vector<std::string> ErrorsOf(const MaterialReading& reading) const {
    EXPECT_FALSE(reading.material.has_value());
    std::vector<std::string> errors;
    const std::string prefix = folder_.Path().string() + '/';
    for (const MaterialProblem& problem : reading.Errors()) {
      std::string error = Describe(folder_.Path() / "material.json", problem);
      for (auto at = error.find(prefix); at != error.npos; at = error.find(prefix)) {
        error.erase(at, prefix.size());
      }
      errors.push_back(error);
    }
    return errors;
  }
  // What the graph answers at (0, 0).
  Vector ColourOf(const MaterialReading& reading) const {
    Shader shader = host_.Create(reading.material.value().shader->id);
    shader.SetParameters(ContainerOf(*reading.material));
    ChannelSample sample = {};
    return shader.Output(sample);
  }
  static std::string SpellingOf(const MaterialReading& reading) {
    return WriteJson(JsonOf(reading.material.value()), -1);
  }
  // So many Scales before a Probe.
  static std::string Nested(int scales) {
    std::string text;
    for (int i = 0; i < scales; ++i) text += R"({"shader":"Scale","factor":1,"input":)";
    return text + R"({"shader":"Probe"})" + std::string(static_cast<std::size_t>(scales), '}');
  }
  // Files 0.json, 1.json, ..., each of them the input of the one before.
  void WriteFiles(int count) const {
    for (int i = 0; i + 1 < count; ++i) {
      folder_.Write(fmt::format("{}.json", i),
                    fmt::format(R"({{"shader":"Scale","factor":1,"input":"{}.json"}})", i + 1));
    }
    folder_.Write(fmt::format("{}.json", count - 1), R"({"shader":"Probe"})");
  }

  LeakCheck leaks_;
  fake::LinkHost host_;
  TemporaryFolder folder_;
  std::vector<std::filesystem::path> imageFolders_;
};

// ---- Inputs

TEST_F(MaterialGraphs, AnInputIsAShaderOfItsOwn) {
  const auto reading = ReadText(R"({"shader": "Scale", "factor": 2,
      "input": {"shader": "Scale", "factor": 3, "input": {"shader": "Probe", "value": 0.5}}})");
  EXPECT_EQ(ColourOf(reading).x, 3.0f);  // 2 * 3 * 0.5
}

TEST_F(MaterialGraphs, AnInputMayBeEmpty) {
  EXPECT_EQ(ColourOf(ReadText(R"({"shader": "Scale", "input": null})")).x, 0);
  EXPECT_EQ(ColourOf(ReadText(R"({"shader": "Scale"})")).x, 0);
}

TEST_F(MaterialGraphs, AnInputMayBeAnotherMaterialFileBesideTheFileThatNamesIt) {
  folder_.Write("parts/half.json", R"({"$schema": "s", "shader": "Scale", "factor": 0.5,
                                       "input": "deeper/probe.JSON"})");
  folder_.Write("parts/deeper/probe.JSON", R"({"shader": "Probe", "value": 3})");
  const auto reading = ReadText(R"({"shader": "Scale", "factor": 2, "input": "parts/half.json"})");
  EXPECT_EQ(ColourOf(reading).x, 3.0f);  // 2 * 0.5 * 3
}

TEST_F(MaterialGraphs, TheSpellingOfAGraphStandsByItself) {
  folder_.Write("parts/half.json", R"({"shader": "Scale", "input": "wood.png"})");
  folder_.Write("parts/wood.png", "");
  const auto reading = ReadText(R"({"shader": "Scale", "input": "parts/half.json"})");
  const std::string spelling =
      R"({"shader":"Scale","input":{"shader":"Scale","input":"parts/wood.png"}})";
  EXPECT_EQ(SpellingOf(reading), spelling);
  EXPECT_EQ(SpellingOf(ReadText(spelling)), spelling);
}

TEST_F(MaterialGraphs, AnInputMayBeABitmap) {
  folder_.Write("images/\xC3\xBC 1.png", "");
  const auto reading = ReadText("{\"shader\": \"Scale\", \"input\": \"images/\xC3\xBC 1.png\"}");
  EXPECT_EQ(ColourOf(reading).x, 0.375f);  // 0.5 * 0.75, the texture's red
  const Container* link = ContainerOf(*reading.material).GetContainer(fake::kKeyInput);
  ASSERT_NE(link, nullptr);
}

TEST_F(MaterialGraphs, ABitmapIsNamedToItsLinkByItsWholePath) {
  folder_.Write("a.png", "");
  const Container container =
      ContainerOf(ReadText(R"({"shader": "Scale", "input": "a.png"})").material.value());
  const Container* link = container.GetContainer(fake::kKeyInput);
  ASSERT_NE(link, nullptr);
  EXPECT_EQ(link->GetInt(KeyLinkPluginId, -5), 0);
  EXPECT_EQ(link->GetFilename(KeyLinkFilename)->path, (folder_.Path() / "a.png").string());
}

TEST_F(MaterialGraphs, BitmapsAreLookedForBesideTheMaterialThenInTheImageFolders) {
  folder_.Write("first/a.png", "");
  folder_.Write("second/a.png", "");
  folder_.Write("second/b.png", "");
  folder_.Write("b.png", "");
  imageFolders_ = {folder_.Path() / "first", folder_.Path() / "second"};
  const auto fileOf = [this](const char* name) {
    const auto reading = ReadText(fmt::format(R"({{"shader": "Scale", "input": "{}"}})", name));
    EXPECT_EQ(SpellingOf(reading), fmt::format(R"({{"shader":"Scale","input":"{}"}})", name));
    return std::get<MaterialBitmap>(reading.material.value().inputs[0].content).file;
  };
  EXPECT_EQ(fileOf("a.png"), folder_.Path() / "first/a.png");
  EXPECT_EQ(fileOf("b.png"), folder_.Path() / "b.png");
}

TEST_F(MaterialGraphs, OneFileMayFeedSeveralInputsThatAreNotInsideEachOther) {
  folder_.Write("probe.json", R"({"shader": "Probe"})");
  folder_.Write("half.json", R"({"shader": "Scale", "input": "probe.json"})");
  EXPECT_EQ(ColourOf(ReadText(R"({"shader": "Scale", "factor": 1, "input": "half.json"})")).x,
            0.125f);  // 0.5 * 0.25
}

// ---- What is refused

TEST_F(MaterialGraphs, WhatIsNoInputIsAnErrorWithItsPlace) {
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale", "input": 5})")),
              ElementsAre("material.json:1:30: /input: expected a shader, the name of a file, or "
                          "null, found a whole number"));
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale", "input": []})")),
              ElementsAre(EndsWith("found a list")));
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale", "input": {}})")),
              ElementsAre("material.json:1:30: /input: \"shader\" is missing: the name or the id "
                          "of a shader"));
}

TEST_F(MaterialGraphs, ErrorsDeepInAGraphHaveTheirPlace) {
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale",
  "input": {"shader": "Scale",
    "input": {"shader": "Probe", "valu": 1}}})")),
              ElementsAre("material.json:3:42: /input/input/valu: unknown parameter of Probe "
                          "\"valu\"; did you mean \"value\"?"));
}

TEST_F(MaterialGraphs, ErrorsInAnotherFileNameThatFile) {
  folder_.Write("parts/bad.json", "{\"shader\": \"Probe\",\n \"value\": \"x\"}");
  const auto reading = ReadText(R"({"shader": "Scale", "input": "parts/bad.json", "facto": 1})");
  EXPECT_THAT(ErrorsOf(reading),
              ElementsAre(StartsWith("material.json:1:57: /facto: "),
                          "parts/bad.json:2:11: /value: expected a number, found a text"));
}

TEST_F(MaterialGraphs, AnotherFileThatIsNoJsonIsToldWithItsPlace) {
  folder_.Write("bad.json", "{\"shader\":\n");
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale", "input": "bad.json"})")),
              ElementsAre(StartsWith("bad.json:2:1: ")));
}

TEST_F(MaterialGraphs, WarningsInAnotherFileAreTold) {
  folder_.Write("loud.json", R"({"shader": "Probe", "value": 9})");
  const auto reading = ReadText(R"({"shader": "Scale", "input": "loud.json"})");
  ASSERT_TRUE(reading.material.has_value());
  ASSERT_THAT(reading.Warnings(), SizeIs(1));
  EXPECT_EQ(reading.Warnings()[0].file, folder_.Path() / "loud.json");
}

TEST_F(MaterialGraphs, MissingFilesAreErrorsThatTellWhereTheyWereLookedFor) {
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale", "input": "no.json"})")),
              ElementsAre("material.json:1:30: /input: no.json: there is no such file"));
  imageFolders_ = {"elsewhere"};
  const auto errors = ErrorsOf(ReadText(R"({"shader": "Scale", "input": "no.png"})"));
  EXPECT_THAT(errors, ElementsAre(StartsWith("material.json:1:30: /input: there is no bitmap "
                                             "\"no.png\" in ")));
  EXPECT_THAT(errors, ElementsAre(EndsWith(" or elsewhere")));
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale", "input": ""})")), SizeIs(1));
}

TEST_F(MaterialGraphs, ABitmapThatCannotBeOpenedIsAnError) {
  folder_.Write("missing.png", "");  // there, but the loader of the tests refuses the name
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale", "input": "missing.png"})")),
              ElementsAre("material.json:1:30: /input: missing.png: no such file"));
}

TEST_F(MaterialGraphs, ACycleIsRefused) {
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale", "input": "material.json"})")),
              ElementsAre("material.json:1:30: /input: \"material.json\" makes a cycle: it stands "
                          "inside itself"));
  folder_.Write("parts/b.json", R"({"shader": "Scale", "input": "../parts/c.json"})");
  folder_.Write("parts/c.json", R"({"shader": "Scale", "input": "./b.json"})");
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale", "input": "parts/b.json"})")),
              ElementsAre(HasSubstr("c.json:1:30: /input: \"./b.json\" makes a cycle")));
}

TEST_F(MaterialGraphs, ACycleThroughALinkIsRefused) {
  std::filesystem::create_directory_symlink(folder_.Path(), folder_.Path() / "here");
  EXPECT_THAT(ErrorsOf(ReadText(R"({"shader": "Scale", "input": "here/material.json"})")),
              ElementsAre(HasSubstr("makes a cycle")));
}

// ---- Size

TEST_F(MaterialGraphs, AGraphAsDeepAsAllowedIsRead) {
  EXPECT_EQ(ColourOf(ReadText(Nested(kDeepestGraph))).x, 0.25f);
}

TEST_F(MaterialGraphs, ADeeperGraphIsRefusedOnceAtTheFirstShaderThatIsTooDeep) {
  const auto errors = ErrorsOf(ReadText(Nested(kDeepestGraph + 10)));
  EXPECT_THAT(errors, ElementsAre(EndsWith("/input: the graph is too deep: more than 64 shaders "
                                           "stand one behind the other")));
}

TEST_F(MaterialGraphs, AGraphAThousandLevelsDeepIsRefused) {
  EXPECT_THAT(ErrorsOf(ReadText(Nested(1000))),
              ElementsAre(AllOf(StartsWith("material.json:1:"), HasSubstr("deep"))));
}

TEST_F(MaterialGraphs, DepthIsCountedThroughFiles) {
  WriteFiles(kDeepestGraph + 1);
  EXPECT_EQ(ColourOf(Read("0.json")).x, 0.25f);
  WriteFiles(1000);
  EXPECT_THAT(ErrorsOf(Read("0.json")),
              ElementsAre(StartsWith("65.json:1:1: the graph is too deep")));
}

TEST_F(MaterialGraphs, SmallFilesThatDescribeTooManyShadersAreRefused) {
  // Each file names the next one twice: 2^40 shaders in forty files.
  const ShaderCatalogue twoInputs = ShaderCatalogue::Parse(R"({
    "format": "sorvanix-shaders", "version": 1, "shaders": [
      { "id": 1, "name": "Two", "title": "Two", "category": "filter", "summary": "Two.",
        "inputs": [ {"key": 1, "name": "a", "label": "A"}, {"key": 2, "name": "b", "label": "B"} ],
        "parameters": [] } ] })")
                                        .value();
  for (int i = 0; i < 40; ++i) {
    folder_.Write(fmt::format("{}.json", i),
                  fmt::format(R"({{"shader": "Two", "a": "{0}.json", "b": "{0}.json"}})", i + 1));
  }
  folder_.Write("40.json", R"({"shader": "Two"})");
  const auto file = folder_.Path() / "0.json";
  const auto reading =
      ReadMaterial(ReadMaterialText(file).value(), twoInputs, {.file = file, .imageFolders = {}});
  ASSERT_THAT(reading.Errors(), SizeIs(1));
  EXPECT_EQ(reading.Errors()[0].message, "the graph has more than 4096 shaders");
}

// ---- Texts of files

TEST_F(MaterialGraphs, OnlyFilesThatCanBeReadHaveAText) {
  EXPECT_EQ(ReadMaterialText(folder_.Write("a.json", "text")).value(), "text");
  EXPECT_EQ(ReadMaterialText(folder_.Path() / "no.json").error(), "there is no such file");
  EXPECT_EQ(ReadMaterialText(folder_.Path()).error(), "it is a folder");
  EXPECT_EQ(ReadMaterialText("/dev/zero").error(), "it is larger than 64 MB");
}

}  // namespace
}  // namespace sorvanix::host
