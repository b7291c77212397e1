// Scenes in memory: the tree, its matrices and meshes, lights in world space, materials that come
// and go.
#include "host/scene/scene.h"

#include <gtest/gtest.h>
#include <sorvanix/ids.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "tests/host/scene/vector_checks.h"
#include "tests/host/services/leak_check.h"

namespace sorvanix::host {
namespace {

Object& Add(Object& parent, const char* name, ObjectContent content = NullContent{},
            Transform transform = {}) {
  auto object = std::make_unique<Object>();
  object->name.text = name;
  object->content = std::move(content);
  object->transform = transform;
  return parent.Add(std::move(object));
}

std::vector<std::string> Names(const Object& root) {
  std::vector<std::string> names;
  for (const Object* o = Following(root, root); o != nullptr; o = Following(*o, root)) {
    names.push_back(o->name.text);
  }
  return names;
}

TEST(Scene, IsWalkedParentsFirst) {
  Scene scene;
  Object& a = Add(scene.root, "a");
  Object& b = Add(a, "b");
  Add(b, "c");
  Add(a, "d");
  Add(scene.root, "e");
  EXPECT_EQ(Names(scene.root), (std::vector<std::string>{"a", "b", "c", "d", "e"}));
  EXPECT_EQ(Names(a), (std::vector<std::string>{"b", "c", "d"})) << "and not beyond a";
  EXPECT_EQ(Names(b.children[0] ? *b.children[0] : b), std::vector<std::string>{});
}

TEST(Scene, FindsTheFirstObjectOfAName) {
  Scene scene;
  Object& deep = Add(Add(scene.root, "a"), "twice");
  Add(scene.root, "twice");
  EXPECT_EQ(scene.FindObject("twice"), &deep);
  EXPECT_EQ(scene.FindObject("none"), nullptr);
}

TEST(Scene, PlacesChildrenInTheSpaceOfTheirParents) {
  Scene scene;
  // The parent is turned by 90 degrees of heading, which takes x to z, and doubled.
  Object& parent = Add(scene.root, "parent", {},
                       {.position = {0, 1, 0}, .rotation = {90, 0, 0}, .scale = {2, 2, 2}});
  Object& child = Add(parent, "child", {}, {.position = {3, 0, 0}});
  scene.Update();
  EXPECT_TRUE(Near(child.world.off, {0, 1, 6}));
  EXPECT_TRUE(Near(child.world.v1, {0, 0, 2}));
}

TEST(Scene, MakesTheMeshesOfPrimitivesAnewOnlyWhenTheyChange) {
  Scene scene;
  Object& ball = Add(scene.root, "ball", DefaultPrimitive(PrimitiveShape::Sphere));
  scene.Update();
  const auto first = ball.mesh;
  ASSERT_NE(first, nullptr);
  scene.Update();
  EXPECT_EQ(ball.mesh, first);
  std::get<Primitive>(ball.content).radius = 7;
  scene.Update();
  EXPECT_NEAR(Length(ball.mesh->points[0]), 7, 1e-5);
  ball.content = NullContent{};
  scene.Update();
  EXPECT_EQ(ball.mesh, nullptr);
}

TEST(Scene, PutsParticlesIntoTheWorld) {
  Scene scene;
  Object& cloud = Add(scene.root, "cloud",
                      ParticleContent{{{.position = {1, 0, 0}},
                                       {.position = {0, 0, 0}, .visible = false},
                                       {.position = {0, 0, 0}, .alive = false}}},
                      {.position = {10, 0, 0}});
  scene.Update();
  scene.Update();  // not appended a second time
  ASSERT_EQ(cloud.particles.size(), 3u);
  EXPECT_TRUE(Near(cloud.particles[0].position, {11, 0, 0}));
  EXPECT_EQ(cloud.particles[0].flags, ParticleVisible | ParticleAlive);
  EXPECT_EQ(cloud.particles[1].flags, ParticleAlive);
  EXPECT_EQ(cloud.particles[2].flags, ParticleVisible);
}

TEST(Lights, ShineAlongTheirZAxis) {
  Scene scene;
  Add(scene.root, "spot",
      LightContent{.kind = LightKind::Spot,
                   .colour = {1, 0.5f, 0},
                   .intensity = 2,
                   .contrast = 0.25f,
                   .falloff = FalloffLinear,
                   .range = 70,
                   .innerAngle = 45,
                   .outerAngle = 90,
                   .shadows = false,
                   .specular = false},
      {.position = {1, 2, 3}, .rotation = {90, 0, 0}});
  scene.Update();
  const std::vector<LightRecord> lights = Lights(scene);
  ASSERT_EQ(lights.size(), 1u);
  const LightRecord& light = lights[0];
  EXPECT_EQ(light.type, LightSpot);
  EXPECT_TRUE(Near(light.colour, {2, 1, 0})) << "times the intensity";
  EXPECT_TRUE(Near(light.position, {1, 2, 3}));
  EXPECT_TRUE(Near(light.direction, {-1, 0, 0}));
  EXPECT_NEAR(light.innerAngle, std::numbers::pi / 4, 1e-6);
  EXPECT_NEAR(light.outerAngle, std::numbers::pi / 2, 1e-6);
  EXPECT_EQ(light.contrast, 0.25f);
  EXPECT_EQ(light.falloff, FalloffLinear);
  EXPECT_EQ(light.range, 70);
  EXPECT_FALSE(light.castShadows);
  EXPECT_FALSE(light.ambient);
  EXPECT_FALSE(light.noDiffuse);
  EXPECT_TRUE(light.noSpecular);
}

TEST(Lights, HaveTheTypesOfTheContract) {
  const auto type = [](LightKind kind) {
    Scene scene;
    Add(scene.root, "light", LightContent{.kind = kind});
    scene.Update();
    return Lights(scene)[0].type;
  };
  EXPECT_EQ(type(LightKind::Omni), LightOmni);
  EXPECT_EQ(type(LightKind::Spot), LightSpot);
  EXPECT_EQ(type(LightKind::Distant), LightDistant);
  EXPECT_EQ(type(LightKind::Rectangle), LightRectangle);
  EXPECT_EQ(type(LightKind::Disc), LightDisc);
}

TEST(Lights, TellAnAmbientLightByItsFlag) {
  Scene scene;
  Add(scene.root, "light", LightContent{.kind = LightKind::Ambient});
  scene.Update();
  EXPECT_TRUE(Lights(scene)[0].ambient);
}

TEST(Lights, HaveHalfTheirSizesAsAreas) {
  Scene scene;
  Add(scene.root, "panel", LightContent{.kind = LightKind::Rectangle, .width = 8, .height = 2},
      {.scale = {3, 1, 1}});
  scene.Update();
  const LightRecord light = Lights(scene)[0];
  EXPECT_TRUE(Near(light.areaU, {12, 0, 0})) << "half of 8, three times as wide";
  EXPECT_TRUE(Near(light.areaW, {0, 1, 0}));
  EXPECT_TRUE(Near(light.direction, {0, 0, 1}));
}

TEST(Lights, KeepADirectionUnderAScaleOfZero) {
  Scene scene;
  Add(scene.root, "light", LightContent{}, {.scale = {0, 0, 0}});
  scene.Update();
  EXPECT_NEAR(Length(Lights(scene)[0].direction), 1, 1e-6);
}

TEST(TextureTags, ReachOneHundredUnitsAtFirst) {
  Scene scene;
  Object& object = Add(scene.root, "object", {}, {.position = {5, 0, 0}});
  scene.Update();
  const TextureTagNode tag(object);
  EXPECT_TRUE(Near(TransformPoint(TagToWorld(tag), {1, 0, 0}), {105, 0, 0}));
}

TEST(Camera, LooksAlongZWithoutScale) {
  Camera camera;
  camera.transform = {.position = {1, 2, 3}, .rotation = {90, 0, 0}, .scale = {9, 9, 9}};
  EXPECT_TRUE(Near(camera.ToWorld().v3, {-1, 0, 0}));
  EXPECT_TRUE(Near(camera.ToWorld().off, {1, 2, 3}));
}

TEST(Materials, LeaveObjectsWhenTheyAreRemoved) {
  Scene scene;
  scene.Add(std::shared_ptr<Material>(new Material));
  Object& object = Add(scene.root, "object");
  object.textureTags.push_back(std::make_unique<TextureTagNode>(object));
  object.textureTags[0]->material = scene.materials[0];
  const auto removed = scene.Remove(*scene.materials[0]);
  EXPECT_TRUE(scene.materials.empty());
  EXPECT_EQ(removed->scene, nullptr);
  EXPECT_TRUE(object.textureTags[0]->material.expired());
  EXPECT_EQ(scene.Remove(*removed), nullptr) << "not the scene's any more";
}

TEST(Scene, TakesAnotherOver) {
  const LeakCheck leaks;
  Scene scene;
  Add(scene.root, "a");
  {
    Scene other;
    other.Add(std::shared_ptr<Material>(new Material));
    Object& object = Add(other.root, "b");
    object.textureTags.push_back(std::make_unique<TextureTagNode>(object));
    object.textureTags[0]->material = other.materials[0];
    Add(object, "c");
    scene.TakeOver(other);
  }
  EXPECT_EQ(Names(scene.root), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(scene.materials[0]->scene, &scene);
  EXPECT_EQ(scene.FindObject("b")->textureTags[0]->material.lock(), scene.materials[0]);
}

TEST(Types, AreThoseThatShadersKnow) {
  Scene scene;
  EXPECT_EQ(TypeOf(Add(scene.root, "p", ParticleContent{})), ObjectTypeParticles);
  EXPECT_EQ(TypeOf(Add(scene.root, "l", LightContent{})), ObjectTypeExcludedFromFrame);
  EXPECT_NE(TypeOf(Add(scene.root, "s", Primitive{})), ObjectTypeExcludedFromFrame);
}

}  // namespace
}  // namespace sorvanix::host
