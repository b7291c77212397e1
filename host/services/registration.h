// Registration: the shaders that a module offers while it starts.
#pragma once

#include <sorvanix/host_services.h>
#include <sorvanix/ids.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/services/handle.h"

namespace sorvanix::host {

/// One shader as the module registered it. The callbacks are the module's code: they are gone when
/// it is unloaded.
struct RegisteredShader {
  std::int32_t id = 0;
  std::string name;
  ShaderRecord record = {};
};

/// The shaders of one module, in the order of their registration. A shader stays at its address.
class ShaderRegistry {
 public:
  /// Adds a shader, or replaces the one with the same id. Throws std::bad_alloc.
  void Add(RegisteredShader shader);

  const RegisteredShader* Find(std::int32_t id) const noexcept;
  const std::vector<std::unique_ptr<RegisteredShader>>& All() const noexcept { return shaders_; }

 private:
  std::vector<std::unique_ptr<RegisteredShader>> shaders_;
};

/// While it lives, registrations go into a registry; without one they are refused. One at a time.
///
/// Refused too are: a plug-in that is no shader, one written for a newer API than the host's
/// version, and one without a name or a record. Of a record longer than ShaderRecord the rest is
/// left out; what a shorter one does not say stays null.
class RegistrationScope {
 public:
  RegistrationScope(ShaderRegistry& registry, Word hostVersion) noexcept;
  ~RegistrationScope();
  RegistrationScope(const RegistrationScope&) = delete;
  RegistrationScope& operator=(const RegistrationScope&) = delete;
};

void InstallRegistration(GeneralTable& table) noexcept;

}  // namespace sorvanix::host
