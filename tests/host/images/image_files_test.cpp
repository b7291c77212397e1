// Image files written and read back: the values, the tags, the bytes.
#include <OpenImageIO/imageio.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

#include "host/images/image_info.h"
#include "host/images/image_writer.h"

namespace sorvanix::host {
namespace {

constexpr ImageFormat kPng8 = {FileFormat::Png, PixelDepth::Eight};
constexpr ImageFormat kPng16 = {FileFormat::Png, PixelDepth::Sixteen};
constexpr ImageFormat kTiff8 = {FileFormat::Tiff, PixelDepth::Eight};
constexpr ImageFormat kTiff16 = {FileFormat::Tiff, PixelDepth::Sixteen};
constexpr ImageFormat kTiffFloat = {FileFormat::Tiff, PixelDepth::Float};
constexpr ImageFormat kExrHalf = {FileFormat::OpenExr, PixelDepth::Half};
constexpr ImageFormat kExrFloat = {FileFormat::OpenExr, PixelDepth::Float};
constexpr ImageFormat kJpeg8 = {FileFormat::Jpeg, PixelDepth::Eight};

constexpr ImageFormat kLossless[] = {kPng8,      kPng16,   kTiff8,   kTiff16,
                                     kTiffFloat, kExrHalf, kExrFloat};

const Provenance kProvenance = {
    "sorvaNIX 1.2.3", "{\"material\":{\"shader\":\"2D Noise\"},\"note\":\"\xC3\xBC \\\" \"}"};

// Whole 255ths, which every depth of 8 bits and more tells apart.
Image Gradient(int width, int height) {
  Image image(width, height);
  for (std::size_t i = 0; i < image.rgb.size(); ++i) {
    image.rgb[i] = static_cast<float>(i % 256) / 255.0f;
  }
  return image;
}

class ImageFiles : public ::testing::Test {
 protected:
  ~ImageFiles() override { std::filesystem::remove(file_); }

  void Write(const Image& image, ImageFormat format, const Provenance& provenance = kProvenance) {
    constexpr const char* kExtensions[] = {".png", ".tif", ".exr", ".jpg"};
    Use(kExtensions[static_cast<int>(format.file)]);
    const auto hash = WriteImage(file_, image, format, provenance);
    ASSERT_TRUE(hash) << hash.error();
    hash_ = *hash;
  }
  void Store(const std::string& bytes) {
    Use(".png");
    std::ofstream(file_, std::ios::binary) << bytes;
  }
  std::string Bytes() {
    std::ifstream stream(file_, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  std::vector<float> ReadValues() {
    const auto input = OIIO::ImageInput::open(file_.string());
    if (!input) return {};
    std::vector<float> values(input->spec().image_pixels() * 3);
    input->read_image(0, 0, 0, 3, OIIO::TypeDesc::FLOAT, values.data());
    return values;
  }

  void Use(const char* extension) {
    std::filesystem::remove(file_);
    const char* test = testing::UnitTest::GetInstance()->current_test_info()->name();
    file_ =
        std::filesystem::path(testing::TempDir()) / (std::string("sorvanix_") + test + extension);
  }

  std::filesystem::path file_;
  std::string hash_;
};

TEST_F(ImageFiles, ValuesAndRowOrderSurviveEveryLosslessFormat) {
  const Image image = Gradient(5, 3);
  for (const ImageFormat format : kLossless) {
    Write(image, format);
    const std::vector<float> values = ReadValues();
    ASSERT_EQ(values.size(), image.rgb.size());
    // Half floats keep 11 bits: below 1 the step is at most 2^-11, rounding errs by half of it.
    const float tolerance = format.depth == PixelDepth::Half ? 0x1p-12f : 1e-7f;
    for (std::size_t i = 0; i < values.size(); ++i) {
      EXPECT_NEAR(values[i], image.rgb[i], tolerance) << NameOf(format.depth) << ' ' << i;
    }
  }
}

TEST_F(ImageFiles, FloatDepthsKeepValuesOutsideTheUnitRangeAsTheyAre) {
  Image image(2, 1);
  image.rgb = {-3.25f, 1e30f, 0.1f, std::numeric_limits<float>::infinity(), 7.0f, -0.0f};
  for (const ImageFormat format : {kTiffFloat, kExrFloat}) {
    Write(image, format);
    EXPECT_EQ(ReadValues(), image.rgb);
  }
}

TEST_F(ImageFiles, WholeNumberDepthsSaturateAndTurnNanIntoBlack) {
  Image image(2, 1);
  image.rgb = {-1, 2, std::nanf(""), std::numeric_limits<float>::infinity(), 0, 1};
  for (const ImageFormat format : {kPng8, kPng16, kTiff8, kTiff16}) {
    Write(image, format);
    EXPECT_THAT(ReadValues(), testing::ElementsAre(0, 1, 0, 1, 0, 1));
  }
}

TEST_F(ImageFiles, ProvenanceSurvivesEveryFormat) {
  for (const ImageFormat format :
       {kPng8, kPng16, kTiff8, kTiff16, kTiffFloat, kExrHalf, kExrFloat, kJpeg8}) {
    Write(Gradient(8, 8), format);
    const auto info = ReadImageInfo(file_);
    ASSERT_TRUE(info) << info.error();
    EXPECT_EQ(info->program, kProvenance.program);
    EXPECT_EQ(info->recipe, kProvenance.recipe);
    EXPECT_EQ(info->recordedHash, KeepsPixels(format.file) ? hash_ : "");
    EXPECT_TRUE(info->Intact());
    EXPECT_EQ(info->colourSpace, "sRGB");
    EXPECT_EQ(info->width, 8);
    EXPECT_EQ(info->height, 8);
    EXPECT_EQ(info->channels, 3);
    EXPECT_EQ(info->depth, NameOf(format.depth));
  }
}

TEST_F(ImageFiles, PngAndExrKeepTheProvenanceAsAttributesToo) {
  for (const ImageFormat format : {kPng8, kExrHalf}) {
    Write(Gradient(2, 2), format);
    const auto input = OIIO::ImageInput::open(file_.string());
    ASSERT_TRUE(input);
    EXPECT_EQ(input->spec().get_string_attribute("sorvanix:recipe"), kProvenance.recipe);
    EXPECT_EQ(input->spec().get_string_attribute("sorvanix:program"), kProvenance.program);
    EXPECT_EQ(input->spec().get_string_attribute("sorvanix:pixelHash"), hash_);
    EXPECT_EQ(input->spec().get_string_attribute("Software"), kProvenance.program);
  }
}

TEST_F(ImageFiles, TheHashIsThatOfThePixelsInTheFile) {
  for (const ImageFormat format : kLossless) {
    Write(Gradient(7, 5), format);
    const auto info = ReadImageInfo(file_);
    ASSERT_TRUE(info) << info.error();
    EXPECT_EQ(info->pixelHash, hash_);
    EXPECT_TRUE(info->Intact());
  }
}

// The SHA-1 of the three bytes "abc" (61 62 63) is the first example of FIPS 180-1. A pixel of
// those bytes is a file's smallest case.
TEST_F(ImageFiles, TheHashOfOnePixelIsThePublishedOne) {
  Image image(1, 1);
  image.rgb = {0x61 / 255.0f, 0x62 / 255.0f, 0x63 / 255.0f};
  Write(image, kPng8);
  EXPECT_EQ(hash_, "A9993E364706816ABA3E25717850C26C9CD0D89D");
}

TEST_F(ImageFiles, EqualPicturesGiveEqualBytesAndOthersDoNot) {
  for (const ImageFormat format :
       {kPng8, kPng16, kTiff8, kTiffFloat, kExrHalf, kExrFloat, kJpeg8}) {
    Image image = Gradient(6, 6);
    Write(image, format);
    const std::string first = Bytes();
    const std::string firstHash = hash_;
    Write(image, format);
    EXPECT_EQ(Bytes(), first);
    image.rgb[0] = 1;
    Write(image, format);
    EXPECT_NE(Bytes(), first);
    EXPECT_NE(hash_, firstHash);
  }
}

Provenance WithRecipeOf(std::size_t length) {
  const std::string frame = R"({"x":""})";
  return {"p", R"({"x":")" + std::string(length - frame.size(), 'x') + R"("})"};
}

TEST_F(ImageFiles, ARecipeThatFitsSurvives) {
  const struct {
    ImageFormat format;
    std::size_t length;
  } rows[] = {{kJpeg8, 29000}, {kTiff8, 64000}, {kPng8, 1000000}, {kExrHalf, 1000000}};
  for (const auto& row : rows) {
    const Provenance lengthy = WithRecipeOf(row.length);
    Write(Gradient(8, 8), row.format, lengthy);
    EXPECT_TRUE(ReadImageInfo(file_)->recipe == lengthy.recipe) << file_;
  }
}

TEST_F(ImageFiles, ARecipeTooLongForTheFormatIsLeftOutAndTheRestKept) {
  for (const ImageFormat format : {kJpeg8, kTiff8}) {
    Write(Gradient(8, 8), format, WithRecipeOf(100000));
    const auto info = ReadImageInfo(file_);
    EXPECT_EQ(info->recipe, "");
    EXPECT_EQ(info->program, "p");
    EXPECT_EQ(info->recordedHash, KeepsPixels(format.file) ? hash_ : "");
  }
}

// Three values a pixel: 4 bytes each as they are made, then twice those of the file's depth.
TEST(WrittenPictures, TheirMemoryIsThatOfAllTheirForms) {
  EXPECT_EQ(WrittenBytes(10, 1, PixelDepth::Eight), 10 * 3 * (4 + 2 * 1));
  EXPECT_EQ(WrittenBytes(10, 1, PixelDepth::Half), 10 * 3 * (4 + 2 * 2));
  EXPECT_EQ(WrittenBytes(65536, 65536, PixelDepth::Float), 0x1p32 * 3 * (4 + 2 * 4));
}

TEST(LargePictures, AreRefusedByTheirHeadersAlone) {
  EXPECT_EQ(TooLarge(65536, 1, 12), "");
  EXPECT_EQ(TooLarge(65537, 1, 3), "65537 x 1 pixels are too many");
  // 2^32 pixels of a thousand bytes: 4 TB.
  EXPECT_NE(TooLarge(65536, 65536, 1000), "");
}

TEST_F(ImageFiles, ATruncatedFileIsAnErrorOfOneLine) {
  Write(Gradient(64, 64), kExrHalf);
  const std::string bytes = Bytes();
  std::ofstream(file_, std::ios::binary) << bytes.substr(0, bytes.size() / 2);
  const auto info = ReadImageInfo(file_);
  ASSERT_FALSE(info);
  EXPECT_EQ(info.error().find('\n'), std::string::npos);
  EXPECT_FALSE(info.error().empty());
}

TEST_F(ImageFiles, AFileThatIsNoImageIsAnError) {
  Store("hello");
  EXPECT_FALSE(ReadImageInfo(file_));
  Store("");
  EXPECT_FALSE(ReadImageInfo(file_));
}

TEST_F(ImageFiles, APlaceThatCannotBeWrittenIsAnErrorOfOneLine) {
  for (const ImageFormat format : {kPng8, kTiff8, kExrHalf, kJpeg8}) {
    const auto hash = WriteImage("/dev/null/x", Gradient(2, 2), format, kProvenance);
    ASSERT_FALSE(hash);
    EXPECT_EQ(hash.error().find('\n'), std::string::npos) << hash.error();
    EXPECT_FALSE(hash.error().empty());
  }
}

TEST_F(ImageFiles, AFullDiskIsAnError) {
  for (const ImageFormat format : {kPng8, kExrHalf, kJpeg8}) {
    EXPECT_FALSE(WriteImage("/dev/full", Gradient(200, 200), format, kProvenance));
  }
}

TEST(ImageInfo, OtherPixelsThanThoseRecordedAreNoticed) {
  ImageInfo info;
  info.pixelHash = "A";
  EXPECT_TRUE(info.Intact());  // nothing is recorded
  info.recordedHash = "A";
  EXPECT_TRUE(info.Intact());
  info.recordedHash = "B";
  EXPECT_FALSE(info.Intact());
}

}  // namespace
}  // namespace sorvanix::host
