#include "host/services/text_position.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace sorvanix::host {

void PrintTo(const TextPosition& position, std::ostream* stream) {
  *stream << position.line << ':' << position.column;
}

namespace {

TEST(TextPosition, CountsLinesAndColumnsFromOne) {
  constexpr std::string_view kText = "ab\ncd\n";
  const struct {
    std::size_t offset;
    TextPosition position;
  } rows[] = {{0, {1, 1}}, {2, {1, 3}}, {3, {2, 1}}, {4, {2, 2}}, {6, {3, 1}}, {99, {3, 1}}};
  for (const auto& row : rows) EXPECT_EQ(PositionIn(kText, row.offset), row.position) << row.offset;
}

// Letters of one, two, three and four bytes.
TEST(TextPosition, ALetterIsOneColumnHoweverManyBytesItHas) {
  constexpr std::string_view kText = "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x8E\xA8x";
  EXPECT_EQ(PositionIn(kText, 1), (TextPosition{1, 2}));
  EXPECT_EQ(PositionIn(kText, 3), (TextPosition{1, 3}));
  EXPECT_EQ(PositionIn(kText, 6), (TextPosition{1, 4}));
  EXPECT_EQ(PositionIn(kText, 10), (TextPosition{1, 5}));
}

TEST(TextPosition, AByteOrderMarkCountsNothing) {
  EXPECT_EQ(PositionIn("\xEF\xBB\xBFx", 3), (TextPosition{1, 1}));
  EXPECT_EQ(PositionIn("\xEF\xBB\xBFx", 4), (TextPosition{1, 2}));
  EXPECT_EQ(PositionIn("\xEF\xBB\xBF", 0), (TextPosition{1, 1}));
}

RC_GTEST_PROP(TextWalks, OneWalkFindsWhatManyWouldFind,
              (const std::string& text, std::vector<std::size_t> offsets)) {
  for (std::size_t& offset : offsets) offset %= text.size() + 2;
  std::sort(offsets.begin(), offsets.end());
  TextWalk walk(text);
  for (const std::size_t offset : offsets) {
    RC_ASSERT(walk.To(offset) == PositionIn(text, offset));
  }
}

}  // namespace
}  // namespace sorvanix::host
