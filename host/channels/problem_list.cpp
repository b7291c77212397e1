#include "host/channels/problem_list.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "host/services/text_position.h"

namespace sorvanix::host {

namespace {

// A file that is referred to several times is read several times.
bool IsSame(const MaterialProblem& first, const MaterialProblem& second) {
  return first.isError == second.isError && first.pointer == second.pointer &&
         first.message == second.message && first.file == second.file;
}

// A position that counts from another one.
TextPosition From(const TextPosition& start, const TextPosition& position) {
  const std::size_t column = position.line == 1 ? start.column - 1 : 0;
  return {start.line + position.line - 1, column + position.column};
}

}  // namespace

void ProblemList::Add(std::size_t source, std::size_t offset, MaterialProblem problem,
                      bool withPosition) {
  hasErrors_ = hasErrors_ || problem.isError;
  std::size_t alike = 0;  // errors and warnings do not crowd one another out
  for (const Found& found : found_) {
    if (IsSame(found.problem, problem)) return;
    if (found.problem.isError == problem.isError) ++alike;
  }
  if (alike < kMostProblems) {
    found_.push_back({source, offset, withPosition, std::move(problem)});
  } else {
    ++(problem.isError ? untold_.errors : untold_.warnings);
  }
}

void ProblemList::AddUntold(const UntoldProblems& untold) {
  hasErrors_ = hasErrors_ || untold.errors > 0;
  untold_.errors += untold.errors;
  untold_.warnings += untold.warnings;
}

void ProblemList::Place(std::size_t source, std::string_view text) {
  std::vector<Found*> open;
  for (Found& found : found_) {
    if (found.source == source && !found.isPlaced) open.push_back(&found);
  }
  std::sort(open.begin(), open.end(),
            [](const Found* a, const Found* b) { return a->offset < b->offset; });
  TextWalk walk(text);
  for (Found* found : open) {
    found->problem.position = From(walk.To(found->offset), found->problem.position);
    found->isPlaced = true;
  }
}

std::vector<MaterialProblem> ProblemList::Take() {
  std::stable_sort(found_.begin(), found_.end(), [](const Found& first, const Found& second) {
    return std::tie(first.source, first.offset) < std::tie(second.source, second.offset);
  });
  std::vector<MaterialProblem> problems;
  for (Found& found : found_) problems.push_back(std::move(found.problem));
  return problems;
}

}  // namespace sorvanix::host
