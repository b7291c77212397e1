// The distance is the optimal string alignment distance: F. J. Damerau, "A technique for computer
// detection and correction of spelling errors", Communications of the ACM 7 (1964).
#include "host/channels/nearest_name.h"

#include <algorithm>

namespace sorvanix::host {

namespace {

// Names are short; the tail of a longer one cannot bring two words nearer in a useful way.
constexpr std::size_t kLongestCompared = 64;

// Of a name whose end is missing.
constexpr std::size_t kShortestBeginning = 3;

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::size_t EditDistance(std::string_view first, std::string_view second) {
  first = first.substr(0, kLongestCompared);
  second = second.substr(0, kLongestCompared);
  std::size_t cost[kLongestCompared + 1][kLongestCompared + 1];
  for (std::size_t i = 0; i <= first.size(); ++i) {
    for (std::size_t j = 0; j <= second.size(); ++j) {
      if (i == 0 || j == 0) {
        cost[i][j] = i + j;
        continue;
      }
      const auto a = [&first](std::size_t at) { return LowerCase(first[at - 1]); };
      const auto b = [&second](std::size_t at) { return LowerCase(second[at - 1]); };
      cost[i][j] = std::min(
          {cost[i - 1][j] + 1, cost[i][j - 1] + 1, cost[i - 1][j - 1] + (a(i) == b(j) ? 0u : 1u)});
      if (i > 1 && j > 1 && a(i) == b(j - 1) && a(i - 1) == b(j)) {
        cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
      }
    }
  }
  return cost[first.size()][second.size()];
}

std::string_view NearestName(std::string_view wanted, const std::vector<std::string_view>& names) {
  std::string_view nearest;
  // One slip in three letters is one; more make another word.
  std::size_t smallest = wanted.size() / 3 + 2;
  for (const std::string_view name : names) {
    const std::size_t distance = EditDistance(wanted, name);
    if (distance < smallest) {
      smallest = distance;
      nearest = name;
    }
  }
  if (!nearest.empty() || wanted.size() < kShortestBeginning) return nearest;
  const auto begun = std::find_if(names.begin(), names.end(), [wanted](std::string_view name) {
    return SameIgnoringCase(name.substr(0, wanted.size()), wanted);
  });
  return begun == names.end() ? nearest : *begun;
}

bool SameIgnoringCase(std::string_view first, std::string_view second) {
  return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                    [](char a, char b) { return LowerCase(a) == LowerCase(b); });
}

}  // namespace sorvanix::host
