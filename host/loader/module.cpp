#include "host/loader/module.h"

#include <fmt/format.h>

#include <system_error>

#include "host/services/filenames.h"

namespace sorvanix::host {

namespace {

namespace fs = std::filesystem;

// Why a path cannot be a library at all; empty when it may be one. The system's own words for these
// cases differ from one to the next.
std::string Objection(const fs::path& path) {
  std::error_code unreadable;
  const fs::file_status status = fs::status(path, unreadable);
  if (!fs::exists(status)) return "no such file";
  if (!fs::is_regular_file(status)) return "not a file";
  return {};
}

}  // namespace

Module::Attachment::~Attachment() {
  if (entry_ != nullptr) entry_(ActionDetach, nullptr, 0, nullptr);
}

Module::Module(fs::path path, Library library, EntryFunction entry)
    : path_(std::move(path)),
      shaders_(std::make_unique<ShaderRegistry>()),
      library_(std::move(library)),
      attachment_(entry) {}

tl::expected<Module, std::string> Module::Load(Host& host, const fs::path& path) {
  std::error_code failed;
  fs::path absolute = fs::absolute(path, failed);
  if (failed) absolute = path;
  const std::string name = Utf8FromPath(absolute);
  const auto refuse = [&](const std::string& reason) {
    return tl::unexpected(fmt::format("{}: {}", name, reason));
  };

  if (const std::string objection = Objection(absolute); !objection.empty()) {
    return refuse(objection);
  }
  auto library = Library::Open(absolute);
  if (!library) return refuse(fmt::format("not a module: {}", library.error()));
  const auto entry = reinterpret_cast<EntryFunction>(library->Symbol(SORVANIX_ENTRY_NAME));
  if (entry == nullptr) return refuse("not a module: no entry " SORVANIX_ENTRY_NAME);

  const std::int32_t attached = entry(ActionAttach, &host.Api(), 0, name.c_str());
  if (attached != 1) {
    return refuse(fmt::format("refused to attach to a host of version {} (answer {})",
                              host.Version(), attached));
  }
  Module module(std::move(absolute), *std::move(library), entry);
  const RegistrationScope registrations(*module.shaders_, host.Version());
  const std::int32_t started = entry(ActionStart, nullptr, 0, nullptr);
  if (started != 1) return refuse(fmt::format("did not start (answer {})", started));
  return module;
}

tl::expected<Shader, std::string> Module::Create(std::int32_t pluginId,
                                                 std::int32_t channel) const {
  const RegisteredShader* registered = shaders_->Find(pluginId);
  if (registered == nullptr) {
    return tl::unexpected(fmt::format("no shader has the id {}", pluginId));
  }
  std::optional<Shader> shader = Shader::Create(*registered, channel);
  if (!shader) {
    return tl::unexpected(fmt::format("{}: no memory for its parameters", registered->name));
  }
  return *std::move(shader);
}

}  // namespace sorvanix::host
