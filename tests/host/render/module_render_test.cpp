// Renders with the module's shaders in the channels.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/host/render/matchers.h"
#include "tests/host/render/real_module.h"
#include "tests/host/render/scene_maker.h"

namespace sorvanix::host {
namespace {

/// Puts a shader of the module into a channel, with parameters set.
void Fill(Material& material, int channel, std::int32_t pluginId,
          const Container& parameters = Container()) {
  MaterialChannel& filled = Enable(material, channel);
  filled.link = std::make_shared<Link>();
  Container description;
  description.Set(KeyLinkPluginId, Word{pluginId});
  description.Set(KeyLinkParameters, NestedContainer(parameters));
  ASSERT_EQ(filled.link->Message(MessageSetParameters, description), 1);
}

double Variance(const Image& image, int top, int bottom) {
  double sum = 0, squares = 0;
  int count = 0;
  for (int y = top; y < bottom; ++y) {
    for (int x = 0; x < image.width; ++x) {
      const double value = At(image, x, y).x;
      sum += value;
      squares += value * value;
      ++count;
    }
  }
  return squares / count - (sum / count) * (sum / count);
}

TEST(ModuleRender, BuffyIsWhiteOutsideAndBlackInside) {
  const RealModule real;
  Scene scene;
  Object& sphere = AddObject(scene, DefaultPrimitive(PrimitiveShape::Sphere));
  Fill(AddMaterial(scene, sphere), ChannelLuminance, PluginIdBuffy);
  scene.background = {0.5f, 0.5f, 0.5f};
  EXPECT_THAT(Middle(Render(scene)), FloatVec(1, 1, 1));
  scene.camera.transform.position = {0, 0, 0};
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0, 0, 0));
}

TEST(ModuleRender, ThreadsGiveTheSameBytes) {
  const RealModule real;
  Scene scene;
  Object& sphere = AddObject(scene, DefaultPrimitive(PrimitiveShape::Sphere));
  Material& material = AddMaterial(scene, sphere);
  Fill(material, ChannelColour, PluginIdNoise2D);
  Fill(material, ChannelBump, PluginIdNoise2D);
  AddLight(scene, LightKind::Omni, {.position = {300, 400, -500}});
  const RenderSettings settings = {.width = 64, .height = 64, .samples = 2};
  const Image one = Render(scene, settings, 1);
  EXPECT_EQ(Render(scene, settings, 8).rgb, one.rgb);
  EXPECT_EQ(Render(scene, settings, 2).rgb, one.rgb);
}

// A floor that goes on to the horizon, with a noise so fine that far away a pixel holds many waves.
struct FineFloor {
  FineFloor() {
    Primitive plane = DefaultPrimitive(PrimitiveShape::Plane);
    plane.width = plane.depth = 20000;
    Object& floor = AddObject(scene, plane, {.position = {0, -100, 0}});
    Container parameters;
    parameters.Set(1000, Word{21});  // noiseType: plain lattice noise
    parameters.Set(1002, 200.0f);    // scale
    Fill(AddMaterial(scene, floor), ChannelLuminance, PluginIdNoise2D, parameters);
  }
  Image Picture(bool filtering) {
    return Render(scene, {.width = 128, .height = 96, .samples = 1, .filtering = filtering});
  }
  Scene scene;
};

TEST(ModuleRender, AFarPlaneWithAFineNoiseSettlesToItsMean) {
  const RealModule real;
  FineFloor floor;
  const Image filtered = floor.Picture(true);
  // From the camera's feet to the horizon in the middle of the picture.
  const double near = Variance(filtered, 88, 96), middle = Variance(filtered, 58, 64),
               far = Variance(filtered, 50, 53);
  EXPECT_LT(middle, near);
  EXPECT_LT(far, middle);
  EXPECT_LT(far, near / 100);
}

TEST(ModuleRender, WithoutFilteringTheAliasingIsBack) {
  const RealModule real;
  FineFloor floor;
  const double filtered = Variance(floor.Picture(true), 50, 53);
  const double aliased = Variance(floor.Picture(false), 50, 53);
  EXPECT_GT(aliased, 50 * filtered);
}

TEST(ModuleRender, TheBumpChannelBendsWhatLightSees) {
  const RealModule real;
  Scene scene;
  Material& material = AddMaterial(scene, AddWall(scene, {}, 400));
  Enable(material, ChannelColour);
  AddLight(scene, LightKind::Distant, {.rotation = {45, 0, 0}});
  const RenderSettings settings = {.width = 48, .height = 48, .samples = 1};
  EXPECT_LT(Variance(Render(scene, settings), 8, 40), 1e-12);
  Fill(material, ChannelBump, PluginIdNoise2D);
  EXPECT_GT(Variance(Render(scene, settings), 8, 40), 1e-3);
  // Strength is the share of the way from the straight normal to the bent one.
  material.channels[ChannelBump].strength = 0;
  EXPECT_LT(Variance(Render(scene, settings), 8, 40), 1e-12);
}

}  // namespace
}  // namespace sorvanix::host
