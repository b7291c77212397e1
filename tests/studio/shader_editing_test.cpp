#include "apps/studio/document/shader_editing.h"

#include <functional>

#include "apps/studio/document/commands.h"
#include "host/channels/material_file.h"
#include "host/channels/material_shader.h"
#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {
namespace {

// Stands for a user at a dialog.
class ScriptedEditor : public ShaderEditor {
 public:
  explicit ScriptedEditor(std::function<bool(host::Shader&)> edit) : edit_(std::move(edit)) {}
  bool Edit(host::Shader& shader) override { return edit_(shader); }

 private:
  std::function<bool(host::Shader&)> edit_;
};

class ShaderEditingTest : public StudioTest {
 protected:
  tl::expected<std::optional<EditedGraph>, std::string> Edit(
      const Json& material, const GraphPlace& place, std::function<bool(host::Shader&)> user) {
    ScriptedEditor editor(std::move(user));
    return EditShader(material, place,
                      {.module = SharedEngine()->Module(),
                       .catalogue = Catalogue(),
                       .file = Folder() / "scene.json",
                       .editor = editor});
  }

  // A user who types one number and confirms.
  std::function<bool(host::Shader&)> Sets(std::string_view shader, std::string_view parameter,
                                          std::int32_t value) {
    const std::int32_t key = Shader(shader).FindParameter(parameter)->key;
    return [key, value](host::Shader& edited) {
      host::Container values;
      values.Set(key, Word{value});
      edited.SetParameters(values);
      return true;
    };
  }

  const GraphPlace colour_ = {.channel = "colour", .inputs = {}};
  const GraphPlace input_ = {.channel = "colour", .inputs = {"input"}};
  const Json material_ = Parsed(R"({"name":"M","channels":{"colour":{"graph":
      {"shader":"Hue","input":{"shader":"2D Noise","scale":3}}}}})");
};

TEST_F(ShaderEditingTest, WhatTheUserChangedIsInTheGraph) {
  const auto edited = Edit(material_, input_, Sets("2D Noise", "octaves", 7));
  ASSERT_TRUE(edited && *edited);
  EXPECT_EQ(TextMember((*edited)->graph, "shader"), "2D Noise");
  EXPECT_EQ(OneLine(*(*edited)->graph.Find("octaves")), "7.0");
  EXPECT_EQ(OneLine(*(*edited)->graph.Find("scale")), "3.0") << "what was there before stays";
  EXPECT_TRUE(IsNull((*edited)->state)) << "only the outermost shader stores itself";
}

TEST_F(ShaderEditingTest, InputsOfTheEditedShaderStay) {
  const auto edited = Edit(material_, colour_, [](host::Shader&) { return true; });
  ASSERT_TRUE(edited && *edited);
  const Json* input = (*edited)->graph.Find("input");
  ASSERT_NE(input, nullptr);
  EXPECT_EQ(TextMember(*input, "shader"), "2D Noise");
  EXPECT_EQ(OneLine(*input->Find("scale")), "3.0");
  EXPECT_FALSE(IsNull((*edited)->state));
}

TEST_F(ShaderEditingTest, ACancelledDialogIsNothing) {
  const auto edited = Edit(material_, colour_, [](host::Shader&) { return false; });
  ASSERT_TRUE(edited);
  EXPECT_FALSE(*edited);
}

TEST_F(ShaderEditingTest, NothingCannotBeEdited) {
  EXPECT_FALSE(
      Edit(material_, {.channel = "bump", .inputs = {}}, [](host::Shader&) { return true; }));
}

TEST_F(ShaderEditingTest, ADialogIsOneStepThatUndoTakesBack) {
  Document document(Catalogue());
  Selection selection(document);
  Commands commands(document, selection);
  ASSERT_TRUE(document.ChangeMaterial(0, material_, "Start"));
  const std::string before = document.Text();
  const auto edited = Edit(*selection.MaterialJson(), colour_, Sets("Hue", "hueShift", 90));
  ASSERT_TRUE(edited && *edited);
  commands.PlaceEdited(colour_, (*edited)->graph, (*edited)->state);
  EXPECT_EQ(document.History().count(), 2);
  EXPECT_NE(document.Text(), before);
  document.History().undo();
  EXPECT_EQ(document.Text(), before);
}

// The stored state says more than the parameters; a dialog must find it.
TEST_F(ShaderEditingTest, TheOutermostShaderTakesItsStateBack) {
  const auto first = Edit(material_, colour_, Sets("Hue", "hueShift", 90));
  Json stored = PlaceGraph(material_, colour_, Parsed(R"({"shader":"Hue"})")).value();
  SetMember(*FindMember(*FindMember(stored, "channels"), "colour"), "state", (*first)->state);
  const auto second = Edit(stored, colour_, [](host::Shader&) { return true; });
  EXPECT_EQ(OneLine((*second)->graph), OneLine((*first)->graph));
}

// A graph, made into a shader and read back from its parameters, makes an equal shader again.
TEST_F(ShaderEditingTest, EveryExampleSurvivesTheWayThroughItsShader) {
  int seen = 0;
  for (const char* folder : {"materials", "graphs"}) {
    for (const auto& entry : std::filesystem::directory_iterator(Examples() / folder)) {
      if (entry.path().extension() != ".json") continue;
      const auto reading =
          host::ReadMaterial(ReadAll(entry.path()), Catalogue(), {entry.path(), {}});
      if (!reading.material) continue;  // one whose bitmaps are baked first
      ++seen;
      auto shader = host::MakeShader(SharedEngine()->Module(), *reading.material, 0);
      ASSERT_TRUE(shader) << entry.path();
      const auto node = NodeFrom(shader->Parameters(), *reading.material->shader, Catalogue(),
                                 entry.path().parent_path());
      const auto again = host::MakeShader(SharedEngine()->Module(), node, 0);
      ASSERT_TRUE(again) << entry.path();
      EXPECT_TRUE(shader->Equals(*again)) << entry.path();
    }
  }
  EXPECT_GT(seen, 40);
}

}  // namespace
}  // namespace sorvanix::studio
