#include "host/services/content_hash.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace sorvanix::host {
namespace {

TEST(ContentHash, IsThePublishedOne) {
  // The values of the algorithm's own documentation for a seed of 0.
  EXPECT_EQ(HashOf(""), "ef46db3751d8e999");
  EXPECT_EQ(HashOf("abc"), "44bc2cf5ad770999");
}

TEST(ContentHash, TellsOnePieceFromTwo) {
  ContentHash pieces;
  pieces.Add("a");
  pieces.Add("bc");
  EXPECT_NE(pieces.Text(), HashOf("abc"));
  ContentHash again;
  again.Add("a");
  again.Add("bc");
  EXPECT_EQ(again.Text(), pieces.Text());
}

TEST(ContentHash, OfAFileIsThatOfItsBytes) {
  const auto file = std::filesystem::path(testing::TempDir()) / "content_hash_test.bin";
  std::ofstream(file, std::ios::binary) << "abc";
  EXPECT_EQ(HashOfFile(file), HashOf("abc"));
  std::filesystem::remove(file);
  EXPECT_EQ(HashOfFile(file), "");
}

}  // namespace
}  // namespace sorvanix::host
