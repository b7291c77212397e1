#include "apps/sorvanix/module_place.h"

#include <fmt/format.h>

#include <CLI/App.hpp>
#include <cstdlib>
#include <system_error>

#include "host/services/filenames.h"

namespace sorvanix::cli {

namespace {

namespace fs = std::filesystem;

constexpr const char* kModuleVariable = "SORVANIX_MODULE";

// Relative to the program's folder: in the same folder, in a build tree, and as installed.
constexpr const char* kUsualPlaces[] = {"sorvaNIX/sorvaNIX.so", "../sorvaNIX/sorvaNIX.so",
                                        "../lib/sorvanix/sorvaNIX.so"};

}  // namespace

void AddModuleOption(CLI::App& app, std::string& module) {
  app.add_option("--module", module, "The module's file (or set SORVANIX_MODULE)")
      ->type_name("FILE");
}

tl::expected<fs::path, std::string> FindModule(const std::string& asked) {
  if (!asked.empty()) return host::PathFromUtf8(asked);
  const char* const variable = std::getenv(kModuleVariable);
  if (variable != nullptr && *variable != '\0') return host::PathFromUtf8(variable);

  std::error_code error;
  const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
  for (const char* const place : kUsualPlaces) {
    if (fs::exists(folder / place, error)) return folder / place;
  }
  return tl::unexpected(fmt::format("the module is not at {}; name it with --module or {}",
                                    host::Utf8FromPath(folder / kUsualPlaces[0]), kModuleVariable));
}

tl::expected<host::ShaderCatalogue, std::string> LoadCatalogue(const fs::path& module) {
  std::error_code error;
  if (!fs::exists(module, error)) {
    return tl::unexpected(fmt::format("{}: there is no such module", host::Utf8FromPath(module)));
  }
  return host::ShaderCatalogue::Load(module.parent_path() / "Resources" / "shaders.json");
}

tl::expected<host::ShaderCatalogue, std::string> FindCatalogue(const std::string& askedModule) {
  return FindModule(askedModule).and_then(LoadCatalogue);
}

}  // namespace sorvanix::cli
