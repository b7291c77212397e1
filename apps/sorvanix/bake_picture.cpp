#include "apps/sorvanix/bake_picture.h"

#include <fmt/format.h>

#include <filesystem>
#include <utility>

#include "apps/sorvanix/recipe_files.h"
#include "host/bake/flat_bake.h"
#include "host/bake/mesh_bake.h"
#include "host/bake/plane_bake.h"
#include "host/scene/mesh_files.h"
#include "host/services/filenames.h"

namespace sorvanix::cli {

namespace {

host::SurfaceBakeSettings SettingsOf(const BakeOptions& options, const PlannedPicture& picture) {
  return {.width = options.Width(),
          .height = options.Height(),
          .samples = options.picture.samples,
          .time = picture.at.time,
          .normalMap = options.normal};
}

BakedPicture BakeFlatly(host::Shader& shader, const BakeOptions& options,
                        const PlannedPicture& picture, const host::TaskOptions& task) {
  const host::FlatBakeSettings settings = {.width = options.Width(),
                                           .height = options.Height(),
                                           .samples = options.picture.samples,
                                           .time = picture.at.time};
  const auto colourAt = [&shader](ChannelSample& sample) { return shader.Output(sample); };
  return {.image = host::BakeFlat(colourAt, settings, task), .warnings = {}};
}

tl::expected<BakedPicture, Failure> BakeOnSurface(host::Shader& shader, const BakeOptions& options,
                                                  const BakedMesh& mesh,
                                                  const PlannedPicture& picture,
                                                  const host::TaskOptions& task) {
  host::ShaderSource source(shader);
  const host::SurfaceBakeSettings settings = SettingsOf(options, picture);
  BakedPicture baked;
  host::SurfaceBake surface;
  if (options.plane) {
    surface = host::BakePlane(source, settings, task);
  } else {
    const host::UvTile tile = picture.tile.value_or(host::UvTile());
    auto bake = host::BakeMesh(mesh.mesh, source,
                               {.surface = settings,
                                .uvwSet = static_cast<std::size_t>(options.uvwSet),
                                .tile = tile,
                                .gutter = options.gutter},
                               task);
    if (!bake) {
      return tl::unexpected(
          Failure{ExitCode::InvalidInput, fmt::format("{}: {}", options.mesh, bake.error())});
    }
    if (bake->overlapping > 0) {
      baked.warnings.push_back(
          fmt::format("{}: several polygons share {} texels, where the first one shows",
                      options.mesh, bake->overlapping));
    }
    if (bake->covered == 0) {
      baked.warnings.push_back(
          fmt::format("{}: no polygon reaches into tile {}", options.mesh, tile.Udim()));
    }
    surface = std::move(bake->surface);
  }
  if (!surface.tookPart) {
    return tl::unexpected(
        Failure{ExitCode::InvalidInput, "the material's shaders cannot take part in a render"});
  }
  baked.image = std::move(surface.image);
  return baked;
}

}  // namespace

tl::expected<BakedMesh, Failure> LoadBakedMesh(const BakeOptions& options) {
  if (options.mesh.empty()) return {};
  const std::filesystem::path file = host::PathFromUtf8(options.mesh);
  auto mesh = host::ReadMeshFile(file);
  if (!mesh) {
    std::error_code error;
    const bool isThere = std::filesystem::exists(file, error);
    return tl::unexpected(
        Failure{isThere ? ExitCode::InvalidInput : ExitCode::FileTrouble, mesh.error()});
  }
  const auto refuse = [&](const std::string& why) {
    return tl::unexpected(
        Failure{ExitCode::InvalidInput, fmt::format("{}: {}", options.mesh, why)});
  };
  const auto set = static_cast<std::size_t>(options.uvwSet);
  if (const auto checked = host::CheckCoordinates(*mesh, set); !checked) {
    return refuse(checked.error());
  }
  BakedMesh baked;
  baked.hash = HashOf(*mesh);
  baked.mesh = std::make_shared<host::PolygonMesh>(std::move(*mesh));
  if (options.udim) baked.tiles = host::TilesOfMesh(baked.mesh, set);
  if (options.udim && baked.tiles.empty()) return refuse("no polygon reaches into a UDIM tile");
  return baked;
}

tl::expected<BakedPicture, Failure> BakePicture(host::Shader& shader, const BakeOptions& options,
                                                const BakedMesh& mesh,
                                                const PlannedPicture& picture,
                                                const host::TaskOptions& task) {
  if (options.IsFlat()) return BakeFlatly(shader, options, picture, task);
  return BakeOnSurface(shader, options, mesh, picture, task);
}

}  // namespace sorvanix::cli
