#include "host/services/containers.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/host/services/leak_check.h"

namespace sorvanix::host {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr Word kLeastWord = std::numeric_limits<Word>::min();
constexpr Word kGreatestWord = std::numeric_limits<Word>::max();

Container With(ContainerValue value) {
  Container container;
  container.Set(1, std::move(value));
  return container;
}

TEST(Container, KeysKeepTheOrderOfTheirFirstSetting) {
  Container container;
  container.Set(30, true);
  container.Set(10, 1.5f);
  container.Set(20, Word{7});
  container.Set(30, Text("now a text"));  // keeps its place

  std::vector<std::int32_t> keys;
  for (const auto& [key, value] : container) keys.push_back(key);
  EXPECT_EQ(keys, (std::vector<std::int32_t>{30, 10, 20}));
  EXPECT_EQ(container.IndexOf(30), 0);
  EXPECT_EQ(container.IndexOf(20), 2);
  EXPECT_EQ(container.IndexOf(5), -1);
  EXPECT_EQ(container.Size(), 3u);
}

TEST(Container, AnEntryTellsTheTypeOfItsValue) {
  Container container;
  container.Set(1, true);
  container.Set(2, Word{2});
  container.Set(3, 3.0f);
  container.Set(4, Vector{4, 5, 6});
  container.Set(5, Text("five"));
  container.Set(6, Filename("six.png"));
  container.Set(7, NestedContainer(Container(77)));
  EXPECT_TRUE(std::holds_alternative<bool>(container.At(0).value));
  EXPECT_TRUE(std::holds_alternative<Word>(container.At(1).value));
  EXPECT_TRUE(std::holds_alternative<float>(container.At(2).value));
  EXPECT_TRUE(std::holds_alternative<Vector>(container.At(3).value));
  EXPECT_TRUE(std::holds_alternative<Text>(container.At(4).value));
  EXPECT_TRUE(std::holds_alternative<Filename>(container.At(5).value));
  EXPECT_TRUE(std::holds_alternative<NestedContainer>(container.At(6).value));
  EXPECT_EQ(container.GetContainer(7)->Id(), 77);
}

TEST(Container, NumbersAndTruthsConvert) {
  EXPECT_EQ(With(true).GetInt(1), 1);
  EXPECT_EQ(With(true).GetFloat(1), 1.0f);
  EXPECT_EQ(With(false).GetFloat(1, 9), 0.0f);
  EXPECT_EQ(With(Word{-3}).GetFloat(1), -3.0f);
  EXPECT_TRUE(With(Word{-3}).GetBool(1));
  EXPECT_FALSE(With(Word{0}).GetBool(1, true));
  EXPECT_TRUE(With(0.25f).GetBool(1));
  EXPECT_FALSE(With(-0.0f).GetBool(1, true));
}

// The fraction is cut off, on both sides of zero.
TEST(Container, ARealBecomesAnIntegerTowardsZero) {
  EXPECT_EQ(With(2.75f).GetInt(1), 2);
  EXPECT_EQ(With(-2.75f).GetInt(1), -2);
}

TEST(Container, ARealBeyondAllIntegersIsLimited) {
  EXPECT_EQ(With(1e30f).GetInt(1), kGreatestWord);
  EXPECT_EQ(With(-1e30f).GetInt(1), kLeastWord);
  EXPECT_EQ(With(kInfinity).GetInt(1), kGreatestWord);
  EXPECT_EQ(With(-kInfinity).GetInt(1), kLeastWord);
  EXPECT_EQ(With(kNaN).GetInt(1, 5), 0);
  // Both limits themselves: -(2^63) is a Word, 2^63 is one too many.
  EXPECT_EQ(With(static_cast<float>(kLeastWord)).GetInt(1), kLeastWord);
  EXPECT_EQ(With(-static_cast<float>(kLeastWord)).GetInt(1), kGreatestWord);
}

TEST(Container, OtherTypesDoNotConvert) {
  for (const ContainerValue& value :
       {ContainerValue(Vector{1, 2, 3}), ContainerValue(Text("5")), ContainerValue(Filename("5")),
        ContainerValue(NestedContainer(Container()))}) {
    const Container container = With(value);
    EXPECT_TRUE(container.GetBool(1, true));
    EXPECT_EQ(container.GetInt(1, 42), 42);
    EXPECT_EQ(container.GetFloat(1, 4.5f), 4.5f);
    EXPECT_FALSE(container.HoldsNumber(1));
  }
  EXPECT_EQ(With(1.0f).GetVector(1, {7, 8, 9}).y, 8.0f);
  EXPECT_EQ(With(Filename("a")).GetText(1), nullptr);
  EXPECT_EQ(With(Text("a")).GetFilename(1), nullptr);
  EXPECT_EQ(With(Text("a")).GetContainer(1), nullptr);
}

TEST(Container, AnAbsentKeyAnswersTheDefault) {
  const Container empty;
  EXPECT_TRUE(empty.GetBool(1, true));
  EXPECT_EQ(empty.GetInt(1, 42), 42);
  EXPECT_EQ(empty.GetFloat(1, 4.5f), 4.5f);
  EXPECT_EQ(empty.GetVector(1, {7, 8, 9}).z, 9.0f);
  EXPECT_EQ(empty.Find(1), nullptr);
}

TEST(Container, AWordKeepsAnAddress) {
  int somewhere = 0;
  const auto address = reinterpret_cast<Word>(&somewhere);
  EXPECT_EQ(With(address).GetInt(1), address);
}

TEST(Container, ObjectsStayWhereTheyAreWhileOtherKeysCome) {
  Container container;
  container.Set(0, Text("first"));
  const Text* first = container.GetText(0);
  for (std::int32_t key = 1; key < 1000; ++key) container.Set(key, Word{key});
  EXPECT_EQ(container.GetText(0), first);
  EXPECT_EQ(first->text, "first");
}

TEST(Container, NestingIsCopiedToItsBottom) {
  Container inner(3);
  inner.Set(1, Text("deep"));
  Container middle(2);
  middle.Set(1, NestedContainer(inner));
  Container outer(1);
  outer.Set(1, NestedContainer(middle));

  const Container copy = outer;
  outer.GetContainer(1)->GetContainer(1)->Set(1, Text("changed"));
  EXPECT_EQ(copy.GetContainer(1)->GetContainer(1)->GetText(1)->text, "deep");
  EXPECT_EQ(copy.GetContainer(1)->GetContainer(1)->Id(), 3);
}

TEST(Container, AssigningTakesTheValuesAndKeepsTheId) {
  Container source(1), destination(2);
  source.Set(10, Word{5});
  destination.Set(20, Word{6});
  destination.Assign(source);
  EXPECT_EQ(destination.Id(), 2);
  EXPECT_EQ(destination.GetInt(10), 5);
  EXPECT_EQ(destination.IndexOf(20), -1);
}

TEST(Container, AContainerCanTakeTheValuesOfAPartOfItself) {
  Container container(1), part(2);
  part.Set(10, Text("kept"));
  container.Set(1, NestedContainer(part));
  container.Assign(*container.GetContainer(1));
  EXPECT_EQ(container.Size(), 1u);
  EXPECT_EQ(container.GetText(10)->text, "kept");
}

TEST(Container, EqualityTakesIdKeysTypesValuesAndOrder) {
  const auto pair = [](std::int32_t a, std::int32_t b) {
    Container container(1);
    container.Set(a, Word{a});
    container.Set(b, NestedContainer(With(Vector{1, 2, 3})));
    return container;
  };
  EXPECT_TRUE(pair(1, 2) == pair(1, 2));
  EXPECT_FALSE(pair(1, 2) == pair(2, 1));
  EXPECT_FALSE(With(Word{1}) == With(1.0f));
  EXPECT_FALSE(With(NestedContainer(With(true))) == With(NestedContainer(With(false))));
  EXPECT_FALSE(Container(1) == Container(2));
  EXPECT_FALSE(With(kNaN) == With(kNaN));
}

TEST(Container, AShortMemoryLeavesAContainerAsItWas) {
  const LeakCheck leaks;
  Container inner(2);
  inner.Set(1, Text("deep"));
  Container source(1);
  source.Set(1, NestedContainer(inner));

  Container destination(3);
  destination.Set(9, Word{9});
  const int allocations = WithEveryAllocationFailing([&] {
    Container target = destination;
    try {
      target.Assign(source);
      EXPECT_EQ(target.GetContainer(1)->GetText(1)->text, "deep");
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(target == destination);
    }
  });
  EXPECT_EQ(allocations, 1);  // one nested container
}

}  // namespace
}  // namespace sorvanix::host
