#include "host/scene/document_tables.h"

#include <cassert>
#include <memory>
#include <optional>
#include <utility>

#include "host/channels/channel_link.h"
#include "host/scene/material_links.h"
#include "host/services/filenames.h"

namespace sorvanix::host {
namespace {

// The tables carry no context, so the state behind them is the process's.
constinit OpenDocuments* openDocuments = nullptr;

HostMaterial* CreateMaterial(std::int32_t type) noexcept {
  if (type != MaterialTypeStandard) return nullptr;
  return Guarded<HostMaterial*>(nullptr, [] {
    auto material = std::shared_ptr<Material>(new Material);
    material->channels[ChannelColour].on = true;
    material->channels[ChannelSpecularColour].on = true;
    Material& made = *material;
    made.self = std::move(material);
    return made.Handle();
  });
}

void FreeMaterial(HostMaterial* handle) noexcept {
  Material* material = Material::From(handle);
  if (material == nullptr) return;
  const std::shared_ptr<Material> last =
      material->scene != nullptr ? material->scene->Remove(*material) : std::move(material->self);
}

MaterialChannel* ChannelOf(HostMaterial* handle, std::int32_t channel) noexcept {
  Material* material = Material::From(handle);
  if (material == nullptr || channel < 0) return nullptr;
  const auto index = static_cast<std::size_t>(channel);
  return index < kMaterialChannelCount ? &material->channels[index] : nullptr;
}

void EnableChannel(HostMaterial* handle, std::int32_t channel, std::int32_t on) noexcept {
  if (MaterialChannel* chosen = ChannelOf(handle, channel)) chosen->on = on != 0;
}

ChannelLink* LinkOfChannel(HostMaterial* handle, std::int32_t channel) noexcept {
  MaterialChannel* chosen = ChannelOf(handle, channel);
  if (chosen == nullptr) return nullptr;
  return Guarded<ChannelLink*>(nullptr, [&] { return LinkOf(*chosen).Handle(); });
}

HostObject* FirstObject(const HostDocument* handle) noexcept {
  const Scene* scene = Scene::From(handle);
  if (scene == nullptr || scene->root.children.empty()) return nullptr;
  return scene->root.children.front()->Handle();
}

// The module is handed what it may change out of a document that it was told not to.
Scene* SceneOf(const HostDocument* handle) noexcept {
  return const_cast<Scene*>(Scene::From(handle));
}

HostObject* FindObject(const HostDocument* handle, const HostString* name) noexcept {
  Scene* scene = SceneOf(handle);
  Object* found = scene != nullptr && name != nullptr ? scene->FindObject(TextOf(name)) : nullptr;
  return found != nullptr ? found->Handle() : nullptr;
}

HostMaterial* FindMaterial(const HostDocument* handle, const HostString* name) noexcept {
  const Scene* scene = Scene::From(handle);
  if (scene == nullptr || name == nullptr) return nullptr;
  const auto found = scene->FindMaterial(TextOf(name));
  return found != nullptr ? found->Handle() : nullptr;
}

void InsertMaterial(HostDocument* handle, HostMaterial* materialHandle) noexcept {
  Scene* scene = Scene::From(handle);
  Material* material = Material::From(materialHandle);
  if (scene == nullptr || material == nullptr || material->self == nullptr) return;
  Guarded([&] {
    scene->Add(material->self);
    material->self = nullptr;
  });
}

void RemoveMaterial(HostDocument* handle, HostMaterial* materialHandle) noexcept {
  Scene* scene = Scene::From(handle);
  Material* material = Material::From(materialHandle);
  if (scene == nullptr || material == nullptr) return;
  if (auto removed = scene->Remove(*material)) material->self = std::move(removed);
}

HostTag* ActiveTag(const HostDocument* handle) noexcept {
  const Scene* scene = Scene::From(handle);
  return scene != nullptr && scene->activeTag != nullptr ? scene->activeTag->Handle() : nullptr;
}

HostDocument* ActiveDocument() noexcept {
  Scene* active = openDocuments != nullptr ? openDocuments->Active() : nullptr;
  return active != nullptr ? active->Handle() : nullptr;
}

std::unique_ptr<Scene> LoadDocument(const HostFilename* filename) {
  const SceneReadingOptions none;
  const auto& options = openDocuments != nullptr ? openDocuments->Options() : none;
  return LoadScene(PathOf(filename), options).scene;
}

HostDocument* Load(const HostFilename* filename) noexcept {
  if (filename == nullptr) return nullptr;
  return Guarded<HostDocument*>(nullptr, [&] {
    std::unique_ptr<Scene> scene = LoadDocument(filename);
    return scene != nullptr ? scene.release()->Handle() : nullptr;
  });
}

std::int32_t Merge(HostDocument* handle, const HostFilename* filename) noexcept {
  Scene* scene = Scene::From(handle);
  if (scene == nullptr || filename == nullptr) return 0;
  return Guarded(0, [&] {
    const std::unique_ptr<Scene> other = LoadDocument(filename);
    if (other == nullptr) return 0;
    scene->TakeOver(*other);
    return 1;
  });
}

void FreeDocument(HostDocument* handle) noexcept {
  Scene* scene = Scene::From(handle);
  if (openDocuments != nullptr && openDocuments->Active() == scene) {
    openDocuments->SetActive(nullptr);
  }
  delete scene;
}

}  // namespace

OpenDocuments::OpenDocuments(SceneReadingOptions options, Scene* active)
    : options_(std::move(options)), active_(active) {
  assert(openDocuments == nullptr && "one at a time: documents carry no context");
  openDocuments = this;
}

OpenDocuments::~OpenDocuments() { openDocuments = nullptr; }

void InstallMaterials(MaterialTable& table) noexcept {
  table = {.create = CreateMaterial,
           .free = FreeMaterial,
           .enableChannel = EnableChannel,
           .channel = LinkOfChannel};
}

void InstallDocuments(DocumentTable& document, DocumentListTable& list) noexcept {
  document.firstObject = FirstObject;
  document.findObject = FindObject;
  document.findMaterial = FindMaterial;
  document.insertMaterial = InsertMaterial;
  document.removeMaterial = RemoveMaterial;
  document.activeTag = ActiveTag;
  list = {.active = ActiveDocument, .load = Load, .merge = Merge, .free = FreeDocument};
}

}  // namespace sorvanix::host
