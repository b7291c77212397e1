// 2D and 3D Noise over the host's own noise: the same bytes on any number of threads, and sane
// pictures.
#include <cmath>
#include <cstring>
#include <thread>
#include <vector>

#include "tests/host/module/loaded.h"

namespace sorvanix::host::test {
namespace {

constexpr int kSide = 48;
constexpr std::int32_t kNoiseTypes = 30;
constexpr std::int32_t kWhiteRandom = 17;
constexpr std::int32_t kKeyType = 1000;  // of both shaders

using Picture = std::vector<Vector>;

struct NoiseRenderTest : RealModuleTest, ::testing::WithParamInterface<std::int32_t> {
  // Rows are dealt out to the threads in turn.
  static Picture Render(Shader& shader, int threads) {
    Picture picture(kSide * kSide);
    const auto shadeRows = [&](int first) {
      for (int y = first; y < kSide; y += threads) {
        for (int x = 0; x < kSide; ++x) {
          ChannelSample sample = {};
          sample.uvw = {static_cast<float>(x) / kSide, static_cast<float>(y) / kSide, 0.25f};
          sample.delta = {0.5f / kSide, 0.5f / kSide, 0};
          sample.blurScale = 1;
          picture[static_cast<std::size_t>(y * kSide + x)] = shader.Output(sample);
        }
      }
    };
    std::vector<std::jthread> workers;
    for (int i = 0; i < threads; ++i) workers.emplace_back(shadeRows, i);
    workers.clear();
    return picture;
  }
  Shader NoiseOfType(std::int32_t type) {
    Shader shader = module.Create(GetParam(), ChannelColour).value();
    Container parameters;
    parameters.Set(kKeyType, Word{type});
    shader.SetParameters(parameters);
    return shader;
  }
};

INSTANTIATE_TEST_SUITE_P(BothNoises, NoiseRenderTest,
                         ::testing::Values(PluginIdNoise2D, PluginIdNoise3D), [](const auto& info) {
                           return info.param == PluginIdNoise2D ? "Noise2D" : "Noise3D";
                         });

TEST_P(NoiseRenderTest, EightThreadsGiveTheSameBytesAsOneInEveryTypeButWhiteNoise) {
  for (std::int32_t type = 0; type < kNoiseTypes; ++type) {
    if (type == kWhiteRandom) continue;  // draws from a shared sequence
    Shader shader = NoiseOfType(type);
    const Picture one = Render(shader, 1), eight = Render(shader, 8);
    EXPECT_EQ(std::memcmp(one.data(), eight.data(), one.size() * sizeof(Vector)), 0) << type;
  }
}

TEST_P(NoiseRenderTest, EveryTypeStaysWithinItsColoursAndIsNotFlat) {
  for (std::int32_t type = 0; type < kNoiseTypes; ++type) {
    Shader shader = NoiseOfType(type);
    float low = 2, high = -1;
    for (const Vector& colour : Render(shader, 2)) {
      ASSERT_TRUE(std::isfinite(colour.x)) << type;
      low = std::fmin(low, colour.x);
      high = std::fmax(high, colour.x);
    }
    EXPECT_GE(low, 0) << type;
    EXPECT_LE(high, 1) << type;
    EXPECT_GT(high - low, 0.1f) << type;
  }
}

}  // namespace
}  // namespace sorvanix::host::test
