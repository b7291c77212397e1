#include "apps/studio/document/graph_edit.h"

#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {
namespace {

// Colour: a Fusion of noise and tiles. Bump: noise.
constexpr const char* kMaterial = R"({"name":"M","channels":{
  "colour":{"graph":{"shader":"Fusion","mode":"screen",
    "baseInput":{"shader":"2D Noise","octaves":5},"blendInput":{"shader":"Tiles"}},
    "state":[{"int":5}]},
  "bump":{"strength":0.5,"graph":{"shader":"3D Noise"}}}})";

const GraphPlace kColour = {.channel = "colour", .inputs = {}};
const GraphPlace kBase = {.channel = "colour", .inputs = {"baseInput"}};
const GraphPlace kBlend = {.channel = "colour", .inputs = {"blendInput"}};
const GraphPlace kMask = {.channel = "colour", .inputs = {"maskInput"}};
const GraphPlace kBump = {.channel = "bump", .inputs = {}};

class GraphEditTest : public StudioTest {
 protected:
  std::string At(const Json& material, const GraphPlace& place) const {
    const Json* graph = FindGraph(material, place);
    return graph != nullptr ? OneLine(*graph) : "nothing";
  }

  Json material_ = Parsed(kMaterial);
};

TEST_F(GraphEditTest, FindsWhatStandsAtAPlace) {
  EXPECT_EQ(At(material_, kBase), R"({"shader":"2D Noise","octaves":5})");
  EXPECT_EQ(At(material_, kMask), "nothing");
  EXPECT_EQ(At(material_, kMask.Below("input")), "nothing");
  EXPECT_EQ(FindShader(material_, kBump, Catalogue())->name, "3D Noise");
  EXPECT_EQ(FindShader(material_, kMask, Catalogue()), nullptr);
}

TEST_F(GraphEditTest, PlacesIntoAnEmptyInput) {
  const Json changed = PlaceGraph(material_, kMask, NewShader(Shader("Gradient"))).value();
  EXPECT_EQ(At(changed, kMask), R"({"shader":"Gradient"})");
  EXPECT_EQ(At(changed, kBase), At(material_, kBase));
}

TEST_F(GraphEditTest, PlacesIntoAChannelThatIsNotThere) {
  const GraphPlace alpha = {.channel = "alpha", .inputs = {}};
  const Json changed = PlaceGraph(material_, alpha, NewShader(Shader("Tiles"))).value();
  EXPECT_EQ(At(changed, alpha), R"({"shader":"Tiles"})");
  EXPECT_TRUE(IsChannelOn(changed, "alpha"));
}

TEST_F(GraphEditTest, PlacingTurnsTheChannelOn) {
  const Json off = SwitchChannel(material_, "bump", false);
  EXPECT_TRUE(IsChannelOn(PlaceGraph(off, kBump, NewShader(Shader("Tiles"))).value(), "bump"));
}

TEST_F(GraphEditTest, CannotPlaceIntoAnInputOfNothing) {
  EXPECT_FALSE(PlaceGraph(material_, kMask.Below("input"), NewShader(Shader("Tiles"))));
}

TEST_F(GraphEditTest, EveryChangeOfAGraphDropsWhatItsShaderOnceStored) {
  const auto hasState = [](const Json& material) {
    return material.Find("channels")->Find("colour")->Find("state") != nullptr;
  };
  ASSERT_TRUE(hasState(material_));
  EXPECT_FALSE(hasState(PlaceGraph(material_, kMask, NewShader(Shader("Tiles"))).value()));
  EXPECT_FALSE(hasState(RemoveGraph(material_, kBase).value()));
  EXPECT_FALSE(hasState(WrapInFilter(material_, kColour, Shader("Hue")).value()));
  EXPECT_TRUE(hasState(RemoveGraph(material_, kBump).value())) << "another channel's";
}

// Unwrap undoes Wrap, at every place and with every filter.
TEST_F(GraphEditTest, WrappingAndUnwrappingIsNoChange) {
  for (const host::ShaderDescription& filter : Catalogue().Shaders()) {
    if (filter.inputs.empty()) continue;
    for (const GraphPlace& place : {kColour, kBase, kBump}) {
      const Json wrapped = WrapInFilter(material_, place, filter).value();
      EXPECT_EQ(FindShader(wrapped, place, Catalogue())->name, filter.name);
      const Json unwrapped = UnwrapFilter(wrapped, place, Catalogue()).value();
      EXPECT_EQ(At(unwrapped, place), At(material_, place)) << filter.name;
    }
  }
}

TEST_F(GraphEditTest, OnlyFiltersWrapAndOnlySomething) {
  EXPECT_FALSE(WrapInFilter(material_, kColour, Shader("Tiles")));
  EXPECT_FALSE(WrapInFilter(material_, kMask, Shader("Hue")));
  EXPECT_FALSE(UnwrapFilter(material_, kBump, Catalogue()));
}

// Fusion's inputs are base, blend and mask; Distorter's are input and distortInput. None has a name
// of the other's, so they go over in their order.
TEST_F(GraphEditTest, ReplacingKeepsInputsInTheirOrder) {
  const Json changed = ReplaceShader(material_, kColour, Shader("Distorter"), Catalogue()).value();
  EXPECT_EQ(OneLine(*FindGraph(changed, kColour)),
            R"({"shader":"Distorter","input":{"shader":"2D Noise","octaves":5},)"
            R"("distortInput":{"shader":"Tiles"}})");
}

TEST_F(GraphEditTest, ReplacingByAGeneratorDropsInputs) {
  const Json changed = ReplaceShader(material_, kColour, Shader("Gradient"), Catalogue()).value();
  EXPECT_EQ(At(changed, kColour), R"({"shader":"Gradient"})");
}

TEST_F(GraphEditTest, RemovingLeavesTheChannelWithItsOtherValues) {
  const Json changed = RemoveGraph(material_, kBump).value();
  EXPECT_EQ(OneLine(*changed.Find("channels")->Find("bump")), R"({"strength":0.5})");
  EXPECT_FALSE(RemoveGraph(changed, kBump));
}

TEST_F(GraphEditTest, MovesBetweenChannels) {
  const Json moved = MoveShader(material_, kBlend, kBump).value();
  EXPECT_EQ(At(moved, kBump), R"({"shader":"Tiles"})");
  EXPECT_EQ(At(moved, kBlend), "nothing");
}

TEST_F(GraphEditTest, MovingAnInputOverItsShaderLeavesTheInput) {
  const Json moved = MoveShader(material_, kBase, kColour).value();
  EXPECT_EQ(At(moved, kColour), At(material_, kBase));
}

TEST_F(GraphEditTest, NothingMovesIntoItself) {
  EXPECT_FALSE(MoveShader(material_, kColour, kBase));
  EXPECT_FALSE(MoveShader(material_, kMask, kBump)) << "there is nothing to move";
}

TEST_F(GraphEditTest, AChannelThatSaysNothingElseIsLeftOutWhileItIsOff) {
  const Json on = SwitchChannel(material_, "alpha", true);
  EXPECT_TRUE(IsChannelOn(on, "alpha"));
  EXPECT_EQ(OneLine(SwitchChannel(on, "alpha", false)), OneLine(material_));
  const Json off = SwitchChannel(material_, "bump", false);
  EXPECT_FALSE(IsChannelOn(off, "bump"));
  EXPECT_EQ(At(off, kBump), At(material_, kBump));
}

TEST_F(GraphEditTest, AChannelInAFormOfLaterProgramsIsKept) {
  const Json material = Parsed(R"({"name":"M","channels":{"alpha":"soft"}})");
  EXPECT_EQ(OneLine(SwitchChannel(material, "alpha", false)), OneLine(material));
}

}  // namespace
}  // namespace sorvanix::studio
