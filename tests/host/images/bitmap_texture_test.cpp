// Bitmaps as textures: exact texels, wrapping, widths, grey and alpha, files that cannot be read.
#include <OpenImageIO/imageio.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <thread>
#include <vector>

#include "host/images/bitmap_texture.h"

namespace sorvanix::host {

void PrintTo(const TextureLookup& lookup, std::ostream* out) {
  *out << '(' << lookup.uvw.x << ", " << lookup.uvw.y << ')';
}

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr std::int32_t kTile = 1;
constexpr std::int32_t kMirrored = 3;

class BitmapTextures : public ::testing::Test {
 protected:
  BitmapTextures() {
    folder_ = std::filesystem::path(::testing::TempDir()) /
              ("bitmap textures \xC3\xBC " + std::to_string(::getpid()));
    std::filesystem::create_directories(folder_);
  }
  ~BitmapTextures() override { std::filesystem::remove_all(folder_); }

  // Writes an image of whole 255ths and opens it.
  TexturePointer Open(int width, int height, int channels, const std::vector<int>& bytes) {
    const auto file = folder_ / "image.png";
    const std::vector<unsigned char> pixels(bytes.begin(), bytes.end());
    OIIO::ImageSpec spec(width, height, channels, OIIO::TypeDesc::UINT8);
    spec.attribute("oiio:UnassociatedAlpha", 1);
    auto output = OIIO::ImageOutput::create(file.string());
    EXPECT_TRUE(output && output->open(file.string(), spec) &&
                output->write_image(OIIO::TypeDesc::UINT8, pixels.data()) && output->close());
    const auto texture = OpenBitmapTexture(file);
    EXPECT_TRUE(texture) << texture.error();
    return texture.value_or(nullptr);
  }

  std::filesystem::path folder_;
};

// The red of a sample without width, in 255ths.
float RedAt(const Texture& texture, float u, float v, std::int32_t tagFlag = 0) {
  return texture.Sample({.uvw = {u, v, 0}, .tagFlag = tagFlag}).x * 255;
}

std::vector<float> ColourOf(const Vector& colour) {
  return {std::round(colour.x * 255), std::round(colour.y * 255), std::round(colour.z * 255)};
}

// Four grey columns.
const std::vector<int> kColumns = {0, 51, 102, 255};

TEST_F(BitmapTextures, ATexelIsMetExactlyAtItsCentreTheFirstRowBeingTheTopOne) {
  const auto texture = Open(2, 2, 3, {10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120});
  EXPECT_EQ(texture->Width(), 2);
  EXPECT_EQ(texture->Height(), 2);
  const auto at = [&](float u, float v) { return ColourOf(texture->Sample({.uvw = {u, v, 0}})); };
  EXPECT_THAT(at(0.25f, 0.25f), ElementsAre(10, 20, 30));
  EXPECT_THAT(at(0.75f, 0.25f), ElementsAre(40, 50, 60));
  EXPECT_THAT(at(0.25f, 0.75f), ElementsAre(70, 80, 90));
  EXPECT_THAT(at(0.75f, 0.75f), ElementsAre(100, 110, 120));
}

TEST_F(BitmapTextures, ASampleAsWideAsATexelStillMeetsItExactly) {
  const auto texture = Open(4, 1, 1, kColumns);
  // Half a texel to either side.
  EXPECT_NEAR(texture->Sample({.uvw = {0.375f, 0.5f, 0}, .delta = {0.125f, 0.5f, 0}}).x * 255, 51,
              1e-3);
}

TEST_F(BitmapTextures, ColoursBetweenTexelsAreBlended) {
  const auto texture = Open(4, 1, 1, kColumns);
  // Half way from 51 to 102, and a quarter of the way from 102 to 255.
  EXPECT_NEAR(RedAt(*texture, 0.5f, 0.5f), 76.5f, 0.01f);
  EXPECT_NEAR(RedAt(*texture, 0.6875f, 0.5f), 140.25f, 0.01f);
}

TEST_F(BitmapTextures, WithoutTileTheBorderGoesOn) {
  const auto texture = Open(4, 1, 1, kColumns);
  EXPECT_NEAR(RedAt(*texture, -3.3f, 0.5f), 0, 1e-3);
  EXPECT_NEAR(RedAt(*texture, 0.0f, 0.5f), 0, 1e-3);
  EXPECT_NEAR(RedAt(*texture, 1.0f, 0.5f), 255, 1e-3);
  EXPECT_NEAR(RedAt(*texture, 1e30f, 0.5f), 255, 1e-3);
  EXPECT_NEAR(RedAt(*texture, kInfinity, 0.5f), 255, 1e-3);
}

TEST_F(BitmapTextures, WithTileThePictureRepeats) {
  const auto texture = Open(4, 1, 1, kColumns);
  EXPECT_NEAR(RedAt(*texture, 5.375f, 0.5f, kTile), 51, 1e-3);
  EXPECT_NEAR(RedAt(*texture, -0.625f, 7.5f, kTile), 51, 1e-3);
  // The border between the last column and the first.
  EXPECT_NEAR(RedAt(*texture, 2.0f, 0.5f, kTile), 127.5f, 0.01f);
}

TEST_F(BitmapTextures, WithTileAndMirroredEveryOtherRepetitionIsReversed) {
  const auto texture = Open(4, 1, 1, kColumns);
  EXPECT_NEAR(RedAt(*texture, 0.375f, 0.5f, kMirrored), 51, 1e-3);
  EXPECT_NEAR(RedAt(*texture, 1.625f, 0.5f, kMirrored), 51, 1e-3);
  EXPECT_NEAR(RedAt(*texture, 2.375f, 0.5f, kMirrored), 51, 1e-3);
  EXPECT_NEAR(RedAt(*texture, -0.375f, 0.5f, kMirrored), 51, 1e-3);
}

TEST_F(BitmapTextures, MirroredWithoutTileDoesNotRepeat) {
  const auto texture = Open(4, 1, 1, kColumns);
  EXPECT_NEAR(RedAt(*texture, 1.625f, 0.5f, 2), 255, 1e-3);
}

TEST_F(BitmapTextures, ATagFlagIsReadByItsBitsThoughItBeNegative) {
  const auto texture = Open(4, 1, 1, kColumns);
  EXPECT_NEAR(RedAt(*texture, 1.375f, 0.5f, -127), 51, 1e-3);  // 0x81: tile, and the highest bit
}

TEST_F(BitmapTextures, CoordinatesThatAreNoNumbersAreBlack) {
  const auto texture = Open(4, 1, 1, {255, 255, 255, 255});
  EXPECT_EQ(RedAt(*texture, kNaN, 0.5f), 0);
  EXPECT_EQ(RedAt(*texture, 0.5f, kNaN, kTile), 0);
  EXPECT_EQ(RedAt(*texture, kInfinity, 0.5f, kTile), 0);
  EXPECT_EQ(RedAt(*texture, -kInfinity, 0.5f, kMirrored), 0);
}

TEST_F(BitmapTextures, AWideSampleAnswersTheMeanOfWhatItCovers) {
  std::vector<int> checks;
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) checks.push_back((x + y) % 2 * 255);
  }
  const auto texture = Open(64, 64, 1, checks);
  const auto red = [&](const Vector& delta, float blur) {
    return texture->Sample({.uvw = {0.5078125f, 0.5078125f, 0}, .delta = delta, .blur = blur}).x;
  };
  // The texel (32, 32), whose sum is even, is black; every 2 x 2 texels are half white, half black.
  EXPECT_NEAR(red({0, 0, 0}, 0), 0, 1e-6);
  EXPECT_NEAR(red({1 / 16.0f, 1 / 16.0f, 0}, 0), 0.5f, 0.01f);
  EXPECT_NEAR(red({-1 / 16.0f, -1 / 16.0f, 0}, 0), 0.5f, 0.01f) << "the sign of delta";
  EXPECT_NEAR(red({0, 0, 0}, 0.125f), 0.5f, 0.01f) << "blur";
  EXPECT_NEAR(red({1e30f, kInfinity, 0}, 0), 0.5f, 0.01f) << "wider than the picture";
  EXPECT_NEAR(red({kNaN, kNaN, 0}, kNaN), 0, 1e-6) << "no width";
}

TEST_F(BitmapTextures, GreyFilesAnswerGreyAndAlphaIsIgnored) {
  EXPECT_THAT(ColourOf(Open(1, 1, 1, {77})->Sample({.uvw = {0.5f, 0.5f, 0}})),
              ElementsAre(77, 77, 77));
  EXPECT_THAT(ColourOf(Open(1, 1, 2, {77, 10})->Sample({.uvw = {0.5f, 0.5f, 0}})),
              ElementsAre(77, 77, 77));
  EXPECT_THAT(ColourOf(Open(1, 1, 4, {200, 100, 50, 128})->Sample({.uvw = {0.5f, 0.5f, 0}})),
              ElementsAre(200, 100, 50));
}

TEST_F(BitmapTextures, PixelsAreThoseOfTheFile) {
  const auto image = Open(2, 1, 4, {200, 100, 50, 128, 1, 2, 3, 4})->Pixels();
  ASSERT_TRUE(image) << image.error();
  EXPECT_EQ(image->width, 2);
  EXPECT_EQ(image->height, 1);
  std::vector<float> bytes;
  for (const float value : image->rgb) bytes.push_back(std::round(value * 255));
  EXPECT_THAT(bytes, ElementsAre(200, 100, 50, 1, 2, 3));
}

TEST_F(BitmapTextures, GreyPixelsAreReplicated) {
  const auto image = Open(2, 1, 1, {0, 255})->Pixels();
  ASSERT_TRUE(image) << image.error();
  EXPECT_THAT(image->rgb, ElementsAre(0, 0, 0, 1, 1, 1));
}

TEST_F(BitmapTextures, SeveralThreadsReadTheSame) {
  std::vector<int> ramp;
  for (int i = 0; i < 256; ++i) ramp.push_back(i);
  const auto texture = Open(256, 1, 1, ramp);
  std::vector<std::vector<float>> rows(8);
  {
    std::vector<std::jthread> threads;
    for (auto& row : rows) {
      threads.emplace_back([&row, &texture] {
        for (int i = 0; i < 1000; ++i) {
          row.push_back(RedAt(*texture, static_cast<float>(i) / 1000, 0.5f));
        }
      });
    }
  }
  for (const auto& row : rows) EXPECT_EQ(row, rows[0]);
  EXPECT_NEAR(rows[0][500], 127.5f, 0.01f);
}

TEST_F(BitmapTextures, AMissingFileIsOneLineWithItsName) {
  const auto texture = OpenBitmapTexture(folder_ / "missing.png");
  ASSERT_FALSE(texture);
  EXPECT_THAT(texture.error(), HasSubstr("missing.png: no such file"));
}

TEST_F(BitmapTextures, AFolderAndATextAreNoImages) {
  EXPECT_THAT(OpenBitmapTexture(folder_).error(), HasSubstr(": not an image file"));
  const auto text = folder_ / "text.png";
  std::ofstream(text) << "this is no picture\n";
  const auto texture = OpenBitmapTexture(text);
  ASSERT_FALSE(texture);
  EXPECT_THAT(texture.error(), StartsWith((folder_ / "text.png: ").string()));
  EXPECT_EQ(texture.error().find('\n'), std::string::npos);
}

TEST_F(BitmapTextures, AFileWithoutItsLastBytesIsRefusedThoughItsHeaderIsWhole) {
  std::vector<int> noise;  // nothing that packs well, so that a quarter holds no whole picture
  for (int i = 0; i < 64 * 64; ++i) noise.push_back(i * i % 251);
  Open(64, 64, 1, noise);
  const auto file = folder_ / "image.png";
  std::filesystem::resize_file(file, std::filesystem::file_size(file) / 4);
  EXPECT_FALSE(OpenBitmapTexture(file));
}

TEST_F(BitmapTextures, AFileThatChangedIsReadAnewOnceNobodyHoldsTheFormerOne) {
  EXPECT_NEAR(RedAt(*Open(1, 1, 1, {255}), 0.5f, 0.5f), 255, 1e-3);
  EXPECT_NEAR(RedAt(*Open(1, 1, 1, {51}), 0.5f, 0.5f), 51, 1e-3);
}

}  // namespace
}  // namespace sorvanix::host
