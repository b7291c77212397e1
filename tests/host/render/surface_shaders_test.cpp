// The surface shaders in renders of the standalone host: what each sees of rays, normals, lights
// and projections.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/host/render/matchers.h"
#include "tests/host/render/real_module.h"
#include "tests/host/render/scene_maker.h"

namespace sorvanix::host {
namespace {

Container Description(std::int32_t pluginId, const Container& parameters) {
  Container description;
  description.Set(KeyLinkPluginId, Word{pluginId});
  description.Set(KeyLinkParameters, NestedContainer(parameters));
  return description;
}

/// Lets a material shine as a shader of the module says.
void Show(Material& material, std::int32_t pluginId, const Container& parameters = Container()) {
  MaterialChannel& filled = Enable(material, ChannelLuminance);
  filled.link = std::make_shared<Link>();
  Container description = Description(pluginId, parameters);
  ASSERT_EQ(filled.link->Message(MessageSetParameters, description), 1);
}

constexpr RenderSettings kPicture = {.width = 49, .height = 49, .samples = 1, .filtering = false};

// --- Projector ---

Container Noise() {
  Container noise;
  noise.Set(1000, Word{21});  // plain lattice noise
  return noise;
}

Container Projecting(Projection projection) {
  Container parameters;
  parameters.Set(1001, Word{static_cast<std::int32_t>(projection)});
  parameters.Set(1017, NestedContainer(Description(PluginIdNoise2D, Noise())));
  return parameters;
}

/// A ball that has moved and turned, under a tag with a projection.
struct Ball {
  Ball() {
    Object& ball = AddObject(scene, DefaultPrimitive(PrimitiveShape::Sphere),
                             {.position = {12, -7, 5}, .rotation = {33, 21, 10}});
    material = &AddMaterial(scene, ball);
    tag = ball.textureTags.back().get();
  }
  Image Picture(Projection projection, int threads = 1) {
    tag->projection = projection;
    return Render(scene, kPicture, threads);
  }
  Scene scene;
  Material* material;
  TextureTagNode* tag;
};

/// How many values of two pictures differ by more than rounding does.
std::ptrdiff_t Differences(const Image& a, const Image& b) {
  std::ptrdiff_t differing = 0;
  for (std::size_t i = 0; i < a.rgb.size(); ++i) {
    if (!(std::fabs(a.rgb[i] - b.rgb[i]) <= 1e-3f)) ++differing;
  }
  return differing;
}

constexpr Projection kProjections[] = {
    Projection::Sphere,  Projection::Cylinder, Projection::Flat, Projection::Cube,
    Projection::Frontal, Projection::Spatial,  Projection::Uvw,  Projection::ShrinkWrap};

// At its defaults a Projector under any tag stands where that tag stands: it shows what a tag with
// the Projector's projection would. Two pixels may lie on a seam and fall to either side of it.
TEST(SurfaceShaders, AProjectorActsAsATagOfItsProjection) {
  const RealModule real;
  for (const Projection projection : kProjections) {
    Ball plain, projected;
    Show(*plain.material, PluginIdNoise2D, Noise());
    Show(*projected.material, PluginIdProjector, Projecting(projection));
    const bool isUvw = projection == Projection::Uvw;
    EXPECT_LE(Differences(plain.Picture(projection),
                          projected.Picture(isUvw ? Projection::Uvw : Projection::Flat)),
              2 * 3)
        << static_cast<int>(projection);
  }
}

TEST(SurfaceShaders, AProjectorInsideAFilterProjectsAsItDoesAlone) {
  const RealModule real;
  Ball alone, inside;
  Show(*alone.material, PluginIdProjector, Projecting(Projection::Cube));
  Container hue;
  hue.Set(1007, NestedContainer(Description(PluginIdProjector, Projecting(Projection::Cube))));
  Show(*inside.material, PluginIdHue, hue);
  EXPECT_EQ(Differences(alone.Picture(Projection::Flat), inside.Picture(Projection::Flat)), 0);
}

TEST(SurfaceShaders, AProjectorShowsTheSameOnSeveralThreads) {
  const RealModule real;
  Ball ball;
  Show(*ball.material, PluginIdProjector, Projecting(Projection::ShrinkWrap));
  EXPECT_EQ(ball.Picture(Projection::Flat, 1).rgb, ball.Picture(Projection::Flat, 8).rgb);
}

// --- Fresnel, Falloff ---

TEST(SurfaceShaders, FresnelRunsFromTheOutlineToTheMiddleOfABall) {
  const RealModule real;
  Scene scene;
  Object& ball = AddObject(scene, DefaultPrimitive(PrimitiveShape::Sphere));
  Show(AddMaterial(scene, ball), PluginIdFresnel);
  scene.background = {1, 0, 0};
  const Image picture = Render(scene, {.width = 99, .height = 99, .samples = 1});
  EXPECT_LT(Middle(picture).x, 0.01f);
  float before = Middle(picture).x;
  for (int x = 49; At(picture, x, 49).y > 0 || x == 49; ++x) {  // up to the background
    EXPECT_GE(At(picture, x, 49).x, before - 0.02f) << x;       // facets make small steps
    before = At(picture, x, 49).x;
  }
  EXPECT_GT(before, 0.6f);
}

TEST(SurfaceShaders, FalloffAlongItsDirectionIsTheEndOfItsRamp) {
  const RealModule real;
  for (const float direction : {-1.0f, 1.0f}) {
    Scene scene;
    Container parameters;
    parameters.Set(1002, Word{0});  // the world
    parameters.Set(1004, 0.0f);
    parameters.Set(1005, direction);
    Show(AddMaterial(scene, AddWall(scene)), PluginIdFalloff, parameters);
    // The wall faces -z. The default ramp runs from black to yellow.
    if (direction < 0) {
      EXPECT_THAT(Middle(Render(scene)), NearVec(1, 1, 0, 1e-5));
    } else {
      EXPECT_THAT(Middle(Render(scene)), NearVec(0, 0, 0, 1e-5));
    }
  }
}

// --- Banj ---

Container Translucent(std::int32_t form, float shadowMix) {
  Container parameters;
  parameters.Set(1000, Word{form});
  parameters.Set(1001, 1.0f);
  parameters.Set(1002, shadowMix);
  parameters.Set(1005, Vector{1, 1, 1});
  return parameters;
}

TEST(SurfaceShaders, BanjIsLitThroughAWall) {
  const RealModule real;
  for (const std::int32_t form : {0, 1}) {
    for (const bool behind : {true, false}) {
      Scene scene;
      Show(AddMaterial(scene, AddWall(scene)), PluginIdBanj, Translucent(form, 1));
      AddLight(scene, LightKind::Omni, {.position = {0, 0, behind ? 300.0f : -300.0f}});
      if (behind) {
        EXPECT_GT(Middle(Render(scene)).x, 0.5f) << form;
      } else {
        EXPECT_THAT(Middle(Render(scene)), FloatVec(0, 0, 0)) << form;
      }
    }
  }
}

// A closed box as a lantern, seen from outside. Only a lamp inside shines through: one on the eye's
// side is ahead of the walls, and one beyond the box is blocked by the far wall.
TEST(SurfaceShaders, BanjOnAClosedBoxIsLitFromBehindOnly) {
  const RealModule real;
  for (const std::int32_t form : {0, 1}) {
    const auto shown = [form](float lampZ, float shadowMix) {
      Scene scene;
      Object& box = AddObject(scene, DefaultPrimitive(PrimitiveShape::Cube));
      Show(AddMaterial(scene, box), PluginIdBanj, Translucent(form, shadowMix));
      AddLight(scene, LightKind::Omni, {.position = {0, 0, lampZ}});
      return Middle(Render(scene)).x;
    };
    EXPECT_GT(shown(0, 1), 0.5f) << form;
    EXPECT_EQ(shown(-400, 1), 0) << form;
    EXPECT_EQ(shown(400, 1), 0) << form;
    EXPECT_GT(shown(400, 0), 0.5f) << form << ": without shadows it shines through both";
  }
}

// Oren-Nayar takes the side to which the eye looks, and so does without a lamp in the same room.
// The host's form goes by the surface, whose normals point out of the box.
TEST(SurfaceShaders, BanjFromInsideABoxIsLitByWhatIsOutside) {
  const RealModule real;
  Scene scene;
  Primitive box = DefaultPrimitive(PrimitiveShape::Cube);
  box.width = box.height = box.depth = 2000;
  Show(AddMaterial(scene, AddObject(scene, box)), PluginIdBanj, Translucent(1, 1));
  Object& lamp = AddLight(scene, LightKind::Omni, {.position = {100, 50, 0}});
  const Image inside = Render(scene, kPicture);
  EXPECT_EQ(*std::max_element(inside.rgb.begin(), inside.rgb.end()), 0);
  lamp.transform.position = {0, 0, 1800};
  EXPECT_GT(Middle(Render(scene)).x, 0.5f);
}

TEST(SurfaceShaders, BanjMixesTheShadowOfWhatStandsBehindIt) {
  const RealModule real;
  for (const std::int32_t form : {0, 1}) {
    float before = 2;
    for (const float mix : {0.0f, 0.5f, 1.0f}) {
      Scene scene;
      Show(AddMaterial(scene, AddWall(scene)), PluginIdBanj, Translucent(form, mix));
      AddWall(scene, {0, 0, 100}, 50);
      AddLight(scene, LightKind::Omni, {.position = {0, 0, 300}});
      const float shown = Middle(Render(scene)).x;
      EXPECT_LT(shown, before) << form;
      before = shown;
    }
    EXPECT_EQ(before, 0) << form;
  }
}

}  // namespace
}  // namespace sorvanix::host
