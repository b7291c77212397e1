#include "host/channels/nearest_name.h"

#include <gtest/gtest.h>

#include <string>

namespace sorvanix::host {
namespace {

TEST(NearestName, ADistanceCountsEachKindOfSlipOnce) {
  EXPECT_EQ(EditDistance("octaves", "octaves"), 0u);
  EXPECT_EQ(EditDistance("octves", "octaves"), 1u);    // inserted
  EXPECT_EQ(EditDistance("octavess", "octaves"), 1u);  // removed
  EXPECT_EQ(EditDistance("octives", "octaves"), 1u);   // replaced
  EXPECT_EQ(EditDistance("ocatves", "octaves"), 1u);   // swapped
  EXPECT_EQ(EditDistance("OCTAVES", "octaves"), 0u);   // the case of letters counts nothing
  EXPECT_EQ(EditDistance("", "abc"), 3u);
  // kitten -> sitten -> sittin -> sitting
  EXPECT_EQ(EditDistance("kitten", "sitting"), 3u);
}

TEST(NearestName, TheDistanceIsSymmetric) {
  EXPECT_EQ(EditDistance("scaleU", "speed"), EditDistance("speed", "scaleU"));
}

TEST(NearestName, TheNearestWinsAndOfEqualsTheFirst) {
  EXPECT_EQ(NearestName("scalu", {"speed", "scaleU", "scaleV"}), "scaleU");
  EXPECT_EQ(NearestName("scaleX", {"scaleV", "scaleU"}), "scaleV");
  EXPECT_EQ(NearestName("x", {}), "");
}

TEST(NearestName, WhatIsNotNearIsNoAnswer) {
  EXPECT_EQ(NearestName("x", {"kind", "scale"}), "");
  EXPECT_EQ(NearestName("colour", {"brightness", "speed"}), "");
  // One letter and a third of the length: 3 of 6 may differ, 4 may not.
  EXPECT_EQ(NearestName("abcdef", {"abcxyz"}), "abcxyz");
  EXPECT_EQ(NearestName("abcdef", {"abwxyz"}), "");
}

TEST(NearestName, TheBeginningOfALongNameIsNear) {
  EXPECT_EQ(NearestName("celledge", {"HashBlockType", "CellEdgeType"}), "CellEdgeType");
  EXPECT_EQ(NearestName("Ce", {"CellEdgeType"}), "");
}

TEST(NearestName, LongWordsAreComparedByTheirBeginning) {
  EXPECT_EQ(EditDistance(std::string(100000, 'a'), "a"), 63u);  // 64 letters are looked at
}

TEST(NearestName, CaseIsIgnoredForWholeNamesOnly) {
  EXPECT_TRUE(SameIgnoringCase("2D noise", "2d NOISE"));
  EXPECT_FALSE(SameIgnoringCase("2D noise", "2D noises"));
  EXPECT_TRUE(SameIgnoringCase("", ""));
}

}  // namespace
}  // namespace sorvanix::host
