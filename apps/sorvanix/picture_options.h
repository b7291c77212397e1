// What verbs that make pictures are asked for alike.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/images/image_format.h"

namespace CLI {
class App;
}

namespace sorvanix::cli {

struct FrameRange {
  int first = 0;
  int last = 0;
};

/// One picture of an animation, or the only one.
struct FrameTime {
  std::optional<int> frame;
  float time = 0;  // in seconds
};

struct PictureOptions {
  std::string output;         // a template; empty for the usual one
  int width = 0, height = 0;  // 0: not asked for
  int samples = 1;
  float time = 0;
  std::optional<FrameRange> frames;
  double framesPerSecond = 25;
  std::optional<host::PixelDepth> depth;
  int threads = 0;
  bool resume = false;
  std::vector<std::string> imageFolders;
  std::string module;
  std::string progress = "auto";
  bool json = false;
  bool quiet = false;

  /// The pictures to make, in order.
  std::vector<FrameTime> Frames() const;
};

/// The parts of the help that differ from verb to verb.
struct PictureHelp {
  const char* output;
  const char* size;
  const char* json;
};

/// Adds the options that fill `options`, which must live as long as the app.
void AddPictureOptions(CLI::App& app, PictureOptions& options, const PictureHelp& help);

}  // namespace sorvanix::cli
