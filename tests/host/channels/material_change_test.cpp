#include "host/channels/material_change.h"

#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include "tests/host/channels/fake_shaders.h"
#include "tests/host/services/temporary_folder.h"

namespace sorvanix::host {
namespace {

// What a Scale answers: its factor and what its input holds.
Container ScaleParameters(float factor, const Container* input = nullptr) {
  Container parameters;
  parameters.Set(fake::kKeyFactor, factor);
  parameters.Set(fake::kKeyInput, NestedContainer(input == nullptr ? Container() : *input));
  return parameters;
}

std::string Changed(std::string_view material, const Container& before, const Container& after,
                    const MaterialFolders& folders = {}) {
  const ShaderCatalogue& catalogue = fake::Catalogue();
  return WriteJson(ChangedMaterial(*ParseJson(material), *catalogue.Find("Scale"), catalogue,
                                   before, after, folders),
                   -1);
}

TEST(MaterialChange, NothingChangedIsTheMaterialAsItWasWritten) {
  constexpr std::string_view kMaterial =
      R"({"$schema":"s","shader":5002,"factor":2,"input":"a.json"})";
  EXPECT_EQ(Changed(kMaterial, ScaleParameters(2), ScaleParameters(2)), kMaterial);
}

TEST(MaterialChange, AValueIsReplacedInItsPlaceOrAdded) {
  EXPECT_EQ(Changed(R"({"factor":2,"shader":"Scale"})", ScaleParameters(2), ScaleParameters(3)),
            R"({"factor":3.0,"shader":"Scale"})");
  EXPECT_EQ(Changed(R"({"shader":"Scale"})", ScaleParameters(2), ScaleParameters(3)),
            R"({"shader":"Scale","factor":3.0})");
}

TEST(MaterialChange, AnInputIsWrittenWithWhatIsNotAtItsDefault) {
  const Container changed = fake::ProbeDescription(4);
  const Container plain = fake::ProbeDescription(0.25f);
  EXPECT_EQ(Changed(R"({"shader":"Scale"})", ScaleParameters(2), ScaleParameters(2, &changed)),
            R"({"shader":"Scale","input":{"shader":"Probe","value":4.0}})");
  EXPECT_EQ(Changed(R"({"shader":"Scale"})", ScaleParameters(2), ScaleParameters(2, &plain)),
            R"({"shader":"Scale","input":{"shader":"Probe"}})");
}

TEST(MaterialChange, GraphsInInputsAreWrittenToTheirEnd) {
  const Container graph = fake::ScaleDescription(0.5f, fake::ProbeDescription(1));
  EXPECT_EQ(
      Changed(R"({"shader":"Scale"})", ScaleParameters(2), ScaleParameters(2, &graph)),
      R"({"shader":"Scale","input":{"shader":"Scale","input":{"shader":"Probe","value":1.0}}})");
}

TEST(MaterialChange, AnInputThatWasEmptiedGoes) {
  const Container probe = fake::ProbeDescription(1);
  EXPECT_EQ(Changed(R"({"shader":"Scale","input":{"shader":"Probe"}})", ScaleParameters(2, &probe),
                    ScaleParameters(2)),
            R"({"shader":"Scale"})");
}

TEST(MaterialChange, ABitmapIsNamedFromTheNewFolder) {
  const TemporaryFolder folder;
  const Container bitmap = fake::BitmapDescription(folder.Write("a/b.png", "").c_str());
  EXPECT_EQ(Changed(R"({"shader":"Scale"})", ScaleParameters(2), ScaleParameters(2, &bitmap),
                    {folder.Path(), folder.Path() / "c"}),
            R"({"shader":"Scale","input":"../a/b.png"})");
}

TEST(MaterialChange, ReferencesAreMovedAsFarAsTheyLeadToAFile) {
  const TemporaryFolder folder;
  folder.Write("a.json", "{}");
  EXPECT_EQ(Changed(R"({"shader":"Scale","input":{"shader":"Scale","input":"a.json"}})",
                    ScaleParameters(2), ScaleParameters(2), {folder.Path(), folder.Path() / "c"}),
            R"({"shader":"Scale","input":{"shader":"Scale","input":"../a.json"}})");
  EXPECT_EQ(Changed(R"({"shader":"Scale","input":"elsewhere.png"})", ScaleParameters(2),
                    ScaleParameters(2), {folder.Path(), folder.Path() / "c"}),
            R"({"shader":"Scale","input":"elsewhere.png"})");
}

}  // namespace
}  // namespace sorvanix::host
