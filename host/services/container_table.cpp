#include "host/services/container_table.h"

#include "host/services/containers.h"

namespace sorvanix::host {

namespace {

HostContainer* Create(std::int32_t id) noexcept {
  return Guarded<HostContainer*>(nullptr, [&] { return (new Container(id))->Handle(); });
}

void Free(HostContainer* container) noexcept { delete Container::From(container); }

HostContainer* Clone(const HostContainer* container) noexcept {
  if (container == nullptr) return nullptr;
  return Guarded<HostContainer*>(
      nullptr, [&] { return (new Container(*Container::From(container)))->Handle(); });
}

void CopyTo(const HostContainer* source, HostContainer* destination) noexcept {
  if (source == nullptr || destination == nullptr) return;
  Guarded([&] { Container::From(destination)->Assign(*Container::From(source)); });
}

std::int32_t Id(const HostContainer* container) noexcept {
  return container == nullptr ? 0 : Container::From(container)->Id();
}

std::int32_t Find(const HostContainer* container, std::int32_t key) noexcept {
  return container == nullptr ? -1 : Container::From(container)->IndexOf(key);
}

std::int32_t KeyAt(const HostContainer* container, std::int32_t index) noexcept {
  const Container* entries = Container::From(container);
  if (entries == nullptr || index < 0) return -1;
  const auto position = static_cast<std::size_t>(index);
  return position < entries->Size() ? entries->At(position).key : -1;
}

std::int32_t GetBool(const HostContainer* container, std::int32_t key, std::int32_t def) noexcept {
  // The default goes back as it came, even where it is neither 0 nor 1.
  const Container* entries = Container::From(container);
  if (entries == nullptr || !entries->HoldsNumber(key)) return def;
  return entries->GetBool(key) ? 1 : 0;
}

Word GetInt(const HostContainer* container, std::int32_t key, Word def) noexcept {
  return container == nullptr ? def : Container::From(container)->GetInt(key, def);
}

float GetFloat(const HostContainer* container, std::int32_t key, float def) noexcept {
  return container == nullptr ? def : Container::From(container)->GetFloat(key, def);
}

void GetVector(const HostContainer* container, std::int32_t key, const Vector* def,
               Vector* value) noexcept {
  if (value == nullptr) return;
  const Vector fallback = def == nullptr ? Vector{} : *def;
  *value = container == nullptr ? fallback : Container::From(container)->GetVector(key, fallback);
}

// An object of the container by its getter; else the default.
template <auto getter, class Handle>
Handle* GetObject(const HostContainer* container, std::int32_t key, Handle* def) noexcept {
  if (container == nullptr) return def;
  auto* object = (Container::From(container)->*getter)(key);
  return object == nullptr ? def : object->Handle();
}

// Stores a copy of a value; a container or a value that is null, or a short memory, changes
// nothing.
template <class Value>
void Set(HostContainer* container, std::int32_t key, const Value* value) noexcept {
  if (container == nullptr || value == nullptr) return;
  Guarded([&] { Container::From(container)->Set(key, Value(*value)); });
}

void SetBool(HostContainer* container, std::int32_t key, std::int32_t value) noexcept {
  const bool truth = value != 0;
  Set(container, key, &truth);
}

void SetInt(HostContainer* container, std::int32_t key, Word value) noexcept {
  Set(container, key, &value);
}

void SetFloat(HostContainer* container, std::int32_t key, float value) noexcept {
  Set(container, key, &value);
}

void SetVector(HostContainer* container, std::int32_t key, const Vector* value) noexcept {
  Set(container, key, value);
}

void SetString(HostContainer* container, std::int32_t key, const HostString* value) noexcept {
  Set(container, key, Text::From(value));
}

void SetFilename(HostContainer* container, std::int32_t key, const HostFilename* value) noexcept {
  Set(container, key, Filename::From(value));
}

void SetContainer(HostContainer* container, std::int32_t key, const HostContainer* value) noexcept {
  if (container == nullptr || value == nullptr) return;
  Guarded([&] { Container::From(container)->Set(key, NestedContainer(*Container::From(value))); });
}

}  // namespace

void InstallContainers(ContainerTable& table) noexcept {
  table.create = Create;
  table.free = Free;
  table.clone = Clone;
  table.copyTo = CopyTo;
  table.id = Id;
  table.find = Find;
  table.keyAt = KeyAt;
  table.getBool = GetBool;
  table.getInt = GetInt;
  table.getFloat = GetFloat;
  table.getVector = GetVector;
  table.getString = GetObject<&Container::GetText, const HostString>;
  table.getFilename = GetObject<&Container::GetFilename, const HostFilename>;
  table.getContainer = GetObject<&Container::GetContainer, HostContainer>;
  table.setBool = SetBool;
  table.setInt = SetInt;
  table.setFloat = SetFloat;
  table.setVector = SetVector;
  table.setString = SetString;
  table.setFilename = SetFilename;
  table.setContainer = SetContainer;
}

}  // namespace sorvanix::host
