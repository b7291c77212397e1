// What the user asks of an edit.
#pragma once

#include <string>
#include <vector>

namespace sorvanix::cli {

struct EditOptions {
  std::string material;
  std::string script;
  std::string output;  // empty for the standard output
  std::vector<std::string> imageFolders;
  std::string module;
  bool json = false;
  bool quiet = false;
};

}  // namespace sorvanix::cli
