// Bitmaps through their table: sizes, pixels, limits, files, null.
#include "host/channels/bitmap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/host/channels/fake_shaders.h"

namespace sorvanix::host {
namespace {

using ::testing::ElementsAre;

class Bitmaps : public ::testing::Test {
 protected:
  ~Bitmaps() override { table_.free(bitmap_); }

  std::vector<std::int32_t> PixelAt(std::int32_t x, std::int32_t y) {
    std::int32_t red = -1, green = -1, blue = -1;
    table_.getPixel(bitmap_, x, y, &red, &green, &blue);
    return {red, green, blue};
  }

  fake::LinkHost host_;
  const BitmapTable& table_ = host_.Tables().bitmap;
  HostBitmap* bitmap_ = table_.create();
};

TEST_F(Bitmaps, ANewBitmapHasNoPixels) {
  EXPECT_EQ(table_.width(bitmap_), 0);
  EXPECT_EQ(table_.height(bitmap_), 0);
  EXPECT_THAT(PixelAt(0, 0), ElementsAre(0, 0, 0));
  table_.setPixel(bitmap_, 0, 0, 1, 2, 3);
}

TEST_F(Bitmaps, PixelsAreKeptAndLimitedToBytes) {
  ASSERT_EQ(table_.init(bitmap_, 2, 3, 24), 1);
  EXPECT_EQ(table_.width(bitmap_), 2);
  EXPECT_EQ(table_.height(bitmap_), 3);
  EXPECT_THAT(PixelAt(1, 2), ElementsAre(0, 0, 0));
  table_.setPixel(bitmap_, 1, 2, 10, 20, 30);
  table_.setPixel(bitmap_, 0, 1, -5, 256, 2147483647);
  EXPECT_THAT(PixelAt(1, 2), ElementsAre(10, 20, 30));
  EXPECT_THAT(PixelAt(0, 1), ElementsAre(0, 255, 255));
}

TEST_F(Bitmaps, PixelsOutsideThePictureAreSkippedAndBlack) {
  ASSERT_EQ(table_.init(bitmap_, 2, 2, 24), 1);
  for (const auto& [x, y] : {std::pair{-1, 0}, {0, -1}, {2, 0}, {0, 2}, {-2147483647, 1}}) {
    table_.setPixel(bitmap_, x, y, 9, 9, 9);
    EXPECT_THAT(PixelAt(x, y), ElementsAre(0, 0, 0));
  }
  for (int i = 0; i < 4; ++i) EXPECT_THAT(PixelAt(i % 2, i / 2), ElementsAre(0, 0, 0));
}

TEST_F(Bitmaps, SizesThatAreNotAllowedChangeNothing) {
  ASSERT_EQ(table_.init(bitmap_, 2, 2, 24), 1);
  for (const auto& [width, height] : {std::pair{0, 1}, {1, 0}, {-1, 5}, {65537, 1}, {1, 65537}}) {
    EXPECT_EQ(table_.init(bitmap_, width, height, 24), 0);
  }
  EXPECT_EQ(table_.width(bitmap_), 2);
}

TEST_F(Bitmaps, AFileIsLoadedAsBytes) {
  Filename name("a.png");
  ASSERT_EQ(table_.load(bitmap_, name.Handle()), 1);
  EXPECT_EQ(table_.width(bitmap_), 3);
  EXPECT_EQ(table_.height(bitmap_), 2);
  // Red counts, green is 7 or -7, blue is no number: see the texture.
  EXPECT_THAT(PixelAt(1, 0), ElementsAre(1, 0, 0));
  EXPECT_THAT(PixelAt(1, 1), ElementsAre(4, 255, 0));
  table_.setPixel(bitmap_, 1, 1, 1, 2, 3);
  EXPECT_THAT(PixelAt(1, 1), ElementsAre(1, 2, 3));
}

TEST_F(Bitmaps, AMissingFileChangesNothing) {
  ASSERT_EQ(table_.init(bitmap_, 2, 2, 24), 1);
  Filename name("missing.png");
  EXPECT_EQ(table_.load(bitmap_, name.Handle()), 0);
  EXPECT_EQ(table_.width(bitmap_), 2);
}

TEST_F(Bitmaps, ThePictureOfALinkShowsItsTexture) {
  Link link;
  link.HoldBitmap("a.png");
  HostBitmap* picture = link.Picture()->Handle();
  std::int32_t red = -1;
  table_.getPixel(picture, 2, 1, &red, nullptr, nullptr);
  EXPECT_EQ(red, 5);
}

TEST_F(Bitmaps, TheTableAnswersNeutrallyToNull) {
  Filename name("a.png");
  std::int32_t red = 9, green = 9, blue = 9;
  table_.free(nullptr);
  EXPECT_EQ(table_.init(nullptr, 2, 2, 24), 0);
  EXPECT_EQ(table_.load(nullptr, name.Handle()), 0);
  EXPECT_EQ(table_.load(bitmap_, nullptr), 0);
  EXPECT_EQ(table_.width(nullptr), 0);
  EXPECT_EQ(table_.height(nullptr), 0);
  table_.getPixel(nullptr, 0, 0, &red, &green, &blue);
  EXPECT_EQ(red + green + blue, 0);
  table_.setPixel(nullptr, 0, 0, 1, 1, 1);
}

}  // namespace
}  // namespace sorvanix::host
