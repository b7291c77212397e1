#include "host/services/registration.h"

#include <algorithm>
#include <cassert>
#include <cstring>

#include "host/services/strings.h"

namespace sorvanix::host {

namespace {

constinit ShaderRegistry* currentRegistry = nullptr;
constinit Word currentVersion = 0;

std::int32_t Register(std::int32_t api, std::int32_t type, std::int32_t id, const HostString* name,
                      const ShaderRecord* record, std::int32_t size) noexcept {
  if (currentRegistry == nullptr || name == nullptr || record == nullptr || size <= 0) return 0;
  if (type != PluginTypeShader || api > currentVersion) return 0;
  return Guarded(0, [&] {
    RegisteredShader shader = {id, std::string(TextOf(name)), {}};
    const std::size_t known = std::min(static_cast<std::size_t>(size), sizeof(ShaderRecord));
    std::memcpy(&shader.record, record, known);
    currentRegistry->Add(std::move(shader));
    return 1;
  });
}

std::int32_t RegisterUnsized(std::int32_t api, std::int32_t type, std::int32_t id,
                             const HostString* name, const ShaderRecord* record) noexcept {
  return Register(api, type, id, name, record, static_cast<std::int32_t>(sizeof(ShaderRecord)));
}

}  // namespace

void ShaderRegistry::Add(RegisteredShader shader) {
  for (const auto& former : shaders_) {
    if (former->id != shader.id) continue;
    *former = std::move(shader);
    return;
  }
  shaders_.push_back(std::make_unique<RegisteredShader>(std::move(shader)));
}

const RegisteredShader* ShaderRegistry::Find(std::int32_t id) const noexcept {
  const auto found = std::find_if(shaders_.begin(), shaders_.end(),
                                  [&](const auto& shader) { return shader->id == id; });
  return found == shaders_.end() ? nullptr : found->get();
}

RegistrationScope::RegistrationScope(ShaderRegistry& registry, Word hostVersion) noexcept {
  assert(currentRegistry == nullptr);
  currentRegistry = &registry;
  currentVersion = hostVersion;
}

RegistrationScope::~RegistrationScope() { currentRegistry = nullptr; }

void InstallRegistration(GeneralTable& table) noexcept {
  table.registerPlugin = Register;
  table.registerPluginUnsized = RegisterUnsized;
}

}  // namespace sorvanix::host
