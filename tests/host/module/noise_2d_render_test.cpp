// 2D Noise over the host's own noise: the same bytes on any number of threads, and sane pictures.
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
constexpr std::int32_t kKeyType = 1000;

using Picture = std::vector<Vector>;

struct Noise2DRenderTest : RealModuleTest {
  // Rows are dealt out to the threads in turn.
  static Picture Render(Shader& shader, int threads) {
    Picture picture(kSide * kSide);
    const auto shadeRows = [&](int first) {
      for (int y = first; y < kSide; y += threads) {
        for (int x = 0; x < kSide; ++x) {
          ChannelSample sample = {};
          sample.uvw = {static_cast<float>(x) / kSide, static_cast<float>(y) / kSide, 0};
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
    Shader shader = module.Create(PluginIdNoise2D, ChannelColour).value();
    Container parameters;
    parameters.Set(kKeyType, Word{type});
    shader.SetParameters(parameters);
    return shader;
  }
};

TEST_F(Noise2DRenderTest, EightThreadsGiveTheSameBytesAsOneInEveryTypeButWhiteNoise) {
  for (std::int32_t type = 0; type < kNoiseTypes; ++type) {
    if (type == kWhiteRandom) continue;  // draws from a shared sequence
    Shader shader = NoiseOfType(type);
    const Picture one = Render(shader, 1), eight = Render(shader, 8);
    EXPECT_EQ(std::memcmp(one.data(), eight.data(), one.size() * sizeof(Vector)), 0) << type;
  }
}

TEST_F(Noise2DRenderTest, EveryTypeStaysWithinItsColoursAndIsNotFlat) {
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
