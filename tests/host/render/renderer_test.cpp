// Scenes whose colours can be computed by hand. The camera is at (0, 0, -500) and looks along z.
#include "host/render/renderer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>

#include "tests/host/render/matchers.h"
#include "tests/host/render/scene_maker.h"

namespace sorvanix::host {
namespace {

TEST(Renderer, NothingIsTheBackground) {
  Scene scene;
  scene.background = {0.1f, 0.2f, 0.3f};
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.1, 0.2, 0.3));
}

TEST(Renderer, AWallUnderADistantLightGivesTheCosine) {
  Scene scene;
  Enable(AddMaterial(scene, AddWall(scene)), ChannelColour, {1, 0.5f, 0.25f});
  // A light along z meets the wall head-on; turned by 60 degrees it has a cosine of 1/2.
  Object& light = AddLight(scene, LightKind::Distant);
  EXPECT_THAT(Middle(Render(scene)), FloatVec(1, 0.5, 0.25));
  light.transform.rotation = {60, 0, 0};
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.5, 0.25, 0.125));
  light.transform.rotation = {0, 120, 0};  // from behind
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0, 0, 0));
}

TEST(Renderer, LightFallsOffWithTheSquareOfTheDistance) {
  Scene scene;
  Enable(AddMaterial(scene, AddWall(scene)), ChannelColour);
  Object& light = AddLight(scene, LightKind::Omni, {.position = {0, 0, -200}});
  std::get<LightContent>(light.content).falloff = FalloffInverseSquare;
  std::get<LightContent>(light.content).range = 100;
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.25, 0.25, 0.25));
  light.transform.position = {0, 0, -400};
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.0625, 0.0625, 0.0625));
}

TEST(Renderer, WhatStandsInTheLightThrowsAShadow) {
  Scene scene;
  Enable(AddMaterial(scene, AddWall(scene)), ChannelColour);
  // From (300, 0, -300) to the middle of the wall; the sphere is around half way.
  Object& light = AddLight(scene, LightKind::Omni, {.position = {300, 0, -300}});
  Primitive ball = DefaultPrimitive(PrimitiveShape::Sphere);
  ball.radius = 20;
  Object& sphere = AddObject(scene, ball, {.position = {150, 0, -150}});
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0, 0, 0));
  const double lit = std::sqrt(0.5);
  std::get<LightContent>(light.content).shadows = false;
  EXPECT_THAT(Middle(Render(scene)), FloatVec(lit, lit, lit));
  std::get<LightContent>(light.content).shadows = true;
  sphere.transform.position = {450, 0, -450};  // behind the light
  EXPECT_THAT(Middle(Render(scene)), FloatVec(lit, lit, lit));
}

TEST(Renderer, AConvexBodyThrowsNoShadowOnItself) {
  Scene scene;
  Object& sphere = AddObject(scene, DefaultPrimitive(PrimitiveShape::Sphere));
  Enable(AddMaterial(scene, sphere), ChannelColour);
  AddLight(scene, LightKind::Distant);
  scene.camera.transform.position = {0, 0, -800};
  scene.camera.fieldOfView = 14;
  const Image image = Render(scene, {.width = 61, .height = 61, .samples = 1});
  // Lit from the eye: nothing of the ball is dark but its rim.
  for (int x = 10; x < 51; ++x) EXPECT_GT(At(image, x, 30).x, 0.5f) << x;
}

TEST(Renderer, ARoundBodyDarkensWithoutSteps) {
  // A light from the right: the shadow that polygons of a coarse ball throw on one another does
  // not show on its round side.
  Scene scene;
  Primitive ball = DefaultPrimitive(PrimitiveShape::Sphere);
  ball.segmentsU = 24;
  ball.segmentsV = 12;
  Enable(AddMaterial(scene, AddObject(scene, ball)), ChannelColour);
  AddLight(scene, LightKind::Distant, {.rotation = {90, 0, 0}});  // towards -x
  scene.camera.fieldOfView = 20;
  const Image image = Render(scene, {.width = 101, .height = 101, .samples = 1});
  for (int y = 20; y < 81; ++y) {
    for (int x = 50; x < 95; ++x) {
      // The cosine grows by at most a hundredth of the ball from pixel to pixel.
      const float step = At(image, x + 1, y).x - At(image, x, y).x;
      ASSERT_LT(std::abs(step), 0.06f) << x << ' ' << y;
    }
  }
}

TEST(Renderer, LuminanceNeedsNoLight) {
  Scene scene;
  AddGlow(scene, AddWall(scene), {2, 1, 0.5f}).channels[ChannelLuminance].strength = 0.5f;
  EXPECT_THAT(Middle(Render(scene)), FloatVec(1, 0.5, 0.25));
}

TEST(Renderer, AMirrorShowsWhatIsBehindTheCamera) {
  Scene scene;
  Enable(AddMaterial(scene, AddWall(scene)), ChannelReflection, {0.5f, 0.5f, 0.5f});
  // Faces the mirror: turned round.
  Object& behind = AddWall(scene, {0, 0, -700});
  behind.transform.rotation = {180, 90, 0};
  AddGlow(scene, behind, {1, 0.5f, 0.25f});
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.5, 0.25, 0.125));
}

TEST(Renderer, MirrorsThatFaceEachOtherComeToAnEnd) {
  Scene scene;
  scene.background = {1, 1, 1};
  Enable(AddMaterial(scene, AddWall(scene)), ChannelReflection, {0.5f, 0.5f, 0.5f});
  Object& behind = AddWall(scene, {0, 0, -700});
  behind.transform.rotation = {180, 90, 0};
  Enable(AddMaterial(scene, behind), ChannelReflection, {0.5f, 0.5f, 0.5f});
  // Eight surfaces, each half of the next, and the background in the end.
  EXPECT_THAT(Middle(Render(scene)), FloatVec(1.0 / 256, 1.0 / 256, 1.0 / 256));
}

TEST(Renderer, AMirrorDoesNotShowItsOwnInside) {
  // Normals so smooth that they lean far over the rim of a ball of few polygons.
  Scene scene;
  scene.background = {1, 1, 1};
  Primitive ball = DefaultPrimitive(PrimitiveShape::Sphere);
  ball.segmentsU = 8;
  ball.segmentsV = 4;
  Material& material = AddMaterial(scene, AddObject(scene, ball));
  Enable(material, ChannelReflection, {0.5f, 0.5f, 0.5f});
  const Image image = Render(scene, {.width = 64, .height = 64, .samples = 1});
  // All that a convex body can mirror is the background, once: it is half as bright.
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      const float value = At(image, x, y).x;
      ASSERT_TRUE(value == 1 || value == 0.5f) << value << " at " << x << ' ' << y;
    }
  }
}

/// Expects that a ball of glass with a radius of 100 x `size` dims by two surfaces everywhere.
void ExpectTwoSurfaces(float size, const Vector& place) {
  Scene scene;
  scene.background = {1, 1, 1};
  Object& ball = AddObject(scene, DefaultPrimitive(PrimitiveShape::Sphere),
                           {.position = place, .scale = {size, size, size}});
  Enable(AddMaterial(scene, ball), ChannelTransparency, {0.5f, 0.5f, 0.5f});
  scene.camera.transform.position = {place.x, place.y, place.z - 500 * size};
  scene.camera.fieldOfView = 12;  // within the ball: it fills 23 degrees
  const Image image = Render(scene, {.width = 64, .height = 64, .samples = 1});
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      ASSERT_THAT(At(image, x, y), FloatVec(0.25, 0.25, 0.25)) << size << ": " << x << ' ' << y;
    }
  }
}

TEST(Renderer, RaysLeaveTheirSurfaceAtEverySize) {
  for (const float size : {1e-5f, 1e-2f, 1.0f, 1e3f, 1e6f}) ExpectTwoSurfaces(size, {0, 0, 0});
}

TEST(Renderer, RaysLeaveTheirSurfaceFarOut) {
  for (const float far : {1e3f, 1e5f, 1e6f}) ExpectTwoSurfaces(1, {far, -far, far});
}

TEST(Renderer, TransparencyLetsStraightThrough) {
  Scene scene;
  Material& glass = AddMaterial(scene, AddWall(scene));
  Enable(glass, ChannelTransparency, {0.5f, 0.25f, 0});
  Enable(glass, ChannelColour);
  AddGlow(scene, AddWall(scene, {0, 0, 100}), {1, 1, 1});
  // Unlit, only what shines through counts.
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.5, 0.25, 0));
  // Lit, the surface has the rest.
  AddLight(scene, LightKind::Ambient);
  EXPECT_THAT(Middle(Render(scene)), FloatVec(1, 1, 1));
}

TEST(Renderer, AlphaTakesTheSurfaceAway) {
  Scene scene;
  Material& half = AddGlow(scene, AddWall(scene), {1, 0, 0});
  Enable(half, ChannelAlpha).strength = 0.25f;
  AddGlow(scene, AddWall(scene, {0, 0, 100}), {0, 1, 0});
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.25, 0.75, 0));
}

TEST(Renderer, TheLastTagLiesOnTop) {
  Scene scene;
  Object& wall = AddWall(scene);
  AddGlow(scene, wall, {1, 0, 0});
  Enable(AddGlow(scene, wall, {0, 1, 0}), ChannelAlpha).strength = 0.75f;
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.25, 0.75, 0));
}

TEST(Renderer, ATagWithoutTilingEndsAtItsEdge) {
  Scene scene;
  Object& wall = AddWall(scene);
  AddGlow(scene, wall, {1, 0, 0});
  AddGlow(scene, wall, {0, 1, 0});
  wall.textureTags[1]->lengthU = 0.25f;  // the left quarter of the wall
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0, 1, 0));
  wall.textureTags[1]->tile = false;
  EXPECT_THAT(Middle(Render(scene)), FloatVec(1, 0, 0));
  wall.textureTags[1]->offsetU = 0.375f;  // the quarter around the middle
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0, 1, 0));
}

TEST(Renderer, SpecularColourTintsTheHighlight) {
  Scene scene;
  Material& material = AddMaterial(scene, AddWall(scene));
  Enable(material, ChannelSpecularColour, {1, 0.5f, 0});
  AddLight(scene, LightKind::Distant);
  // The eye is where the light is mirrored to.
  EXPECT_THAT(Middle(Render(scene)), FloatVec(1, 0.5, 0));
}

TEST(Renderer, DiffusionDirtiesTheColour) {
  Scene scene;
  Material& material = AddMaterial(scene, AddWall(scene));
  Enable(material, ChannelColour, {1, 0.5f, 0.25f});
  Enable(material, ChannelDiffusion).strength = 0.5f;
  AddLight(scene, LightKind::Ambient);
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.5, 0.25, 0.125));
}

TEST(Renderer, EnvironmentIsAdded) {
  Scene scene;
  Enable(AddGlow(scene, AddWall(scene), {0.5f, 0, 0}), ChannelEnvironment, {0, 0.25f, 0});
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.5, 0.25, 0));
}

TEST(Renderer, WithoutAMaterialThereIsPlainGrey) {
  Scene scene;
  AddWall(scene);
  AddLight(scene, LightKind::Ambient);
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0.8, 0.8, 0.8));
}

TEST(Renderer, TheBackOfAWallIsLitAsItsFront) {
  Scene scene;
  Object& wall = AddWall(scene);
  wall.transform.rotation = {180, 90, 0};
  Enable(AddMaterial(scene, wall), ChannelColour);
  AddLight(scene, LightKind::Distant);
  EXPECT_THAT(Middle(Render(scene)), FloatVec(1, 1, 1));
}

TEST(Renderer, HiddenObjectsAreNotThere) {
  Scene scene;
  Object& wall = AddWall(scene);
  AddGlow(scene, wall, {1, 1, 1});
  wall.visible = false;
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0, 0, 0));
}

TEST(Renderer, SamplesSmoothEdges) {
  Scene scene;
  // The wall's right edge goes through the middle of the picture.
  AddGlow(scene, AddWall(scene, {-1000, 0, 0}), {1, 1, 1});
  EXPECT_THAT(Middle(Render(scene, {.width = 9, .height = 9, .samples = 4})),
              FloatVec(0.5, 0.5, 0.5));
}

// A scene with everything in it, mirrors, glass, shadows and many edges.
void FillMixedScene(Scene& scene) {
  scene.background = {0.2f, 0.3f, 0.4f};
  Object& floor = AddObject(scene, DefaultPrimitive(PrimitiveShape::Plane),
                            {.position = {0, -110, 0}, .scale = {5, 1, 5}});
  Enable(AddMaterial(scene, floor), ChannelColour, {0.7f, 0.7f, 0.6f});
  const PrimitiveShape shapes[] = {PrimitiveShape::Sphere, PrimitiveShape::Torus,
                                   PrimitiveShape::Cube};
  for (int i = 0; i < 3; ++i) {
    const Transform place = {.position = {static_cast<float>(i * 180 - 180), 0, 0},
                             .rotation = {30, 20, 10},
                             .scale = {0.8f, 0.8f, 0.8f}};
    Material& material = AddMaterial(scene, AddObject(scene, DefaultPrimitive(shapes[i]), place));
    Enable(material, ChannelColour, {0.5f, 0.4f, 0.9f});
    Enable(material, ChannelSpecularColour);
    if (i == 0) Enable(material, ChannelReflection, {0.4f, 0.4f, 0.4f});
    if (i == 1) Enable(material, ChannelTransparency, {0.5f, 0.5f, 0.5f});
  }
  AddLight(scene, LightKind::Omni, {.position = {-400, 600, -500}});
  AddLight(scene, LightKind::Rectangle, {.position = {300, 300, -300}});
}

TEST(Renderer, TheNumberOfThreadsDoesNotShow) {
  Scene scene;
  FillMixedScene(scene);
  const RenderSettings settings = {.width = 100, .height = 70, .samples = 2};
  const Image one = Render(scene, settings, 1);
  for (const int threads : {2, 8}) EXPECT_EQ(Render(scene, settings, threads).rgb, one.rgb);
}

TEST(Renderer, ACancelledRenderHasNoPicture) {
  Scene scene;
  FillMixedScene(scene);
  scene.Update();
  const std::atomic<bool> cancelled = true;
  const auto picture = RenderPicture(scene, {}, {.threads = 2, .cancelled = &cancelled});
  ASSERT_TRUE(picture);
  EXPECT_FALSE(picture->image);
}

TEST(Renderer, AChannelThatCannotTakePartIsLeftOut) {
  Scene scene;
  Material& material = AddGlow(scene, AddWall(scene), {0, 1, 0});
  material.name.text = "Broken";
  Enable(material, ChannelAlpha);
  material.channels[ChannelAlpha].link = std::make_shared<Link>();
  material.channels[ChannelAlpha].link->HoldBitmap("no/such/file.png");
  scene.Update();
  const auto picture = RenderPicture(scene, {.width = 3, .height = 3}, {.threads = 1});
  ASSERT_TRUE(picture);
  EXPECT_THAT(Middle(*picture->image), FloatVec(0, 1, 0));
  ASSERT_EQ(picture->problems.size(), 1u);
  EXPECT_EQ(picture->problems[0],
            "material \"Broken\": what fills the alpha channel cannot take part; the channel is "
            "left out");
}

TEST(Renderer, BrokenObjectsAreLeftOut) {
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (const Transform& broken :
       {Transform{.position = {kNan, 0, 0}}, Transform{.scale = {0, 0, 0}},
        Transform{.scale = {1, 0, 1}}, Transform{.rotation = {0, kInfinity, 0}},
        Transform{.scale = {1e30f, 1e30f, 1e30f}}, Transform{.position = {0, 0, 3e38f}}}) {
    Scene scene;
    FillMixedScene(scene);
    Object& object = AddObject(scene, DefaultPrimitive(PrimitiveShape::Cube), broken);
    Material& material = AddMaterial(scene, object);
    Enable(material, ChannelReflection);
    AddLight(scene, LightKind::Spot, broken);
    for (const Projection projection : {Projection::Sphere, Projection::Frontal}) {
      object.textureTags[0]->projection = projection;
      const Image image = Render(scene, {.width = 20, .height = 15, .samples = 1});
      EXPECT_EQ(image.rgb.size(), 900u);
    }
  }
}

TEST(Renderer, AMeshWithoutPolygonsShowsNothing) {
  Scene scene;
  AddObject(scene, MeshContent{.file = "", .mesh = std::make_shared<PolygonMesh>()});
  auto points = std::make_shared<PolygonMesh>();
  points->points = {{0, 0, 0}};
  points->polygons = {{0, 0, 0, 0}};
  AddObject(scene, MeshContent{.file = "", .mesh = points});
  EXPECT_THAT(Middle(Render(scene)), FloatVec(0, 0, 0));
}

}  // namespace
}  // namespace sorvanix::host
