// The problems of files that are being read: each told once, with its place, and not more than
// anyone would read.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "host/channels/material_file.h"

namespace sorvanix::host {

class ProblemList {
 public:
  /// A problem of a source, a file or a text, that begins at an offset of it. Its position counts
  /// from there, until the source is placed; that of one `withPosition` stays.
  void Add(std::size_t source, std::size_t offset, MaterialProblem problem,
           bool withPosition = false);
  /// Problems that somebody else has left untold.
  void AddUntold(const UntoldProblems& untold);
  /// Finds the positions of all problems of a source in one walk through its text.
  void Place(std::size_t source, std::string_view text);

  bool HasErrors() const { return hasErrors_; }
  /// In the order of the sources, in each by the text.
  std::vector<MaterialProblem> Take();
  const UntoldProblems& Untold() const { return untold_; }

 private:
  struct Found {
    std::size_t source, offset;
    bool isPlaced;
    MaterialProblem problem;
  };

  std::vector<Found> found_;
  UntoldProblems untold_;
  bool hasErrors_ = false;
};

}  // namespace sorvanix::host
