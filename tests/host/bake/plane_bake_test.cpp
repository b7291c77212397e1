#include "host/bake/plane_bake.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <memory>

#include "host/bake/flat_bake.h"
#include "host/images/quantise.h"
#include "tests/host/render/fake_source.h"
#include "tests/host/render/matchers.h"
#include "tests/host/render/real_module.h"

namespace sorvanix::host {
namespace {

Vector PixelOf(const Image& image, int x, int y) {
  const float* pixel = image.rgb.data() + image.IndexOf(x, y);
  return {pixel[0], pixel[1], pixel[2]};
}

Image Bake(ChannelSource& source, const SurfaceBakeSettings& settings, int threads = 1) {
  return *BakePlane(source, settings, {.threads = threads}).image;
}

TEST(PlaneBake, TexelsAreWhereAFlatBakeHasThem) {
  FakeSource source([](ChannelSample& s) { return Vector{s.uvw.x, s.uvw.y, s.time}; });
  const Image image = Bake(source, {.width = 3, .height = 4, .time = 2});
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 3; ++x) {
      const Vector pixel = PixelOf(image, x, y);
      EXPECT_EQ(pixel.x, static_cast<float>(x / 3.0));
      EXPECT_EQ(pixel.y, static_cast<float>(y / 4.0));
      EXPECT_EQ(pixel.z, 2);
    }
  }
}

TEST(PlaneBake, SeveralSamplesSurroundTheTexelsMiddle) {
  FakeSource source([](ChannelSample& s) { return Vector{s.uvw.x, s.uvw.y, s.delta.x}; });
  // Texel (1, 0) of 2 x 1: its middle is (3/4, 1/2); half a sample is 1 / (2 * 2 * 2).
  const Image image = Bake(source, {.width = 2, .height = 1, .samples = 2});
  EXPECT_THAT(PixelOf(image, 1, 0), FloatVec(0.75, 0.5, 0.125));
}

TEST(PlaneBake, TheSurfaceIsAUnitSquareTowardsTheViewer) {
  FakeSource source([](ChannelSample& s) {
    const RenderContext& render = *s.render;
    EXPECT_THAT(render.hitPoint, FloatVec(s.uvw.x - 0.5, 0.5 - s.uvw.y, 0));
    EXPECT_THAT(render.faceNormal, FloatVec(0, 0, -1));
    EXPECT_THAT(render.tangentU, FloatVec(1, 0, 0));
    EXPECT_THAT(render.tangentV, FloatVec(0, -1, 0));
    EXPECT_EQ(render.ray->direction[2], 1);
    EXPECT_EQ(render.side, 1);
    EXPECT_EQ(render.lightCount, 0);
    EXPECT_EQ(render.uvwRecord->cornerCount, 4);
    EXPECT_NE(render.textureTag, nullptr);
    // A texel of 4 x 2 is 1/4 wide and 1/2 high.
    EXPECT_THAT(Vec3(render.footprintB) - Vec3(render.footprintA), NearVec(0.25, 0, 0, 2e-6));
    EXPECT_THAT(Vec3(render.footprintC) - Vec3(render.footprintA), NearVec(0, -0.5, 0, 2e-6));
    EXPECT_THAT(s.delta, FloatVec(0.125, 0.25, 0));
    return Vector{};
  });
  Bake(source, {.width = 4, .height = 2});
}

TEST(PlaneBake, TheRenderIsPreparedOnceAndUndone) {
  std::atomic<int> threads = 0;
  FakeSource source([&](ChannelSample& s) {
    threads = ShadingRecord::From(s.render)->frame->threadCount;
    return Vector{};
  });
  Bake(source, {.width = 8, .height = 8}, 3);
  EXPECT_EQ(source.inits, 1);
  EXPECT_EQ(source.frees, 1);
  EXPECT_NE(source.initContext, nullptr);
  EXPECT_EQ(threads, 3);
}

TEST(PlaneBake, ASourceThatRefusesGivesNoPicture) {
  FakeSource source([](ChannelSample&) { return Vector{}; });
  source.takesPart = false;
  const SurfaceBake bake = BakePlane(source, {.width = 8, .height = 8}, {.threads = 1});
  EXPECT_FALSE(bake.tookPart);
  EXPECT_FALSE(bake.image);
  EXPECT_EQ(source.frees, 1);
}

TEST(PlaneBake, ACancelledBakeGivesNoPicture) {
  FakeSource source([](ChannelSample&) { return Vector{}; });
  const std::atomic<bool> cancelled = true;
  const SurfaceBake bake = BakePlane(source, {}, {.threads = 2, .cancelled = &cancelled});
  EXPECT_TRUE(bake.tookPart);
  EXPECT_FALSE(bake.image);
}

TEST(NormalMap, FlatIsExactlyTheMiddle) {
  FakeSource source([](ChannelSample&) { return Vector{}; });
  for (const auto convention : {NormalConvention::OpenGl, NormalConvention::DirectX}) {
    const Image image = Bake(source, {.width = 5, .height = 5, .normalMap = convention});
    for (std::size_t i = 0; i < image.rgb.size(); i += 3) {
      EXPECT_EQ(Quantise(image.rgb[i], 255), 128u);
      EXPECT_EQ(Quantise(image.rgb[i + 1], 255), 128u);
      EXPECT_EQ(Quantise(image.rgb[i + 2], 255), 255u);
    }
  }
}

TEST(NormalMap, ConventionsDifferInTheSignOfGreen) {
  // Bent by (0.6, 0.48) along u and v: length 1 with 0.64 of the normal.
  FakeSource source([](ChannelSample& s) {
    RenderContext& render = *s.render;
    render.bumpNormal = (Vec3(render.tangentU) * 0.6 + Vec3(render.tangentV) * 0.48 +
                         Vec3(render.baseNormal) * 0.64)
                            .Narrow();
    return Vector{};
  });
  const auto texel = [&](NormalConvention convention) {
    return PixelOf(Bake(source, {.width = 2, .height = 2, .normalMap = convention}), 1, 1);
  };
  EXPECT_THAT(texel(NormalConvention::DirectX), FloatVec(0.8, 0.74, 0.82));
  EXPECT_THAT(texel(NormalConvention::OpenGl), FloatVec(0.8, 0.26, 0.82));
}

TEST(NormalMap, SeveralSamplesMakeAUnitVectorToo) {
  // Half of each texel leans by 3-4-5 to the right, half stands upright: (0.3, 0, 0.9) on average,
  // which is (1, 0, 3) / sqrt(10) as a unit vector.
  FakeSource source([](ChannelSample& s) {
    RenderContext& render = *s.render;
    const Vec3 upright(render.baseNormal), right(render.tangentU);
    const bool isRight = s.uvw.x * 4 - std::floor(s.uvw.x * 4) >= 0.5f;
    render.bumpNormal = (isRight ? right * 0.6 + upright * 0.8 : upright).Narrow();
    return Vector{};
  });
  const Image image =
      Bake(source, {.width = 4, .height = 4, .samples = 2, .normalMap = NormalConvention::OpenGl});
  EXPECT_THAT(PixelOf(image, 2, 2),
              FloatVec(0.5 + 0.5 / std::sqrt(10), 0.5, 0.5 + 1.5 / std::sqrt(10)));
}

// A picture of 8 x 4 that grows brighter by 1/8 a pixel to the right and by 1/16 downwards.
struct Ramp : Texture {
  std::int32_t Width() const noexcept override { return 8; }
  std::int32_t Height() const noexcept override { return 4; }
  Vector Sample(const TextureLookup& lookup) const noexcept override {
    const float value = lookup.uvw.x + lookup.uvw.y * 0.25f;
    return {value, value, value};
  }
  tl::expected<Image, std::string> Pixels() const override { return Image(8, 4); }
};

/// Every bitmap is the ramp as long as this lives.
class OnlyRamps {
 public:
  OnlyRamps() = default;
  OnlyRamps(const OnlyRamps&) = delete;
  OnlyRamps& operator=(const OnlyRamps&) = delete;
  ~OnlyRamps() { SetTextureLoader(former_); }

 private:
  const TextureLoader former_ = SetTextureLoader(
      [](const std::filesystem::path&) -> tl::expected<TexturePointer, std::string> {
        return std::make_shared<Ramp>();
      });
};

TEST(NormalMap, ABitmapInTheBumpChannelIsAHeight) {
  const OnlyRamps ramps;
  Link link;
  link.HoldBitmap("ramp.png");
  LinkSource source(link);
  const Image image =
      Bake(source, {.width = 4, .height = 4, .normalMap = NormalConvention::DirectX});
  // Over two pixels it rises by 1/4 along u and by 1/8 along v: slopes of 3.5/4 and 3.5/8, away
  // from which the normal leans.
  const Vec3 normal = Normalised({-3.5 / 4, -3.5 / 8, 1});
  EXPECT_THAT(PixelOf(image, 2, 1),
              FloatVec(0.5 + normal.x / 2, 0.5 + normal.y / 2, 0.5 + normal.z / 2));
}

TEST(PlaneBakeOfTheModule, AFilterOfAKnownHeightHasTheSlopeOfItsFormula) {
  const RealModule real;
  const OnlyRamps ramps;
  Container bitmap, parameters, description;
  bitmap.Set(KeyLinkPluginId, Word{0});
  bitmap.Set(KeyLinkFilename, Filename("ramp.png"));
  parameters.Set(1004, NestedContainer(bitmap));  // input
  description.Set(KeyLinkPluginId, Word{PluginIdBrightContrast});
  description.Set(KeyLinkParameters, NestedContainer(parameters));
  Link link;
  ASSERT_EQ(link.Message(MessageSetParameters, description), 1);
  link.HeldShader()->Instance().channel = ChannelBump;
  LinkSource source(link);
  const auto texel = [&](NormalConvention convention) {
    return PixelOf(Bake(source, {.width = 4, .height = 4, .normalMap = convention}), 2, 1);
  };
  // Bright/Contrast leaves the ramp as it is at first. At (1/2, 1/4) its four taps, a pixel of
  // 1/8 x 1/4 away, are 11/16 and 7/16 along u, 10/16 and 8/16 along v. The normal leans by 3.5
  // times the lower less the higher one along u, and, as filters have it, by 3.5 times the higher
  // less the lower one along v.
  const Vec3 normal = Normalised({-3.5 * 4 / 16, 3.5 * 2 / 16, 1});
  EXPECT_THAT(texel(NormalConvention::DirectX),
              FloatVec(0.5 + normal.x / 2, 0.5 + normal.y / 2, 0.5 + normal.z / 2));
  EXPECT_THAT(texel(NormalConvention::OpenGl),
              FloatVec(0.5 + normal.x / 2, 0.5 - normal.y / 2, 0.5 + normal.z / 2));
}

TEST(PlaneBakeOfTheModule, FlatShadersLookAsInAFlatBake) {
  RealModule real;
  auto shader = real.module.Create(PluginIdNoise2D, ChannelColour);
  ASSERT_TRUE(shader);
  const auto flat = BakeFlat([&](ChannelSample& s) { return shader->Output(s); },
                             {.width = 24, .height = 16}, {.threads = 1});
  ShaderSource source(*shader);
  const Image plane = Bake(source, {.width = 24, .height = 16}, 2);
  EXPECT_EQ(plane.rgb, flat->rgb);
}

TEST(PlaneBakeOfTheModule, NoiseBendsNormals) {
  RealModule real;
  auto shader = real.module.Create(PluginIdNoise2D, ChannelBump);
  ASSERT_TRUE(shader);
  ShaderSource source(*shader);
  const SurfaceBakeSettings settings = {
      .width = 32, .height = 32, .normalMap = NormalConvention::OpenGl};
  const Image one = Bake(source, settings, 1);
  int bent = 0;
  for (std::size_t i = 0; i < one.rgb.size(); i += 3) {
    const Vec3 normal = Vec3(one.rgb[i], one.rgb[i + 1], one.rgb[i + 2]) * 2 - Vec3(1, 1, 1);
    EXPECT_NEAR(Length(normal), 1, 1e-5);
    if (normal.z < 0.99) ++bent;
  }
  EXPECT_GT(bent, 100);
  EXPECT_EQ(Bake(source, settings, 4).rgb, one.rgb);
}

}  // namespace
}  // namespace sorvanix::host
