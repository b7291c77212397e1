#include "host/images/image_format.h"

#include <gtest/gtest.h>

namespace sorvanix::host {
namespace {

TEST(ImageFormat, TheExtensionChoosesTheFormatAndItsUsualDepth) {
  using enum PixelDepth;
  const struct {
    const char* file;
    ImageFormat format;
  } rows[] = {
      {"a.png", {FileFormat::Png, Eight}},    {"a.b/c.PNG", {FileFormat::Png, Eight}},
      {"a.tif", {FileFormat::Tiff, Eight}},   {"a.tiff", {FileFormat::Tiff, Eight}},
      {"a.exr", {FileFormat::OpenExr, Half}}, {"a.jpg", {FileFormat::Jpeg, Eight}},
      {"a.jpeg", {FileFormat::Jpeg, Eight}},
  };
  for (const auto& row : rows) {
    const auto format = ChooseImageFormat(row.file, std::nullopt);
    ASSERT_TRUE(format) << row.file;
    EXPECT_EQ(*format, row.format) << row.file;
  }
}

// What each format can hold, as its own definition says: PNG whole numbers of 8 and 16 bits, JPEG
// of 8, OpenEXR half and float; TIFF holds half in no widely read way.
TEST(ImageFormat, OnlyPossiblePairsAreAccepted) {
  using enum PixelDepth;
  const struct {
    const char* file;
    bool possible[4];  // 8, 16, half, float
  } rows[] = {
      {"a.png", {true, true, false, false}},
      {"a.tif", {true, true, false, true}},
      {"a.exr", {false, false, true, true}},
      {"a.jpg", {true, false, false, false}},
  };
  for (const auto& row : rows) {
    for (const PixelDepth depth : {Eight, Sixteen, Half, Float}) {
      const auto format = ChooseImageFormat(row.file, depth);
      EXPECT_EQ(format.has_value(), row.possible[static_cast<int>(depth)])
          << row.file << ' ' << NameOf(depth);
    }
  }
}

TEST(ImageFormat, ErrorsNameTheFileAndWhatIsPossible) {
  EXPECT_EQ(ChooseImageFormat("x.png", PixelDepth::Half).error(),
            "x.png: .png files hold a depth of 8 or 16, not half");
  EXPECT_EQ(ChooseImageFormat("x.bmp", std::nullopt).error(),
            "x.bmp: '.bmp' is no image format that can be written; these are: "
            ".png .tif .tiff .exr .jpg .jpeg");
  EXPECT_FALSE(ChooseImageFormat("png", std::nullopt));
  EXPECT_FALSE(ChooseImageFormat("", std::nullopt));
}

TEST(ImageFormat, DepthNamesReadBack) {
  for (const char* name : {"8", "16", "half", "float"}) {
    ASSERT_TRUE(DepthNamed(name)) << name;
    EXPECT_EQ(NameOf(*DepthNamed(name)), name);
  }
  EXPECT_FALSE(DepthNamed("32"));
  EXPECT_FALSE(DepthNamed(""));
}

}  // namespace
}  // namespace sorvanix::host
