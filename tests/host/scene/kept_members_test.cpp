#include "host/scene/kept_members.h"

#include <gtest/gtest.h>

namespace sorvanix::host {
namespace {

// Lower-case letters are known members, capitals unknown ones.
std::string PutInto(const std::string& written, const std::string& read) {
  KeptMembers kept;
  for (const char c : read) {
    const bool isKnown = c >= 'a';
    kept.push_back({std::string(1, c), isKnown ? std::nullopt : std::optional(Json(true))});
  }
  Json::Object members;
  for (const char c : written) members.push_back({std::string(1, c), Json()});
  PutBack(kept, members);
  std::string names;
  for (const JsonMember& member : members) names += member.name;
  return names;
}

TEST(KeptMembers, StandWhereTheyStood) {
  EXPECT_EQ(PutInto("abc", "aXbYcZ"), "aXbYcZ");
  EXPECT_EQ(PutInto("abc", "XYabc"), "XYabc");
  EXPECT_EQ(PutInto("", "XY"), "XY");
}

TEST(KeptMembers, StandBehindTheNearestThatIsWritten) {
  EXPECT_EQ(PutInto("ac", "abXc"), "aXc") << "b has its initial value";
  EXPECT_EQ(PutInto("c", "aXbYc"), "XYc");
}

// The order in which members are written need not be that in which they were read.
TEST(KeptMembers, FollowTheirNeighboursAround) { EXPECT_EQ(PutInto("ba", "aXbY"), "bYaX"); }

TEST(KeptMembers, GiveWayToWhatIsWrittenUnderTheirName) {
  EXPECT_EQ(PutInto("aXb", "abX"), "aXb") << "today's value of a member that could not be read";
}

TEST(KeptMembers, OfNothingUnknownChangeNothing) {
  EXPECT_EQ(PutInto("abc", ""), "abc");
  EXPECT_EQ(PutInto("abc", "cb"), "abc");
}

}  // namespace
}  // namespace sorvanix::host
