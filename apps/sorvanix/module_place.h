// Where the module is, and the catalogue of shaders that lies beside it.
#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

#include "host/services/shader_catalogue.h"

namespace CLI {
class App;
}

namespace sorvanix::cli {

/// Adds --module.
void AddModuleOption(CLI::App& app, std::string& module);

/// The module's file: the one asked for, else that of the environment variable SORVANIX_MODULE,
/// else the first that is found beside the program or in the lib folder beside the program's. The
/// error is one line.
tl::expected<std::filesystem::path, std::string> FindModule(const std::string& asked);

/// Reads what the module's folder tells about its shaders, without loading it.
tl::expected<host::ShaderCatalogue, std::string> LoadCatalogue(const std::filesystem::path& module);

/// FindModule, then LoadCatalogue.
tl::expected<host::ShaderCatalogue, std::string> FindCatalogue(const std::string& askedModule);

}  // namespace sorvanix::cli
