#include "host/channels/material.h"

#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include "host/channels/material_file.h"
#include "tests/host/channels/small_catalogue.h"

namespace sorvanix::host {
namespace {

MaterialNode Read(std::string_view text) {
  return ReadMaterial(text, test::SmallCatalogue()).material.value();
}

std::string Canonical(std::string_view text) { return WriteJson(JsonOf(Read(text)), -1); }

TEST(Material, ItsContainerHoldsWhatIsGivenAndNothingElse) {
  const Container container =
      ContainerOf(Read(R"({"shader": 11, "kind": "Rough", "scale": 0.5, "inverted": true,
                           "tint": [1, 2, 3], "target": "t"})"));
  EXPECT_EQ(container.Size(), 5u);
  EXPECT_EQ(std::get<Word>(*container.Find(1000)), 2);
  EXPECT_EQ(std::get<float>(*container.Find(1002)), 0.5f);
  EXPECT_EQ(std::get<bool>(*container.Find(1003)), true);
  EXPECT_EQ(std::get<Vector>(*container.Find(1005)).z, 3.0f);
  EXPECT_EQ(std::get<Text>(*container.Find(1006)).text, "t");
}

TEST(Material, AnInputIsAContainerWithAnIdAndParameters) {
  const Container container =
      ContainerOf(Read(R"({"shader": 12, "input": {"shader": 11, "scale": 2}})"));
  const Container* link = container.GetContainer(1001);
  ASSERT_NE(link, nullptr);
  EXPECT_EQ(link->GetInt(KeyLinkPluginId), 11);
  ASSERT_NE(link->GetContainer(KeyLinkParameters), nullptr);
  EXPECT_EQ(link->GetContainer(KeyLinkParameters)->GetFloat(1002), 2.0f);
}

TEST(Material, EqualMaterialsHaveOneSpelling) {
  const char* const canonical =
      R"({"shader":"Paint","kind":"Rough","scale":0.1,"tint":[1.0,0.0,0.0]})";
  EXPECT_EQ(Canonical(R"({"tint": "#ff0000", "scale": 1e-1, "kind": 2, "shader": 11})"), canonical);
  EXPECT_EQ(Canonical(canonical), canonical);
}

TEST(Material, ANumberThatIsNoChoiceStaysANumber) {
  EXPECT_EQ(Canonical(R"({"shader": 11, "kind": 1})"), R"({"shader":"Paint","kind":1})");
}

TEST(Material, TheSpellingHoldsInputsToo) {
  const char* const canonical =
      R"({"shader":"Mixer","amount":2.0,"input":{"shader":"Paint","count":3}})";
  EXPECT_EQ(Canonical(canonical), canonical);
}

TEST(Material, OnlyAChoiceThatDrawsRandomNumbersMakesItRandom) {
  ShaderParameter type;
  type.choices = {{3, "Steady", ""}, {17, "Restless", "", true}};
  MaterialNode node;
  EXPECT_FALSE(DrawsRandomNumbers(node));
  node.values = {{&type, 3}};
  EXPECT_FALSE(DrawsRandomNumbers(node));
  node.values = {{&type, 17}};
  EXPECT_TRUE(DrawsRandomNumbers(node));
  MaterialNode outer;
  outer.inputs.push_back({nullptr, node});
  EXPECT_TRUE(DrawsRandomNumbers(outer));
}

}  // namespace
}  // namespace sorvanix::host
