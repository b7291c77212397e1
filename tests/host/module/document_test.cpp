// Documents with the real shaders: whatever a block holds comes back, and saving again writes the
// same bytes.
#include <gmock/gmock.h>

#include <rapidcheck/gtest.h>

#include "host/services/stream_json.h"
#include "tests/host/module/documents.h"

namespace sorvanix::host::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

enum class Numbers { Usual, Any };

// Any float but NaN, which equals nothing, not even itself.
float AnyFloat(Numbers numbers) {
  if (numbers == Numbers::Usual) return 0.125f * static_cast<float>(*rc::gen::inRange(-999, 999));
  return *rc::gen::oneOf(rc::gen::arbitrary<float>(),
                         rc::gen::element(0.0f, -0.0f, 1e-45f, 3e38f, -INFINITY, INFINITY));
}

// A value of the same kind. Numbers of knots stay within what a ramp holds: of more, files keep 50.
ContainerValue Another(const ContainerValue& value, Numbers numbers) {
  if (std::holds_alternative<bool>(value)) return *rc::gen::arbitrary<bool>();
  if (std::holds_alternative<float>(value)) return AnyFloat(numbers);
  if (std::holds_alternative<Vector>(value)) {
    return Vector{AnyFloat(numbers), AnyFloat(numbers), AnyFloat(numbers)};
  }
  if (std::holds_alternative<Text>(value)) {
    return Text(*rc::gen::container<std::string>(rc::gen::inRange(' ', '~')));
  }
  if (std::holds_alternative<Word>(value)) return Word{*rc::gen::inRange(0, 51)};
  return value;
}

TEST_F(Documents, BringBackWhateverABlockHolds) {
  for (const auto& registered : module.Shaders().All()) {
    if (registered->id == PluginIdBuffy) continue;  // has no block, and compares as unequal
    SCOPED_TRACE(registered->name);
    rc::detail::checkGTest([&](bool isUsual) {
      const Numbers numbers = isUsual ? Numbers::Usual : Numbers::Any;
      const auto scene = SceneWith(registered->id);
      Shader& shader = ShaderOf(*scene);
      Container random;
      for (const auto& [key, value] : shader.Parameters()) random.Set(key, Another(value, numbers));
      shader.SetParameters(random);
      // What was derived from former values is put in order, as reading a file does.
      Stream stream;
      shader.Write(stream);
      shader.Read(stream);

      const std::string saved = Save(*scene);
      const auto again = Load(saved);
      RC_ASSERT(again != nullptr);
      RC_ASSERT(warnings.empty());
      RC_ASSERT(ChannelOf(*again).link != nullptr);
      // What is derived from infinite values may be NaN, and then equals nothing, not even itself.
      RC_ASSERT(ShaderOf(*again).Equals(shader) == (isUsual || shader.Equals(shader)));
      Stream stored, storedAgain;
      shader.Write(stored);
      ShaderOf(*again).Write(storedAgain);
      RC_ASSERT(stored.Values() == storedAgain.Values());
      RC_ASSERT(Save(*again) == saved);
    });
  }
}

// Inputs come back with what they hold, one behind the other.
TEST_F(Documents, BringBackChainsOfShaders) {
  const auto scene = Load(R"({ "format": "sorvanix-scene", "version": 1, "materials": [
      { "name": "M", "channels": { "colour": { "graph": { "shader": "Fusion", "mode": "screen",
          "baseInput": { "shader": "Hue", "hueShift": 30, "input": { "shader": "2D Noise" } },
          "blendInput": { "shader": "Tiles", "pattern": 9 } } } } } ] })");
  ASSERT_NE(scene, nullptr);
  const std::string saved = Save(*scene);
  const auto again = Load(saved);
  ASSERT_NE(again, nullptr);
  EXPECT_TRUE(ShaderOf(*again).Equals(ShaderOf(*scene)));
  EXPECT_EQ(Save(*again), saved);
}

// --- states and parameters ---

std::string SceneOf(const std::string& channel) {
  return R"({ "format": "sorvanix-scene", "version": 1,
      "materials": [ { "name": "M", "channels": { "colour": )" +
         channel + " } } ] }";
}

TEST_F(Documents, PreferTheStateToTheParameters) {
  const auto scene = Load(SceneOf(R"({ "graph": { "shader": "Posterizer", "levels": 3 }, "state": [
      { "int": 20000830 }, { "int": 7 }, { "float": 0.25 }, { "link": null }, { "int": 0 },
      { "bool": true }, { "bool": false }, { "bool": true }, { "bool": true }, { "int": 5 },
      { "int": 0 } ] })"));
  ASSERT_NE(scene, nullptr);
  EXPECT_TRUE(warnings.empty());
  EXPECT_EQ(ShaderOf(*scene).Parameters().GetInt(1000), 7);
  EXPECT_THAT(Save(*scene), HasSubstr("\"levels\": 7")) << "the parameters follow the state";
}

TEST_F(Documents, ReadStatesOfOldMarkersAndWriteTodays) {
  // The first form of Distorter has no sampleStep, which was 1.
  const auto scene = Load(SceneOf(R"({ "graph": { "shader": "Distorter" }, "state": [
      { "int": 20000728 }, { "int": 2 }, { "float": 0.5 }, { "float": 1 }, { "float": 2 },
      { "float": 3 }, { "float": 4 }, { "bool": false }, { "link": null }, { "link": null },
      { "int": 0 }, { "bool": true }, { "bool": false }, { "bool": true } ] })"));
  ASSERT_NE(scene, nullptr);
  EXPECT_TRUE(warnings.empty());
  const std::string saved = Save(*scene);
  EXPECT_THAT(saved, HasSubstr("20000731"));
  EXPECT_THAT(saved, HasSubstr("\"strength\": 0.5"));
  EXPECT_EQ(Save(*Load(saved)), saved);
}

// A state that begins with this marker, otherwise unknown.
std::string LaterState(std::int32_t marker) {
  return R"([ { "int": )" + std::to_string(marker) + R"( }, { "string": "unheard of" } ])";
}

TEST_F(Documents, TakeTheParametersOfAShaderWhoseStateIsLater) {
  const auto scene =
      Load(SceneOf(R"({ "graph": { "shader": "Posterizer", "levels": 3 }, "state": )" +
                   LaterState(20000831) + "}"));
  ASSERT_NE(scene, nullptr);
  EXPECT_THAT(warnings, ElementsAre(HasSubstr("its state is not of a form that is known here")));
  EXPECT_EQ(ShaderOf(*scene).Parameters().GetInt(1000), 3);
  const std::string saved = Save(*scene);
  EXPECT_THAT(saved, HasSubstr("unheard of")) << "the state is kept";
  EXPECT_EQ(Save(*Load(saved)), saved);
}

TEST_F(Documents, ReplaceALaterStateWhenTheShaderIsEdited) {
  const auto scene =
      Load(SceneOf(R"({ "graph": { "shader": "Posterizer", "levels": 3 }, "state": )" +
                   LaterState(20000831) + "}"));
  Container edit;
  edit.Set(1000, Word{9});
  ShaderOf(*scene).SetParameters(edit);
  const std::string saved = Save(*scene);
  EXPECT_EQ(saved.find("unheard of"), saved.npos);
  EXPECT_THAT(saved, HasSubstr("\"levels\": 9"));
}

TEST_F(Documents, KnowALaterStateBehindALink) {
  const auto scene = Load(SceneOf(R"({ "graph": { "shader": "Posterizer", "levels": 3 }, "state": [
      { "int": 20000830 }, { "int": 7 }, { "float": 0.25 },
      { "link": { "shader": 1001277, "values": )" +
                                  LaterState(20000831) + " } } ] }"));
  ASSERT_NE(scene, nullptr);
  EXPECT_EQ(warnings.size(), 1u);
  EXPECT_EQ(ShaderOf(*scene).Parameters().GetInt(1000), 3);
  EXPECT_THAT(Save(*scene), HasSubstr("unheard of"));
}

// A refused state is one of another marker, older ones too: some shaders have but one form.
TEST_F(Documents, TakeTheParametersOfAShaderThatRefusesItsState) {
  const auto scene = Load(SceneOf(R"({ "graph": { "shader": "Falloff", "space": 2 }, "state": )" +
                                  LaterState(20000727) + "}"));
  ASSERT_NE(scene, nullptr);
  EXPECT_EQ(warnings.size(), 1u);
  EXPECT_EQ(ShaderOf(*scene).Parameters().GetInt(1002), 2);
}

// The state keeps its values, and the graph what it says of it.
TEST_F(Documents, KeepAnInputWhoseShaderIsNotKnown) {
  const auto scene = Load(R"({ "format": "sorvanix-scene", "version": 2, "materials": [
      { "name": "M", "channels": { "colour": { "graph": { "shader": "Posterizer", "levels": 7,
          "input": { "shader": "Swirl", "turns": 3 } }, "state": [
      { "int": 20000830 }, { "int": 7 }, { "float": 0.25 },
      { "link": { "shader": 4711, "values": [ { "int": 1 } ] } }, { "int": 0 }, { "bool": true },
      { "bool": false }, { "bool": true }, { "bool": true }, { "int": 5 }, { "int": 0 } ] } } } ] })");
  ASSERT_NE(scene, nullptr);
  const std::string saved = Save(*scene);
  EXPECT_THAT(saved, HasSubstr("\"turns\": 3"));
  EXPECT_THAT(saved, HasSubstr("4711"));
}

}  // namespace
}  // namespace sorvanix::host::test
