#include "host/services/streams.h"

#include <gtest/gtest.h>

#include <limits>

#include "host/services/strings.h"
#include "tests/host/services/leak_check.h"

namespace sorvanix::host {
namespace {

constexpr Matrix kMatrix = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}};

class StreamsTest : public ::testing::Test {
 protected:
  StreamsTest() { InstallStreams(table); }

  LeakCheck leaks;
  StreamTable table = {};
  Stream stream;
  HostStream* handle = stream.Handle();
};

TEST_F(StreamsTest, WhatWasWrittenIsReadInOrder) {
  const Vector vector = {1, 2, 3};
  Text text("noise");
  EXPECT_NE(table.writeInt(handle, -7), 0);
  EXPECT_NE(table.writeFloat(handle, 0.5f), 0);
  EXPECT_NE(table.writeBool(handle, 256), 0);
  EXPECT_NE(table.writeVector(handle, &vector), 0);
  EXPECT_NE(table.writeMatrix(handle, &kMatrix), 0);
  EXPECT_NE(table.writeString(handle, text.Handle()), 0);

  std::int32_t integer = 0, truth = 7;
  float real = 0;
  Vector readVector = {};
  Matrix readMatrix = {};
  Text readText;
  EXPECT_NE(table.readInt(handle, &integer), 0);
  EXPECT_NE(table.readFloat(handle, &real), 0);
  EXPECT_NE(table.readBool(handle, &truth), 0);
  EXPECT_NE(table.readVector(handle, &readVector), 0);
  EXPECT_NE(table.readMatrix(handle, &readMatrix), 0);
  EXPECT_NE(table.readString(handle, readText.Handle()), 0);
  EXPECT_EQ(integer, -7);
  EXPECT_EQ(real, 0.5f);
  EXPECT_EQ(truth, 1);  // any nonzero word is true, and a truth reads as 0 or 1
  EXPECT_EQ(readVector.z, 3.0f);
  EXPECT_EQ(readMatrix.v3.z, 12.0f);
  EXPECT_EQ(readText.text, "noise");
  EXPECT_TRUE(stream.AtEnd());
}

TEST_F(StreamsTest, PastTheEndNothingIsReadAndNothingTouched) {
  std::int32_t integer = 41, truth = 42;
  float real = 43;
  Vector vector = {44, 0, 0};
  Matrix matrix = kMatrix;
  Text text("as it was");
  EXPECT_EQ(table.readInt(handle, &integer), 0);
  EXPECT_EQ(table.readFloat(handle, &real), 0);
  EXPECT_EQ(table.readBool(handle, &truth), 0);
  EXPECT_EQ(table.readVector(handle, &vector), 0);
  EXPECT_EQ(table.readMatrix(handle, &matrix), 0);
  EXPECT_EQ(table.readString(handle, text.Handle()), 0);
  EXPECT_EQ(integer, 41);
  EXPECT_EQ(truth, 42);
  EXPECT_EQ(real, 43.0f);
  EXPECT_EQ(vector.x, 44.0f);
  EXPECT_EQ(matrix.off.x, 1.0f);
  EXPECT_EQ(text.text, "as it was");
}

TEST_F(StreamsTest, AnotherTypeIsNotReadAndStaysNext) {
  table.writeInt(handle, 1);
  float real = 43;
  std::int32_t truth = 42;
  Text text("as it was");
  EXPECT_EQ(table.readFloat(handle, &real), 0);
  EXPECT_EQ(table.readBool(handle, &truth), 0);
  EXPECT_EQ(table.readString(handle, text.Handle()), 0);
  EXPECT_EQ(real, 43.0f);
  EXPECT_EQ(truth, 42);
  EXPECT_EQ(text.text, "as it was");
  EXPECT_EQ(stream.Position(), 0u);
  std::int32_t integer = 0;
  EXPECT_NE(table.readInt(handle, &integer), 0);
  EXPECT_EQ(integer, 1);
}

TEST_F(StreamsTest, RewindingReadsAgain) {
  table.writeInt(handle, 5);
  std::int32_t integer = 0;
  table.readInt(handle, &integer);
  stream.Rewind();
  integer = 0;
  EXPECT_NE(table.readInt(handle, &integer), 0);
  EXPECT_EQ(integer, 5);
}

TEST_F(StreamsTest, NullIsAnsweredWithZero) {
  Vector vector = {};
  EXPECT_EQ(table.writeInt(nullptr, 1), 0);
  EXPECT_EQ(table.writeFloat(nullptr, 1), 0);
  EXPECT_EQ(table.writeBool(nullptr, 1), 0);
  EXPECT_EQ(table.writeVector(nullptr, &vector), 0);
  EXPECT_EQ(table.writeMatrix(nullptr, &kMatrix), 0);
  EXPECT_EQ(table.writeString(nullptr, EmptyText()), 0);
  EXPECT_EQ(table.writeVector(handle, nullptr), 0);
  EXPECT_EQ(table.writeMatrix(handle, nullptr), 0);
  EXPECT_EQ(table.writeString(handle, nullptr), 0);
  EXPECT_TRUE(stream.Values().empty());

  std::int32_t integer = 0;
  stream.Write(std::int32_t{5});
  EXPECT_EQ(table.readInt(nullptr, &integer), 0);
  EXPECT_EQ(table.readInt(handle, nullptr), 0);
  EXPECT_EQ(stream.Position(), 0u);
}

// The shared empty text stands for every text that could not be made: it must never hold anything.
TEST_F(StreamsTest, TheSharedEmptyTextIsNoDestination) {
  stream.Write(std::string("noise"));
  EXPECT_EQ(table.readString(handle, EmptyText()), 0);
  EXPECT_EQ(TextOf(EmptyText()), "");
}

TEST_F(StreamsTest, ChannelLinksAreLeftToTheServiceThatKnowsThem) {
  EXPECT_EQ(table.writeChannelLink, nullptr);
  EXPECT_EQ(table.readChannelLink, nullptr);
}

TEST(StreamValue, EqualityIsOfTypeAndBits) {
  constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
  const auto value = [](auto held) { return StreamValue{held}; };
  EXPECT_TRUE(value(kNaN) == value(kNaN));
  EXPECT_FALSE(value(0.0f) == value(-0.0f));
  EXPECT_FALSE(value(1.0f) == value(std::int32_t{1}));
  EXPECT_FALSE(value(true) == value(std::int32_t{1}));
  EXPECT_FALSE(value(Vector{1, 2, 3}) == value(Vector{1, 2, 4}));
  const StreamLink link = {1001231, "", {value(1.0f)}};
  EXPECT_TRUE(value(link) == value(link));
  EXPECT_FALSE(value(link) == value(StreamLink{1001231, "", {value(2.0f)}}));
}

}  // namespace
}  // namespace sorvanix::host
