#include "apps/sorvanix/bake_recipe.h"

#include <utility>

#include "apps/sorvanix/recipe_files.h"
#include "host/services/json_numbers.h"

namespace sorvanix::cli {

namespace {

using host::Json;

Json Text(std::string text) { return Json(std::move(text)); }

// What tells a bake on a surface from a flat one.
void AddSurface(Json::Object& recipe, const BakeOptions& options, const BakedMesh& mesh,
                const PlannedPicture& output) {
  if (options.plane) {
    recipe.push_back({"surface", Text("plane")});
  } else {
    recipe.push_back({"surface", Text("mesh")});
    recipe.push_back({"mesh", Text(options.mesh)});
    recipe.push_back({"meshHash", Text(mesh.hash)});
    recipe.push_back({"uvSet", host::JsonOf(options.uvwSet)});
    recipe.push_back({"gutter", host::JsonOf(options.gutter)});
    if (output.tile) recipe.push_back({"udim", host::JsonOf(output.tile->Udim())});
  }
}

}  // namespace

std::string RecipeOf(const host::MaterialNode& material, const BakeOptions& options,
                     const BakedMesh& mesh, const PlannedPicture& output) {
  Json::Object recipe = {
      {"material", JsonOf(material)},
      {"channel", Text(options.ChannelName())},
      {"size", Json(Json::Array{host::JsonOf(options.Width()), host::JsonOf(options.Height())})},
      {"samples", host::JsonOf(options.picture.samples)},
      {"time", host::JsonOf(output.at.time)}};
  if (!options.IsFlat()) AddSurface(recipe, options, mesh, output);
  AddFiles(recipe, FilesOf(material));
  return host::WriteJson(Json(std::move(recipe)), -1);
}

}  // namespace sorvanix::cli
