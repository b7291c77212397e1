#include "apps/studio/program/engine.h"

#include <utility>

#include "apps/sorvanix/module_place.h"
#include "host/images/bitmap_texture.h"

namespace sorvanix::studio {

Engine::Engine(host::ShaderCatalogue catalogue, std::filesystem::path folder)
    : catalogue_(std::move(catalogue)),
      folder_(std::move(folder)),
      documents_({.catalogue = &catalogue_}) {}

tl::expected<std::unique_ptr<Engine>, std::string> Engine::Load(const std::string& module) {
  const auto file = cli::FindModule(module);
  if (!file) return tl::unexpected(file.error());
  auto catalogue = cli::LoadCatalogue(*file);
  if (!catalogue) return tl::unexpected(catalogue.error());
  host::SetTextureLoader(host::OpenBitmapTexture);
  std::error_code error;
  const auto folder = std::filesystem::absolute(*file, error).lexically_normal().parent_path();
  std::unique_ptr<Engine> engine(new Engine(std::move(*catalogue), folder));
  if (auto loaded = engine->module_.Load(*file); !loaded) {
    return tl::unexpected(loaded.error().message);
  }
  return engine;
}

}  // namespace sorvanix::studio
