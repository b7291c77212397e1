#include "apps/sorvanix/bake_options.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <algorithm>

#include "host/scene/scene_format.h"

namespace sorvanix::cli {

namespace {

constexpr int kMostUvwSets = 1000;
constexpr int kWidestGutter = 4096;

constexpr PictureHelp kHelp = {
    .output =
        "The image; its extension (png, tif, exr, jpg) is its format. <material>, <channel>, "
        "<frame>, %04d and <UDIM> stand for themselves. A file that is there is replaced. "
        "Default: <material>.png, with what else tells pictures apart",
    .size = "Pixels, each side from 1 to 65536; default 512x512",
    .json = "Print a JSON array of what was baked"};

std::vector<std::string> ChannelNames() {
  return {host::kChannelNames.begin(), host::kChannelNames.end()};
}

int ChannelNamed(const std::string& name) {
  const auto& names = host::kChannelNames;
  return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
}

}  // namespace

std::string BakeOptions::ChannelName() const {
  if (normal) return *normal == host::NormalConvention::OpenGl ? "normal_gl" : "normal_dx";
  return std::string(host::kChannelNames[static_cast<std::size_t>(channel)]);
}

void AddBakeOptions(CLI::App& app, BakeOptions& options) {
  app.add_option("materials", options.materials, "Material files")->required();
  CLI::Option* const plane = app.add_flag(
      "--plane", options.plane, "Bake with a render around a unit square: solid noise, bump");
  CLI::Option* const mesh =
      app.add_option("--mesh", options.mesh,
                     "Bake on the surface of a mesh (obj, ply, gltf, glb), into the chart of its "
                     "texture coordinates")
          ->type_name("FILE")
          ->excludes(plane);
  app.add_option("--uv-set", options.uvwSet, "Which of the mesh's coordinates, counted from 0")
      ->check(CLI::Range(0, kMostUvwSets))
      ->needs(mesh)
      ->type_name("N")
      ->capture_default_str();
  app.add_flag("--udim", options.udim, "Bake a picture for each UDIM tile that the mesh reaches")
      ->needs(mesh);
  app.add_option("--gutter", options.gutter, "Texels around a chart that repeat its edge")
      ->check(CLI::Range(0, kWidestGutter))
      ->needs(mesh)
      ->type_name("N")
      ->capture_default_str();
  app.add_option_function<std::string>(
         "--channel", [&options](const std::string& name) { options.channel = ChannelNamed(name); },
         "The material channel that is baked; bump makes a normal map. Default: colour")
      ->check(CLI::IsMember(ChannelNames()));
  app.add_option_function<std::string>(
         "--normal",
         [&options](const std::string& name) {
           options.normal =
               name == "directx" ? host::NormalConvention::DirectX : host::NormalConvention::OpenGl;
         },
         "Bake the bump channel into a normal map whose green grows upwards (opengl, the default) "
         "or downwards (directx)")
      ->check(CLI::IsMember({"opengl", "directx"}));
  AddPictureOptions(app, options.picture, kHelp);
}

tl::expected<void, std::string> SettleBakeOptions(BakeOptions& options) {
  if (options.normal && options.channel == ChannelColour) options.channel = ChannelBump;
  const bool isBump = options.channel == ChannelBump;
  if (options.normal && !isBump) {
    return tl::unexpected(
        fmt::format("--normal: only the bump channel makes a normal map, not {}",
                    host::kChannelNames[static_cast<std::size_t>(options.channel)]));
  }
  if (isBump && options.IsFlat()) {
    return tl::unexpected(std::string("a normal map needs a surface: --plane or --mesh FILE"));
  }
  if (isBump && !options.normal) options.normal = host::NormalConvention::OpenGl;
  return {};
}

}  // namespace sorvanix::cli
