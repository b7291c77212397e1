// Proximal over the host's own scenes: names, children, primitives, meshes and particles.
#include <cmath>

#include "host/scene/scene.h"
#include "host/scene/scene_services.h"
#include "tests/host/module/loaded.h"

namespace sorvanix::host::test {
namespace {

constexpr std::int32_t kKeyMaximum = 1001, kKeyName = 1002, kKeyUseChildren = 1004;
constexpr std::int32_t kKeyStrength = 1005, kKeyFalloff = 1006, kKeyUseGeometry = 1007;
constexpr std::int32_t kKeyUseFaces = 1008, kKeyCombine = 1009;

enum : std::int32_t { kLinear = 0, kBand = 3 };  // falloffs
enum : std::int32_t { kMaximum = 0, kAdd = 4 };  // rules

struct ProximalSceneTest : ::testing::Test {
  Host host{{.services = {InstallScenes}}};
  Module module = Module::Load(host, SORVANIX_MODULE_PATH).value();
  Shader shader = module.Create(PluginIdProximal, ChannelColour).value();
  Scene scene;
  RenderContext render = {};

  ProximalSceneTest() { Set(kKeyName, Text("Lamp")); }
  void Set(std::int32_t key, ContainerValue value) {
    Container parameters;
    parameters.Set(key, std::move(value));
    shader.SetParameters(parameters);
  }
  Object& Add(Object& parent, const std::string& name, ObjectContent content,
              const Vector& position) {
    auto object = std::make_unique<Object>();
    object->name = Text(name);
    object->content = std::move(content);
    object->transform.position = position;
    return parent.Add(std::move(object));
  }
  void BeginRender() {
    scene.Update();
    ASSERT_TRUE(shader.InitRender({&render, scene.Handle()}));
  }
  float ValueAt(const Vector& point) {
    render.hitPoint = point;
    ChannelSample sample = {};
    sample.render = &render;
    return shader.Output(sample).x;
  }
  /// Every point within a band without end adds 1/4096.
  int Count() {
    Set(kKeyFalloff, Word{kBand});
    Set(kKeyMaximum, 1e6f);
    Set(kKeyStrength, 1.0f / 4096);
    Set(kKeyCombine, Word{kAdd});
    return static_cast<int>(ValueAt({12345, 0, 0}) * 4096);
  }
  /// A point shines within a hundredth of its reach.
  bool HasPointAt(const Vector& point) {
    Set(kKeyFalloff, Word{kLinear});
    Set(kKeyMaximum, 0.01f);
    Set(kKeyStrength, 1.0f);
    Set(kKeyCombine, Word{kMaximum});
    return ValueAt(point) > 0.99f;
  }
};

// The child stands in the space of its parent: (10, 0, 0) + (0, 5, 0).
TEST_F(ProximalSceneTest, FindsObjectsByNameAtAnyDepth) {
  Object& room = Add(scene.root, "Room", NullContent{}, {10, 0, 0});
  Add(room, "Lamp", NullContent{}, {0, 5, 0});
  Add(scene.root, "Lamp", LightContent{}, {0, 0, 90});
  Add(scene.root, "Candle", NullContent{}, {50, 0, 0});
  BeginRender();
  EXPECT_EQ(Count(), 2);
  EXPECT_TRUE(HasPointAt({10, 5, 0}));
  EXPECT_TRUE(HasPointAt({0, 0, 90}));
  EXPECT_FALSE(HasPointAt({50, 0, 0}));
}

TEST_F(ProximalSceneTest, TakesChildrenInPlaceOfTheObject) {
  Set(kKeyUseChildren, true);
  Object& lamp = Add(scene.root, "Lamp", NullContent{}, {10, 0, 0});
  Add(lamp, "Bulb", NullContent{}, {0, 5, 0});
  Add(lamp, "Foot", NullContent{}, {0, -5, 0});
  BeginRender();
  EXPECT_EQ(Count(), 2);
  EXPECT_TRUE(HasPointAt({10, 5, 0}));
  EXPECT_TRUE(HasPointAt({10, -5, 0}));
}

// Corners 30 units from the middle in all directions.
TEST_F(ProximalSceneTest, TakesTheVerticesOfAPrimitive) {
  Set(kKeyUseGeometry, true);
  Primitive cube = DefaultPrimitive(PrimitiveShape::Cube);
  cube.width = cube.height = cube.depth = 60;
  Add(scene.root, "Lamp", cube, {100, 0, 0});
  BeginRender();
  for (const float x : {70.0f, 130.0f}) {
    for (const float y : {-30.0f, 30.0f}) {
      for (const float z : {-30.0f, 30.0f}) EXPECT_TRUE(HasPointAt({x, y, z}));
    }
  }
  EXPECT_FALSE(HasPointAt({100, 0, 0}));
}

// A square with a side of 2 around its place: its centre reaches sqrt 2 far, so half a unit beside
// it the value is 1 - 0.5 / sqrt 2.
TEST_F(ProximalSceneTest, TakesTheFacesOfAMesh) {
  Set(kKeyUseGeometry, true);
  auto mesh = std::make_shared<PolygonMesh>();
  mesh->points = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
  mesh->polygons = {{0, 1, 2, 3}};
  Add(scene.root, "Lamp", MeshContent{.file = {}, .mesh = mesh}, {100, 0, 0});
  BeginRender();
  EXPECT_EQ(Count(), 4);
  EXPECT_TRUE(HasPointAt({101, 1, 0}));

  Set(kKeyUseFaces, true);
  BeginRender();
  EXPECT_EQ(Count(), 1);
  EXPECT_TRUE(HasPointAt({100, 0, 0}));
  Set(kKeyMaximum, 1.0f);
  EXPECT_NEAR(ValueAt({100.5f, 0, 0}), 1 - 0.5 / std::sqrt(2.0), 1e-6);
}

TEST_F(ProximalSceneTest, TakesLiveAndVisibleParticles) {
  ParticleContent particles;
  particles.particles = {{.position = {1, 0, 0}},
                         {.position = {2, 0, 0}, .visible = false},
                         {.position = {3, 0, 0}, .alive = false},
                         {.position = {4, 0, 0}}};
  Add(scene.root, "Lamp", particles, {10, 0, 0});
  BeginRender();
  EXPECT_EQ(Count(), 2);
  EXPECT_TRUE(HasPointAt({11, 0, 0}));
  EXPECT_TRUE(HasPointAt({14, 0, 0}));
}

}  // namespace
}  // namespace sorvanix::host::test
