#include "tests/support/scripted_links.h"

#include "tests/support/loaded_module.h"

namespace sorvanix::test {

namespace {

void Record(const char* operation, const ScriptedLink& link, const std::string& more = "") {
  FakeHost::Current().RecordCall(std::string(operation) + "(" + std::to_string(link.number) + more +
                                 ")");
}

ChannelLink* Create() noexcept {
  FakeHost& host = FakeHost::Current();
  if (IsDue(host.failLink)) return nullptr;
  auto* link = new ScriptedLink(++host.linksMade);
  ++host.liveLinks;
  Record("channelCreate", *link);
  return link->handle();
}

void Release(ChannelLink* handle) noexcept {
  const ScriptedLink& link = ScriptedLink::Of(handle);
  Record("channelRelease", link);
  --FakeHost::Current().liveLinks;
  delete &link;
}

std::int32_t Copy(const ChannelLink* source, ChannelLink* destination) noexcept {
  FakeHost& host = FakeHost::Current();
  if (IsDue(host.failLinkCopy)) return 0;
  ScriptedLink::Of(destination).content = ScriptedLink::Of(source).content;
  return 1;
}

std::int32_t Compare(const ChannelLink* first, const ChannelLink* second) noexcept {
  return ScriptedLink::Of(first).content.name == ScriptedLink::Of(second).content.name;
}

std::int32_t InitRender(ChannelLink* handle, const RenderInit* init) noexcept {
  ScriptedLink& link = ScriptedLink::Of(handle);
  Record("channelInitRender", link);
  if (IsDue(FakeHost::Current().failLinkInit)) return RenderInitFailed;
  const ShaderRecord* record = link.content.record;
  if (record == nullptr || record->InitRender == nullptr) return link.initAnswer;
  return record->InitRender(link.content.instance, init);
}

void FreeRender(ChannelLink* handle) noexcept {
  ScriptedLink& link = ScriptedLink::Of(handle);
  Record("channelFreeRender", link);
  const ShaderRecord* record = link.content.record;
  if (record != nullptr && record->FreeRender != nullptr) {
    record->FreeRender(link.content.instance);
  }
}

// Called on render threads: the record of reads is switched off where there are several.
Vector* Sample(Vector* result, ChannelLink* handle, RenderContext* render, const Vector* uvw,
               const Vector* delta, const Vector* normal, float time, std::int32_t tagFlag,
               float blurOffset, float blurScale) noexcept {
  ScriptedLink& link = ScriptedLink::Of(handle);
  if (link.content.record != nullptr) {
    ChannelSample sample = {*uvw, *normal, *delta, time, tagFlag, render, blurOffset, blurScale};
    link.content.record->Output(result, link.content.instance, &sample);
    return result;
  }
  LinkRead read = {link.number, *uvw,      *delta, *normal, time, tagFlag,
                   blurOffset,  blurScale, {},     {},      {}};
  if (link.slotAddress != 0) read.head = link.Slot(FakeHost::cpuIndex);
  if (render != nullptr) {
    read.hitPoint = render->hitPoint;
    read.localHitPoint = render->localHitPoint;
  }
  *result = link.content.show ? link.content.show(read) : link.content.colour;
  FakeHost& host = FakeHost::Current();
  if (host.recordReads) host.reads.push_back(read);
  return result;
}

HostBitmap* Bitmap(ChannelLink* handle) noexcept {
  if (IsDue(FakeHost::Current().failLinkBitmap)) return nullptr;
  const bool holds = ScriptedLink::Of(handle).content.bitmapWidth > 0;
  return holds ? reinterpret_cast<HostBitmap*>(handle) : nullptr;
}

// A link that is told a shader's id makes one of that kind, as far as it is registered.
void TakeShader(ScriptedLink& link, const FakeContainer& payload) {
  const FakeValue* id = payload.Find(KeyLinkPluginId);
  if (id == nullptr || FakeHost::Current().failLinkedShader) return;
  for (const Registration& registration : FakeHost::Current().registrations) {
    if (registration.id == std::get<Word>(*id))
      link.MakeShader(registration.id, registration.record);
  }
}

std::int32_t Message(ChannelLink* handle, std::int32_t id, HostContainer* payload) noexcept {
  ScriptedLink& link = ScriptedLink::Of(handle);
  Record("channelMessage", link, ", " + std::to_string(id));
  if (link.content.record != nullptr) {
    return link.content.record->Message(link.content.instance, id, payload);
  }
  auto* container = reinterpret_cast<FakeContainer*>(payload);
  link.messages.push_back({id, container == nullptr ? FakeContainer{} : *container});
  if (container == nullptr) return link.messageAnswer;
  if (id == MessageSetParameters) TakeShader(link, *container);
  if (id == MessageReportSlots && link.slotStride != 0) {
    container->Set(KeySlots, link.slotAddress);
    container->Set(KeySlotStride, link.slotStride);
  }
  if (id == MessageGetParameters || id == MessageDescribeParameters) *container = link.parameters;
  return link.messageAnswer;
}

std::int32_t PluginId(const ChannelLink* handle) noexcept {
  return ScriptedLink::Of(handle).content.pluginId;
}

ShaderInstance* Instance(ChannelLink* handle) noexcept {
  ScriptedLink& link = ScriptedLink::Of(handle);
  if (link.content.instance != nullptr) return link.content.instance;
  return link.content.pluginId != 0 ? &link.instance : nullptr;
}

}  // namespace

ScriptedLink& ScriptedLink::Of(const ChannelLink* link) {
  return *const_cast<ScriptedLink*>(reinterpret_cast<const ScriptedLink*>(link));
}

void ScriptedLink::HoldBitmap(std::int32_t width, std::int32_t height) {
  content.name = "bitmap";
  content.bitmapWidth = width;
  content.bitmapHeight = height;
}

void ScriptedLink::HoldShader(std::int32_t pluginId) {
  content.name = "shader " + std::to_string(pluginId);
  content.pluginId = pluginId;
  block_.assign(512, 0);
  instance.data = block_.data();
}

void ScriptedLink::HoldShader(ShaderUnderTest& shader, std::int32_t pluginId) {
  content.name = "shader " + std::to_string(pluginId);
  content.pluginId = pluginId;
  content.record = &shader.record;
  content.instance = &shader.instance;
}

void ScriptedLink::MakeShader(std::int32_t pluginId, const ShaderRecord& record) {
  content.pluginId = pluginId;
  content.record = &record;
  content.instance = &instance;
  ownsShader_ = record.Alloc(&instance) != 0;
}

ScriptedLink::~ScriptedLink() {
  if (ownsShader_) content.record->Free(&instance);
}

void ScriptedLink::MakeSlots(std::int32_t cpus, std::int32_t stride) {
  slots_.assign(static_cast<std::size_t>(cpus * stride) / 4, 0);
  slotAddress = reinterpret_cast<Word>(slots_.data());
  slotStride = stride;
}

FootprintBlock& ScriptedLink::Slot(std::int32_t cpu) {
  return *reinterpret_cast<FootprintBlock*>(slotAddress + cpu * slotStride);
}

const ChannelTable& ScriptedLinkTable() {
  static const ChannelTable table = {.reserved0 = 0,
                                     .create = Create,
                                     .release = Release,
                                     .copy = Copy,
                                     .compare = Compare,
                                     .initRender = InitRender,
                                     .freeRender = FreeRender,
                                     .sample = Sample,
                                     .bitmap = Bitmap,
                                     .message = Message,
                                     .pluginId = PluginId,
                                     .instance = Instance};
  return table;
}

const BitmapTable& ScriptedBitmapTable() {
  static const BitmapTable table = [] {
    BitmapTable t = {};
    t.width = [](const HostBitmap* bitmap) noexcept {
      return ScriptedLink::Of(reinterpret_cast<const ChannelLink*>(bitmap)).content.bitmapWidth;
    };
    t.height = [](const HostBitmap* bitmap) noexcept {
      return ScriptedLink::Of(reinterpret_cast<const ChannelLink*>(bitmap)).content.bitmapHeight;
    };
    return t;
  }();
  return table;
}

}  // namespace sorvanix::test
