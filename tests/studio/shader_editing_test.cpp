#include "apps/studio/document/shader_editing.h"

#include <sorvanix/ids.h>

#include <functional>
#include <utility>

#include "apps/studio/document/commands.h"
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
                      {.catalogue = Catalogue(),
                       .scene = scene_,
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

  Json scene_ = NewScene();
  const GraphPlace colour_ = {.channel = "colour", .inputs = {}};
  const GraphPlace input_ = {.channel = "colour", .inputs = {"input"}};
  const Json material_ = Parsed(R"({"name":"M","channels":{"colour":{"graph":
      {"shader":"Hue","input":{"shader":"2D Noise","scale":3}}}}})");
};

TEST_F(ShaderEditingTest, WhatTheUserChangedIsInTheGraph) {
  const auto edited = Edit(material_, input_, Sets("2D Noise", "octaves", 7));
  ASSERT_TRUE(edited && *edited);
  EXPECT_EQ(OneLine((*edited)->graph),
            R"({"shader":"Hue","input":{"shader":"2D Noise","scale":3,"octaves":7.0}})")
      << "what was there before stays as it was spelled";
  EXPECT_FALSE(IsNull((*edited)->state)) << "the outermost shader stores its inputs too";
}

TEST_F(ShaderEditingTest, InputsOfTheEditedShaderStay) {
  const auto edited = Edit(material_, colour_, Sets("Hue", "hueShift", 90));
  ASSERT_TRUE(edited && *edited);
  const Json* input = (*edited)->graph.Find("input");
  ASSERT_NE(input, nullptr);
  EXPECT_EQ(TextMember(*input, "shader"), "2D Noise");
  EXPECT_EQ(OneLine(*input->Find("scale")), "3");
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

TEST_F(ShaderEditingTest, ConfirmingWithoutAChangeIsNothing) {
  for (const GraphPlace& place : {colour_, input_}) {
    const auto edited = Edit(material_, place, [](host::Shader&) { return true; });
    ASSERT_TRUE(edited);
    EXPECT_FALSE(*edited) << Describe(place);
  }
}

class StoredStateTest : public ShaderEditingTest {
 protected:
  void SetUp() override {
    // Stored with a shift of 90; the graph beside it says nothing of that.
    const auto edited = Edit(material_, colour_, Sets("Hue", "hueShift", 90));
    ASSERT_TRUE(edited && *edited);
    told_ = OneLine(*(*edited)->graph.Find("hueShift"));
    stored_ =
        PutEdited(material_, "colour", *FindGraph(material_, colour_), (*edited)->state).value();
  }
  Json stored_;
  std::string told_;  // how a graph spells the shift
};

TEST_F(StoredStateTest, TheDialogShowsIt) {
  float seen = 0;
  const auto key = Shader("Hue").FindParameter("hueShift")->key;
  ASSERT_TRUE(Edit(stored_, colour_, [&](host::Shader& shader) {
    seen = shader.Parameters().GetFloat(key);
    return false;
  }));
  EXPECT_NE(seen, 0);
}

TEST_F(StoredStateTest, EditingAnInputKeepsItAndTheGraphSaysIt) {
  const auto edited = Edit(stored_, input_, Sets("2D Noise", "octaves", 7));
  ASSERT_TRUE(edited && *edited);
  EXPECT_EQ(OneLine(*(*edited)->graph.Find("hueShift")), told_);
  EXPECT_EQ(OneLine(*(*edited)->graph.Find("input")->Find("octaves")), "7.0");
  // Read again, the new state says both.
  const Json again = PutEdited(stored_, "colour", (*edited)->graph, (*edited)->state).value();
  const auto nothing = Edit(again, colour_, [](host::Shader&) { return true; });
  ASSERT_TRUE(nothing);
  EXPECT_FALSE(*nothing);
}

// Wrapping, or filling an input, lets go of what was stored; the graph says it then.
TEST_F(StoredStateTest, ChangingTheGraphAroundItKeepsWhatItSays) {
  Document document(Catalogue());
  Selection selection(document);
  Commands commands(document, selection);
  ASSERT_TRUE(document.ChangeMaterial(0, stored_, "Start"));
  commands.Wrap(colour_, "Colorizer");
  EXPECT_EQ(OneLine(*FindGraph(*selection.MaterialJson(), input_)->Find("hueShift")), told_);
  document.History().undo();
  commands.PlaceShader(input_, "Tiles");
  EXPECT_EQ(OneLine(*FindGraph(*selection.MaterialJson(), colour_)->Find("hueShift")), told_);
  EXPECT_FALSE(HasState(*selection.MaterialJson(), "colour"));
}

// As a later program writes it: the marker, which is the first value, is higher than any of today.
TEST_F(StoredStateTest, OneOfALaterVersionStaysUntilSomebodyEdits) {
  Json& state = *FindMember(*FindMember(*FindMember(stored_, "channels"), "colour"), "state");
  SetMember(std::get<Json::Array>(state.value).front(), "int", Json(std::int64_t{2000000000}));
  float seen = -1;
  const auto key = Shader("Hue").FindParameter("hueShift")->key;
  const auto looked = Edit(stored_, colour_, [&](host::Shader& shader) {
    seen = shader.Parameters().GetFloat(key);
    return true;
  });
  ASSERT_TRUE(looked);
  EXPECT_FALSE(*looked) << "confirming without a change keeps it";
  EXPECT_EQ(seen, 0) << "the dialog shows what the graph says";
  const auto edited = Edit(stored_, colour_, Sets("Hue", "hueShift", 45));
  ASSERT_TRUE(edited && *edited);
  EXPECT_NE(OneLine((*edited)->state), OneLine(state));
}

// An input that is a material file stays one while something else is edited.
TEST_F(ShaderEditingTest, NamesOfFilesInInputsStay) {
  const std::string file = (Examples() / "graphs" / "embers.json").string();
  Json material = material_;
  SetMember(*const_cast<Json*>(FindGraph(material, colour_)), "input", Json(file));
  const auto edited = Edit(material, colour_, Sets("Hue", "hueShift", 90));
  ASSERT_TRUE(edited && *edited);
  EXPECT_EQ(TextMember((*edited)->graph, "input"), file);
}

TEST_F(ShaderEditingTest, WhatOnlyALaterProgramKnowsStays) {
  scene_ = Parsed(R"({"format":"sorvanix-scene","version":2})");
  const Json later = Parsed(R"({"name":"M","channels":{"colour":{"graph":{"shader":"Hue",
      "glow":{"much":1},"input":{"shader":"2D Noise","wobble":[1,2]}}}}})");
  for (const auto& [place, user] : {std::pair(colour_, Sets("Hue", "hueShift", 90)),
                                    std::pair(input_, Sets("2D Noise", "octaves", 7))}) {
    const auto edited = Edit(later, place, user);
    ASSERT_TRUE(edited && *edited) << Describe(place);
    const std::string graph = OneLine((*edited)->graph);
    EXPECT_NE(graph.find(R"("glow":{"much":1})"), std::string::npos) << graph;
    EXPECT_NE(graph.find(R"("wobble":[1,2])"), std::string::npos) << graph;
  }
}

TEST_F(ShaderEditingTest, EmptyingAnInputOfAnInputEmptiesIt) {
  const Json material = Parsed(R"({"name":"M","channels":{"colour":{"graph":
      {"shader":"Hue","input":{"shader":"Hue","input":{"shader":"Tiles"}}}}}})");
  const auto key = Shader("Hue").FindInput("input")->key;
  const auto edited = Edit(material, input_, [key](host::Shader& shader) {
    host::Container empty, values;
    empty.Set(KeyLinkPluginId, Word{-1});
    values.Set(key, host::NestedContainer(empty));
    shader.SetParameters(values);
    return true;
  });
  ASSERT_TRUE(edited && *edited);
  EXPECT_EQ(OneLine((*edited)->graph), R"({"shader":"Hue","input":{"shader":"Hue"}})");
}

}  // namespace
}  // namespace sorvanix::studio
