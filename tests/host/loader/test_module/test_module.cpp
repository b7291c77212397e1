// A small module with its own entry, for the tests of the loader. It tells of its life through
// messages to the user: "attached", "started", "shader freed", "detached", "unloaded".
#include "tests/host/loader/test_module/test_module.h"

#include <sorvanix/host_api.h>

#include <cstring>

#ifndef TEST_MODULE_ATTACH_ANSWER
#define TEST_MODULE_ATTACH_ANSWER 1
#endif
#ifndef TEST_MODULE_START_ANSWER
#define TEST_MODULE_START_ANSWER 1
#endif
#ifndef TEST_MODULE_ENTRY_NAME
#define TEST_MODULE_ENTRY_NAME c4d_main
#endif

namespace {

using sorvanix::test::LifeBlock;

HostApi host = {};
HostResources* resources = nullptr;

void Tell(const char* what) {
  HostString* text = host.string->createFromChars(what, -1);
  host.general->messageDialog(text, MessageDialogFlags);
  host.string->free(text);
}

LifeBlock* BlockOf(const ShaderInstance* instance) {
  return static_cast<LifeBlock*>(instance->data);
}

std::int32_t Alloc(ShaderInstance* instance) noexcept {
  instance->data = host.general->alloc(sizeof(LifeBlock));
  if (instance->data == nullptr) return 0;
  BlockOf(instance)->level = sorvanix::test::kDefaultLevel;
  return 1;
}

void Free(ShaderInstance* instance) noexcept {
  Tell("shader freed");
  host.general->free(instance->data);
  instance->data = nullptr;
}

std::int32_t Copy(const ShaderInstance* source, ShaderInstance* destination) noexcept {
  BlockOf(destination)->level = BlockOf(source)->level;
  return 1;
}

std::int32_t Compare(const ShaderInstance* first, const ShaderInstance* second) noexcept {
  return BlockOf(first)->level == BlockOf(second)->level ? 1 : 0;
}

std::int32_t Read(ShaderInstance* instance, HostStream* reader) noexcept {
  host.stream->readFloat(reader, &BlockOf(instance)->level);
  return 1;
}

std::int32_t Write(const ShaderInstance* instance, HostStream* writer) noexcept {
  host.stream->writeFloat(writer, BlockOf(instance)->level);
  return 1;
}

// As if a user doubled the level and confirmed.
std::int32_t Edit(ShaderInstance* instance) noexcept {
  BlockOf(instance)->level *= 2;
  return 1;
}

std::uint32_t GetInfo() noexcept { return sorvanix::test::kLifeInfo; }

std::int32_t Message(ShaderInstance* instance, std::int32_t id, HostContainer* payload) noexcept {
  using sorvanix::test::kLevelKey;
  float& level = BlockOf(instance)->level;
  if (id == MessageSetParameters) level = host.container->getFloat(payload, kLevelKey, level);
  if (id == MessageGetParameters) host.container->setFloat(payload, kLevelKey, level);
  if (id == MessageDescribeParameters) host.container->setInt(payload, kLevelKey, DescribeReal);
  return 1;
}

std::int32_t InitRender(ShaderInstance* instance, const RenderInit* /*init*/) noexcept {
  ++BlockOf(instance)->initRenders;
  const bool refuses = BlockOf(instance)->level == sorvanix::test::kLevelThatCannotRender;
  return refuses ? RenderInitFailed : 0;
}

void FreeRender(ShaderInstance* instance) noexcept { ++BlockOf(instance)->freeRenders; }

void Output(Vector* result, ShaderInstance* instance, ChannelSample* /*sample*/) noexcept {
  const float level = BlockOf(instance)->level;
  *result = {level, level, level};
}

void OutputCoordinate(Vector* result, ShaderInstance* /*instance*/,
                      ChannelSample* sample) noexcept {
  *result = sample->uvw;
}

std::int32_t Register(std::int32_t id, const ShaderRecord& record) {
  HostString* name = host.resources->loadString(resources, id, 1);
  const std::int32_t answer =
      host.general->registerPlugin(PluginApiVersion, PluginTypeShader, id, name, &record,
                                   static_cast<std::int32_t>(sizeof record));
  host.string->free(name);
  return answer;
}

// The texts beside the module, when there are any.
void OpenResources(const char* path) {
  HostString* text = host.string->createFromChars(path, -1);
  HostFilename* file = host.filename->fromString(text);
  HostFilename* folder = host.filename->directory(file);
  resources = host.resources->open(folder);
  host.filename->free(folder);
  host.filename->free(file);
  host.string->free(text);
}

std::int32_t Attach(const void* api, const char* path) {
  if (TEST_MODULE_ATTACH_ANSWER != 1) return TEST_MODULE_ATTACH_ANSWER;
  std::memcpy(&host, api, sizeof host);
  Tell("attached");
  OpenResources(path);
  return 1;
}

std::int32_t Start() {
  using namespace sorvanix::test;
  const ShaderRecord life = {0,       Alloc,   Free,       Copy,       Compare, Read, Write, Edit,
                             GetInfo, Message, InitRender, FreeRender, Output,  0,    0};
  ShaderRecord bare = {};
  bare.Output = OutputCoordinate;
  const ShaderRecord empty = {};
  const bool registered = Register(kLifeShaderId, life) != 0 &&
                          Register(kBareShaderId, bare) != 0 &&
                          Register(kEmptyShaderId, empty) != 0;
  Tell(registered ? "started" : "registration refused");
  return registered ? TEST_MODULE_START_ANSWER : 0;
}

// Calls back when the library is unloaded, after its entry was called for the last time.
struct Farewell {
  ~Farewell() {
    if (host.resources == nullptr) return;  // never attached
    Tell("unloaded");
    host.resources->close(resources);
  }
} farewell;

}  // namespace

extern "C" __attribute__((visibility("default"))) std::int32_t TEST_MODULE_ENTRY_NAME(
    std::int32_t action, void* arg1, Word /*arg2*/, const char* arg3) noexcept {
  switch (action) {
    case ActionAttach:
      return Attach(arg1, arg3);
    case ActionStart:
      return Start();
    case ActionDetach:
      Tell("detached");
      return 1;
    default:
      return ActionUnknown;
  }
}
