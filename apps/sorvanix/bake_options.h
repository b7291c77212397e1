// What `sorvanix bake` is asked to do.
#pragma once

#include <sorvanix/ids.h>

#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

#include "apps/sorvanix/picture_options.h"
#include "host/bake/surface_bake.h"

namespace CLI {
class App;
}

namespace sorvanix::cli {

struct BakeOptions {
  std::vector<std::string> materials;
  PictureOptions picture;
  int channel = ChannelColour;  // of ids.h
  std::optional<host::NormalConvention> normal;
  bool plane = false;
  std::string mesh;  // empty: no mesh. Neither plane nor mesh: a flat bake
  int uvwSet = 0;
  bool udim = false;
  int gutter = 8;

  int Width() const { return picture.width > 0 ? picture.width : 512; }
  int Height() const { return picture.height > 0 ? picture.height : 512; }
  bool IsFlat() const { return !plane && mesh.empty(); }
  /// As <channel> stands for it, and recipes record it: "colour"; of the bump channel the normal
  /// map that it makes, "normal_gl" or "normal_dx".
  std::string ChannelName() const;
};

/// Adds the options that fill `options`, which must live as long as the app.
void AddBakeOptions(CLI::App& app, BakeOptions& options);

/// Settles what options say together: a normal map is the bump channel's. The error, of one line,
/// is one of usage.
tl::expected<void, std::string> SettleBakeOptions(BakeOptions& options);

}  // namespace sorvanix::cli
