// What `sorvanix bake` is asked to do.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/bake/flat_bake.h"
#include "host/images/image_format.h"

namespace CLI {
class App;
}

namespace sorvanix::cli {

struct FrameRange {
  int first = 0;
  int last = 0;
};

struct BakeOptions {
  std::vector<std::string> materials;
  std::string output;  // a template; empty for the usual one
  host::FlatBakeSettings settings;
  std::optional<FrameRange> frames;
  double framesPerSecond = 25;
  std::optional<host::PixelDepth> depth;
  int threads = 0;
  std::vector<std::string> imageFolders;
  std::string module;
  std::string progress = "auto";
  bool json = false;
  bool quiet = false;
};

/// Adds the options that fill `options`, which must live as long as the app.
void AddBakeOptions(CLI::App& app, BakeOptions& options);

}  // namespace sorvanix::cli
