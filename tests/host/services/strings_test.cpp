#include "host/services/strings.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/host/services/leak_check.h"

namespace sorvanix::host {
namespace {

class StringsTest : public ::testing::Test {
 protected:
  StringsTest() { InstallStrings(table); }

  // What a new text holds; frees it.
  std::string Taken(HostString* text) {
    std::string content(TextOf(text));
    table.free(text);
    return content;
  }

  LeakCheck leaks;
  StringTable table = {};
};

TEST_F(StringsTest, ANewTextIsEmptyAndNotTheSharedOne) {
  HostString* text = table.create();
  EXPECT_NE(text, table.empty);
  EXPECT_EQ(table.length(text), 0);
  table.free(text);
}

TEST_F(StringsTest, ALengthOfMinusOneReadsUpToTheZero) {
  EXPECT_EQ(Taken(table.createFromChars("noise", -1)), "noise");
  EXPECT_EQ(Taken(table.createFromChars("", -1)), "");
}

TEST_F(StringsTest, ALengthReadsThatManyBytesZerosIncluded) {
  EXPECT_EQ(Taken(table.createFromChars("noise", 3)), "noi");
  EXPECT_EQ(Taken(table.createFromChars("a\0b", 3)), std::string("a\0b", 3));
  EXPECT_EQ(Taken(table.createFromChars("noise", 0)), "");
}

TEST_F(StringsTest, NoCharactersAndImpossibleLengthsGiveTheSharedEmptyText) {
  EXPECT_EQ(table.createFromChars(nullptr, -1), table.empty);
  EXPECT_EQ(table.createFromChars(nullptr, 5), table.empty);
  EXPECT_EQ(table.createFromChars("noise", -2), table.empty);
  EXPECT_EQ(table.createFromChars("noise", std::numeric_limits<std::int32_t>::min()), table.empty);
}

// "ä" is two bytes of UTF-8 and U+1D11E, a clef, four.
TEST_F(StringsTest, TheLengthIsInBytes) {
  HostString* text = table.createFromChars("\xC3\xA4\xF0\x9D\x84\x9E", -1);
  EXPECT_EQ(table.length(text), 6);
  table.free(text);
}

TEST_F(StringsTest, ALongTextIsKeptWhole) {
  const std::string chars(1'000'000, 'x');
  HostString* text = table.createFromChars(chars.c_str(), -1);
  EXPECT_EQ(table.length(text), 1'000'000);
  EXPECT_EQ(Taken(table.concatenate(text, text)), chars + chars);
  table.free(text);
}

TEST_F(StringsTest, ACopyStandsAlone) {
  HostString* text = table.createFromChars("noise", -1);
  HostString* copy = table.copy(text);
  EXPECT_NE(copy, text);
  table.free(text);
  EXPECT_EQ(Taken(copy), "noise");
}

TEST_F(StringsTest, ComparingOrdersByBytes) {
  HostString* a = table.createFromChars("a", -1);
  HostString* b = table.createFromChars("b", -1);
  HostString* aAgain = table.createFromChars("a", -1);
  EXPECT_EQ(table.compare(a, aAgain), 0);
  EXPECT_LT(table.compare(a, b), 0);
  EXPECT_GT(table.compare(b, a), 0);
  EXPECT_LT(table.compare(table.empty, a), 0);
  for (HostString* text : {a, b, aAgain}) table.free(text);
}

TEST_F(StringsTest, ConcatenationKeepsTheOrder) {
  HostString* first = table.createFromChars("2D ", -1);
  HostString* second = table.createFromChars("Noise", -1);
  EXPECT_EQ(Taken(table.concatenate(first, second)), "2D Noise");
  EXPECT_EQ(Taken(table.concatenate(first, nullptr)), "2D ");
  table.free(first);
  table.free(second);
}

TEST_F(StringsTest, ANumberTakesItsShortestForm) {
  EXPECT_EQ(Taken(table.fromNumber(0.1)), "0.1");
  EXPECT_EQ(Taken(table.fromNumber(-12)), "-12");
  EXPECT_EQ(Taken(table.fromNumber(1e300)), "1e+300");
  EXPECT_EQ(Taken(table.fromNumber(std::numeric_limits<double>::infinity())), "inf");
  // The longest there is: sign, 17 digits, point, exponent of three digits.
  EXPECT_EQ(Taken(table.fromNumber(-2.2250738585072014e-308)), "-2.2250738585072014e-308");
}

TEST_F(StringsTest, NullIsAnsweredNeutrally) {
  EXPECT_EQ(table.copy(nullptr), table.empty);
  EXPECT_EQ(table.length(nullptr), 0);
  EXPECT_EQ(table.compare(nullptr, nullptr), 0);
  EXPECT_EQ(table.compare(table.empty, nullptr), 0);
  EXPECT_EQ(Taken(table.concatenate(nullptr, nullptr)), "");
  table.free(nullptr);
}

TEST_F(StringsTest, TheSharedEmptyTextIsNeverFreed) {
  table.free(table.empty);
  table.free(table.empty);
  EXPECT_EQ(table.length(table.empty), 0);
}

TEST_F(StringsTest, ACreationThatFailsAnswersTheSharedEmptyText) {
  HostString* text = table.createFromChars("noise", -1);
  const auto failing = [&](auto create) {
    const AllocationFailure failure(1);
    EXPECT_EQ(create(), table.empty);
  };
  failing([&] { return table.create(); });
  failing([&] { return table.createFromChars("noise", -1); });
  failing([&] { return table.copy(text); });
  failing([&] { return table.concatenate(text, text); });
  failing([&] { return table.fromNumber(1); });
  table.free(text);
}

}  // namespace
}  // namespace sorvanix::host
