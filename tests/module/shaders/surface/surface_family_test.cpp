// What surface shaders have in common: they take whatever a block may hold, leave nothing behind
// when memory is short, and show the same on several threads as on one.
#include <cmath>
#include <cstring>
#include <limits>
#include <ostream>
#include <thread>

#include "tests/support/fake_scene.h"
#include "tests/support/filter_fixture.h"
#include "tests/support/recording_lights.h"
#include "tests/support/recording_projection.h"

namespace sorvanix::test {
namespace {

struct SurfaceKind {
  const char* name;
  std::int32_t pluginId;
  friend void PrintTo(const SurfaceKind& kind, std::ostream* stream) { *stream << kind.name; }
};

const SurfaceKind kSurfaces[] = {{"Fresnel", PluginIdFresnel}, {"Falloff", PluginIdFalloff},
                                 {"Banj", PluginIdBanj},       {"Projector", PluginIdProjector},
                                 {"Lumas", PluginIdLumas},     {"Proximal", PluginIdProximal}};

// A slanted surface under two lights, with a tag and an object, and next to a lamp.
struct Surface {
  RayRecord ray = {{0, 0, 10}, {0.36, 0.48, -0.8}};
  TextureTag tag = {};
  ObjectRecord object = {};
  RenderContext render = {};
  ChannelSample sample = {};

  Surface() {
    tag.matrix1 = tag.matrix2 = object.matrix = {{1, 2, 3}, {0, 2, 0}, {-2, 0, 0}, {0, 0, 2}};
    render.ray = &ray;
    render.textureTag = &tag;
    render.object = &object;
    render.faceNormal = render.baseNormal = render.bumpNormal = {0, 0.6f, 0.8f};
    render.hitPoint = {1, 2, 3};
    render.lightCount = 2;
    render.lightsEnabled = 1;
    render.lightParamB = 1;
    sample.uvw = {0.25f, 0.75f, 0};
    sample.normal = {0, 0, 1};
    sample.render = &render;
  }
};

struct SurfaceFamilyTest : ::testing::TestWithParam<SurfaceKind> {
  StartedModule started;
  FakeHost& host = started.host;
  RecordingLights lights{host};
  RecordingProjection projection{host};
  FakeScene scene;
  const int blocksAtFirst = host.liveBlocks();
  const int textsAtFirst = host.liveTexts();
  ShaderUnderTest shader{started, GetParam().pluginId};
  const ShaderRecord& record = shader.record;
  ShaderInstance& instance = shader.instance;

  SurfaceFamilyTest() {
    host.recordReads = lights.record = projection.record = false;
    lights.lights.resize(2);
    lights.lights[0].direction = {0, -0.6f, -0.8f};
    lights.lights[0].colour = {0.5f, 0.25f, 1};
    lights.lights[1].direction = {0.6f, 0, -0.8f};
    lights.lights[1].colour = lights.lights[1].shadowedColour = {0.25f, 0.25f, 0.25f};
    lights.lights[1].record.contrast = 0.5f;
    lights.illuminate = [](const RenderContext& at, Vector& diffuse, Vector& specular, float) {
      diffuse = {std::fabs(at.bumpNormal.x), 0.5f, std::fabs(at.bumpNormal.z)};
      specular = {0.5f, 0.25f, 0.125f};
    };
    projection.project = [](const TextureTag&, const Vector& point) {
      return Vector{point.x * 0.01f, point.y * 0.01f, point.z * 0.01f};
    };
    scene.Add("Lamp");
    if (GetParam().pluginId == PluginIdProximal) {
      FakeContainer nearness;
      nearness.Set(1002, std::string("Lamp"));
      shader.Message(MessageSetParameters, nearness);
    }
  }
  ~SurfaceFamilyTest() override { FakeHost::cpuIndex = 0; }

  void InitRender(RenderContext& render, std::int32_t cpus) {
    host.cpuCount = cpus;
    const RenderInit init = {&render, scene.handle()};
    if (record.InitRender != nullptr) record.InitRender(&instance, &init);
  }
  void FreeRender() {
    if (record.FreeRender != nullptr) record.FreeRender(&instance);
  }
  std::vector<StreamValue> Written() const {
    FakeStream stream;
    record.Write(&instance, stream.handle());
    return stream.values;
  }
  // Everything that a host may ask of a block.
  void UseInEveryWay() {
    for (const std::int32_t channel : {0, 6, -1, 8427}) {
      for (const bool withRender : {true, false}) {
        Surface surface;
        instance.channel = channel;
        InitRender(surface.render, 1);
        for (const bool withTag : {true, false}) {
          surface.sample.render = withRender ? &surface.render : nullptr;
          surface.render.textureTag = withTag ? &surface.tag : nullptr;
          shader.Output(surface.sample);
        }
        FreeRender();
      }
    }
    ShaderUnderTest other(started, GetParam().pluginId);
    record.Copy(&instance, &other.instance);
    record.Compare(&instance, &other.instance);
    FakeStream stream;
    EXPECT_EQ(record.Write(&instance, stream.handle()), 1);
    record.Read(&other.instance, stream.handle());
  }
};

INSTANTIATE_TEST_SUITE_P(AllSurfaces, SurfaceFamilyTest, ::testing::ValuesIn(kSurfaces),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(SurfaceFamilyTest, FreeReleasesEverythingAlsoTwice) {
  record.Free(&instance);
  EXPECT_EQ(instance.data, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocksAtFirst);
  EXPECT_EQ(host.liveLinks, 0);
  EXPECT_EQ(host.liveTexts(), textsAtFirst);
  record.Free(&instance);
}

// --- messages ---

TEST_P(SurfaceFamilyTest, MessagesThatSayNothingChangeNothing) {
  const std::vector<StreamValue> before = Written();
  FakeContainer empty, strange;
  for (const std::int32_t key : {0, -2, 1, 999, 1019, 1099, INT32_MAX, INT32_MIN}) {
    strange.Set(key, 9.0f);
  }
  for (FakeContainer* payload : {&empty, &strange}) {
    EXPECT_EQ(shader.Message(MessageSetParameters, *payload), 1);
  }
  for (const std::int32_t id : {0, 112002, 112004, 112005, -1, INT32_MAX}) {
    EXPECT_EQ(shader.Message(id, strange), 1) << id;
  }
  for (const std::int32_t id : {112000, 112001, 112003, 1001257}) {
    EXPECT_EQ(record.Message(&instance, id, nullptr), 1) << "without a payload";
  }
  EXPECT_EQ(Written(), before);
}

// Every number gets a value of its own; what one shader tells another then tells the same.
TEST_P(SurfaceFamilyTest, GetThenSetTakesEveryParameterOver) {
  FakeContainer values;
  shader.Message(MessageGetParameters, values);
  float real = 0.125f;
  for (FakeContainer::Entry& entry : values.entries) {
    real += 0.25f;
    if (std::holds_alternative<float>(entry.value)) entry.value = real;
    if (std::holds_alternative<Word>(entry.value)) entry.value = static_cast<Word>(real * 4);
    if (std::holds_alternative<bool>(entry.value)) entry.value = !std::get<bool>(entry.value);
    if (std::holds_alternative<Vector>(entry.value)) entry.value = Vector{real, 2 * real, 0};
  }
  shader.Message(MessageSetParameters, values);
  FakeContainer told, toldByOther;
  shader.Message(MessageGetParameters, told);
  ShaderUnderTest other(started, GetParam().pluginId);
  other.Message(MessageSetParameters, told);
  other.Message(MessageGetParameters, toldByOther);
  ASSERT_EQ(told.entries.size(), toldByOther.entries.size());
  for (std::size_t i = 0; i < told.entries.size(); ++i) {
    const FakeContainer::Entry& entry = told.entries[i];
    EXPECT_EQ(entry.key, toldByOther.entries[i].key);
    if (std::holds_alternative<std::shared_ptr<FakeContainer>>(entry.value)) continue;
    EXPECT_TRUE(SameValue(entry.value, *values.Find(entry.key))) << entry.key;
    EXPECT_TRUE(SameValue(entry.value, toldByOther.entries[i].value)) << entry.key;
  }
}

// --- memory ---

// Alloc, Copy and InitRender with the first, the second, ... allocation failing, up to one that
// needs no more.
TEST_P(SurfaceFamilyTest, AFailingAllocationLeavesNothingBehind) {
  ShaderUnderTest other(started, GetParam().pluginId);
  Surface surface;
  const RenderInit init = {&surface.render, scene.handle()};
  record.Copy(&instance, &other.instance);  // a copy made again replaces what this one made
  const int blocks = host.liveBlocks();
  const int links = host.liveLinks;
  const int texts = host.liveTexts();
  for (int k = 1; k <= 6; ++k) {
    ShaderInstance bare = {};
    host.failAllocation = k;
    const std::int32_t made = record.Alloc(&bare);
    EXPECT_EQ(made != 0, bare.data != nullptr);
    record.Free(&bare);
    host.failAllocation = k;
    record.Copy(&instance, &other.instance);
    host.failAllocation = k;
    if (record.InitRender != nullptr) record.InitRender(&instance, &init);
    host.failAllocation = 0;
    shader.Output(surface.sample);
    FreeRender();
    EXPECT_EQ(host.liveBlocks(), blocks) << k;
    EXPECT_EQ(host.liveLinks, links) << k;
    EXPECT_EQ(host.liveTexts(), texts) << k;
    EXPECT_EQ(host.liveContainers, 0);
  }
}

// --- hostile blocks ---

TEST_P(SurfaceFamilyTest, AnyValueThatAMessageSetsIsHarmless) {
  FakeContainer initial;
  shader.Message(MessageGetParameters, initial);
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (const float real : {NAN, kInfinity, -kInfinity, 3e38f, -3e38f, 1e-40f, 0.0f}) {
    for (const std::int32_t number : {INT32_MIN, INT32_MAX, -1, 1000, 6}) {
      FakeContainer hostile = initial;
      for (FakeContainer::Entry& entry : hostile.entries) {
        if (std::holds_alternative<float>(entry.value)) entry.value = real;
        if (std::holds_alternative<Word>(entry.value)) entry.value = Word{number};
        if (std::holds_alternative<Vector>(entry.value)) entry.value = Vector{real, -real, real};
      }
      EXPECT_EQ(shader.Message(MessageSetParameters, hostile), 1);
      UseInEveryWay();
    }
  }
}

TEST_P(SurfaceFamilyTest, AnyValueInAFileIsHarmless) {
  FakeStream file;
  record.Write(&instance, file.handle());
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (const float real : {NAN, kInfinity, -3e38f}) {
    for (const std::int32_t number : {INT32_MIN, INT32_MAX, -1, 60}) {
      for (const bool withMarker : {true, false}) {
        FakeStream hostile;
        hostile.values = file.values;
        for (std::size_t i = withMarker ? 1 : 0; i < hostile.values.size(); ++i) {
          StreamValue& value = hostile.values[i];
          if (value.kind == StreamValue::Kind::Int) value.integer = number;
          value.real = real;
          value.vector = {real, real, -real};
          value.matrix = {value.vector, value.vector, {0, real, 0}, {1, 0, real}};
        }
        record.Read(&instance, hostile.handle());
        UseInEveryWay();
      }
    }
  }
}

TEST_P(SurfaceFamilyTest, AFileMayEndAnywhere) {
  FakeStream file;
  record.Write(&instance, file.handle());
  for (std::size_t length = 0; length <= file.values.size(); ++length) {
    FakeStream cut;
    cut.values.assign(file.values.begin(), file.values.begin() + std::ptrdiff_t(length));
    record.Read(&instance, cut.handle());
    UseInEveryWay();
  }
}

// --- threads ---

// Each thread has a surface of its own and sees it from another side.
TEST_P(SurfaceFamilyTest, SeveralThreadsSeeWhatOneSees) {
  constexpr int kThreads = 4, kSamples = 100;
  Surface shared;
  InitRender(shared.render, kThreads);
  const auto look = [&](int cpu, int i, Vector& result) {
    FakeHost::cpuIndex = cpu;
    Surface surface;
    const double angle = 0.06 * i;
    surface.ray.direction[0] = std::sin(angle);
    surface.ray.direction[1] = 0;
    surface.ray.direction[2] = -std::cos(angle);
    surface.render.hitPoint.x = static_cast<float>(i);
    record.Output(&result, &instance, &surface.sample);
  };
  std::vector<Vector> expected(kSamples);
  for (int i = 0; i < kSamples; ++i) look(0, i, expected[std::size_t(i)]);
  std::vector<std::vector<Vector>> seen(kThreads, std::vector<Vector>(kSamples));
  std::vector<std::thread> threads;
  for (int cpu = 0; cpu < kThreads; ++cpu) {
    threads.emplace_back([&, cpu] {
      for (int i = 0; i < kSamples; ++i) look(cpu, i, seen[std::size_t(cpu)][std::size_t(i)]);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::vector<Vector>& of : seen) {
    EXPECT_EQ(std::memcmp(of.data(), expected.data(), kSamples * sizeof(Vector)), 0);
  }
  FreeRender();
}

}  // namespace
}  // namespace sorvanix::test
