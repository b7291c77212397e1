// A loaded module: attached and started while it lives, detached and unloaded after.
#pragma once

#include <sorvanix/host_api.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <tl/expected.hpp>
#include <utility>

#include "host/host.h"
#include "host/loader/library.h"
#include "host/loader/shader.h"
#include "host/services/registration.h"

namespace sorvanix::host {

class Module {
 public:
  /// Opens the library, attaches it with its absolute path and starts it. The host must outlive the
  /// module. The error is one line: no such file, no library, no entry, refused to attach (a host
  /// too old), did not start. What the module had to say about it went to the message sink.
  static tl::expected<Module, std::string> Load(Host& host, const std::filesystem::path& path);

  Module(Module&&) noexcept = default;
  Module& operator=(Module&&) = delete;  // would close the former library before it is detached
  ~Module() = default;

  /// Absolute.
  const std::filesystem::path& Path() const noexcept { return path_; }
  /// What it registered when it started.
  const ShaderRegistry& Shaders() const noexcept { return *shaders_; }

  /// A new shader with its defaults, in a channel (ids.h). It must be gone before the module is.
  /// The error tells an id that is not registered from a memory that is short.
  tl::expected<Shader, std::string> Create(std::int32_t pluginId, std::int32_t channel) const;

 private:
  /// Detaches when it goes.
  class Attachment {
   public:
    explicit Attachment(EntryFunction entry) noexcept : entry_(entry) {}
    Attachment(Attachment&& other) noexcept : entry_(std::exchange(other.entry_, nullptr)) {}
    ~Attachment();

   private:
    EntryFunction entry_;
  };

  Module(std::filesystem::path path, Library library, EntryFunction entry);

  // In the order of their making: what goes first is the attachment, then the code of the library,
  // which calls back while it is unloaded, last the records of what was code.
  std::filesystem::path path_;
  std::unique_ptr<ShaderRegistry> shaders_;
  Library library_;
  Attachment attachment_;
};

}  // namespace sorvanix::host
