#include "tests/support/fake_documents.h"

#include "tests/support/fake_host.h"

namespace sorvanix::test {

namespace {

FakeDocuments& Service() { return FakeHost::Current().documents; }
FakeScene* Of(const HostDocument* document) {
  return const_cast<FakeScene*>(reinterpret_cast<const FakeScene*>(document));
}
FakeMaterial& Of(const HostMaterial* material) {
  return *const_cast<FakeMaterial*>(reinterpret_cast<const FakeMaterial*>(material));
}
FakeTextureTag& Of(const HostTag* tag) {
  return *const_cast<FakeTextureTag*>(reinterpret_cast<const FakeTextureTag*>(tag));
}

HostDocument* Load(const HostFilename* filename) noexcept {
  const std::string path = FakeTextOf(reinterpret_cast<const HostString*>(filename));
  Service().asked.push_back(path);
  if (Service().files.count(path) == 0 || IsDue(Service().failLoad)) return nullptr;
  ++Service().liveScenes;
  auto* scene = new FakeScene;
  scene->Add("Floor");
  scene->Add(Service().objectName);
  return scene->handle();
}

void FreeDocument(HostDocument* document) noexcept {
  --Service().liveScenes;
  for (const FakeObject* object = Of(document)->first; object != nullptr; object = object->next) {
    Service().textureTags.erase(object);
  }
  delete Of(document);
}

HostObject* FindObject(const HostDocument* document, const HostString* name) noexcept {
  for (FakeObject* object = Of(document)->first; object != nullptr; object = object->next) {
    if (object->name == FakeTextOf(name)) return reinterpret_cast<HostObject*>(object);
  }
  return nullptr;
}

HostMaterial* CreateMaterial(std::int32_t type) noexcept {
  if (IsDue(Service().failMaterial)) return nullptr;
  ++Service().liveMaterials;
  auto* material = new FakeMaterial{type, {}, {}};
  Service().lastMaterial = material;
  return material->handle();
}

void FreeMaterial(HostMaterial* material) noexcept {
  --Service().liveMaterials;
  delete &Of(material);
}

ChannelLink* ChannelOf(HostMaterial* material, std::int32_t channel) noexcept {
  auto& link = Of(material).links[channel];
  if (link == nullptr) link = std::make_unique<ScriptedLink>(0);
  return link->handle();
}

HostTag* MakeTag(HostObject* handle, std::int32_t type) noexcept {
  if (type != TagTypeTexture || IsDue(Service().failTag)) return nullptr;
  const auto* object = reinterpret_cast<const FakeObject*>(handle);
  FakeTextureTag& tag = Service().textureTags[object];
  tag.object = object;
  return tag.handle();
}

HostTag* TagOf(const HostObject* handle, std::int32_t type) noexcept {
  if (type != TagTypeTexture) return FakeObjectTable().tag(handle, type);
  const auto found = Service().textureTags.find(reinterpret_cast<const FakeObject*>(handle));
  return found == Service().textureTags.end() ? nullptr : found->second.handle();
}

std::int32_t Render(HostDocument* document, HostBitmap* bitmap, const HostContainer* settings,
                    HostThread* thread) noexcept {
  FakeRender render = {Of(document), *reinterpret_cast<const FakeContainer*>(settings), thread};
  for (const FakeObject* object = render.scene->first; object != nullptr; object = object->next) {
    const auto tag = Service().textureTags.find(object);
    if (tag == Service().textureTags.end() || tag->second.material == nullptr) continue;
    render.material = &Of(tag->second.material);
    render.materialInserted = render.material->inserted;
  }
  if (Service().onRender) Service().onRender(render, bitmap);
  render.material = nullptr;
  Service().renders.push_back(render);
  return IsDue(Service().failRender) ? 1 : Service().renderAnswer;
}

}  // namespace

void InstallFakeDocuments(ObjectTable& object, DocumentTable& document) {
  object.tag = TagOf;
  object.makeTag = MakeTag;
  object.setTagMaterial = [](HostTag* tag, HostMaterial* material) noexcept {
    Of(tag).material = material;
  };
  object.tagContainer = [](const HostTag* tag) noexcept -> const HostContainer* {
    return Of(tag).settings.handle();
  };
  object.tagPosition = [](const HostTag* tag, Vector* v) noexcept { *v = Of(tag).position; };
  object.tagScale = [](const HostTag* tag, Vector* v) noexcept { *v = Of(tag).scale; };
  object.tagRotation = [](const HostTag* tag, Vector* v) noexcept { *v = Of(tag).rotation; };
  document.findObject = FindObject;
  document.insertMaterial = [](HostDocument*, HostMaterial* material) noexcept {
    Of(material).inserted = true;
  };
  document.removeMaterial = [](HostDocument*, HostMaterial* material) noexcept {
    Of(material).inserted = false;
  };
  document.activeTag = [](const HostDocument*) noexcept -> HostTag* {
    return Service().activeTag == nullptr ? nullptr : Service().activeTag->handle();
  };
  document.render = Render;
}

const MaterialTable& FakeMaterialTable() {
  static const MaterialTable table = {
      .create = CreateMaterial,
      .free = FreeMaterial,
      .enableChannel = [](HostMaterial* material, std::int32_t channel,
                          std::int32_t on) noexcept { Of(material).enabled[channel] = on != 0; },
      .channel = ChannelOf};
  return table;
}

const DocumentListTable& FakeDocumentListTable() {
  static const DocumentListTable table = {
      .active = []() noexcept -> HostDocument* {
        FakeDocuments& documents = Service();
        return documents.hasActiveDocument ? documents.active.handle() : nullptr;
      },
      .load = Load,
      .merge = nullptr,
      .free = FreeDocument};
  return table;
}

}  // namespace sorvanix::test
