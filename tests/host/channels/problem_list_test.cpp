#include "host/channels/problem_list.h"

#include <gtest/gtest.h>

#include <string>

namespace sorvanix::host {
namespace {

MaterialProblem Problem(bool isError, std::string message) {
  return {isError, {}, "/pointer", {}, std::move(message)};
}

std::string Messages(ProblemList& list) {
  std::string all;
  for (const MaterialProblem& problem : list.Take()) all += problem.message + ' ';
  return all;
}

TEST(ProblemList, TellsProblemsInTheOrderOfTheSourcesAndTheirTexts) {
  ProblemList list;
  list.Add(1, 0, Problem(true, "third"));
  list.Add(0, 9, Problem(true, "second"));
  list.Add(0, 5, Problem(false, "first"));
  EXPECT_EQ(Messages(list), "first second third ");
}

TEST(ProblemList, TellsEqualOnesOnce) {
  ProblemList list;
  list.Add(0, 5, Problem(true, "same"));
  list.Add(1, 5, Problem(true, "same"));
  list.Add(1, 5, Problem(false, "same"));  // a warning is another thing
  EXPECT_EQ(Messages(list), "same same ");
}

TEST(ProblemList, CountsWhatIsBeyondItsLimitWarningsAndErrorsApart) {
  ProblemList list;
  for (int i = 0; i < 103; ++i) list.Add(0, 0, Problem(false, std::to_string(i)));
  EXPECT_FALSE(list.HasErrors());
  for (int i = 0; i < 105; ++i) list.Add(0, 0, Problem(true, std::to_string(i)));
  EXPECT_TRUE(list.HasErrors());
  EXPECT_EQ(list.Untold().warnings, 3u);
  EXPECT_EQ(list.Untold().errors, 5u);
  list.AddUntold({.errors = 10, .warnings = 20});
  EXPECT_EQ(list.Untold().warnings, 23u);
  EXPECT_EQ(list.Untold().errors, 15u);
  EXPECT_EQ(list.Take().size(), 200u);
}

// In "a\nbc\nd" byte 3 is line 2, column 2. What counts from there keeps its lines, and the first
// of them its columns behind it.
TEST(ProblemList, APositionCountsFromTheOffsetInTheText) {
  ProblemList list;
  MaterialProblem further = Problem(true, "further on that line"), below = Problem(true, "below");
  further.position = {1, 5};
  below.position = {2, 5};
  list.Add(0, 3, Problem(true, "there"));
  list.Add(0, 3, further);
  list.Add(0, 3, below);
  MaterialProblem elsewhere = Problem(true, "elsewhere");
  elsewhere.position = {7, 8};
  list.Add(0, 4, elsewhere, true);
  list.Place(0, "a\nbc\nd");
  const auto problems = list.Take();
  ASSERT_EQ(problems.size(), 4u);
  EXPECT_EQ(problems[0].position, (TextPosition{2, 2}));
  EXPECT_EQ(problems[1].position, (TextPosition{2, 6}));
  EXPECT_EQ(problems[2].position, (TextPosition{3, 5}));
  EXPECT_EQ(problems[3].position, (TextPosition{7, 8}));
}

}  // namespace
}  // namespace sorvanix::host
