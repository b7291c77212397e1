#include "tests/support/fake_host.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "tests/support/fake_scene.h"

namespace sorvanix::test {

constinit thread_local std::int32_t FakeHost::cpuIndex = 0;

namespace {

FakeHost* current = nullptr;

// Strings and filenames are the same thing here: a text.
struct FakeText {
  std::string text;
};
FakeText emptyText;

template <class Handle>
Handle* ToHandle(FakeText* text) {
  return reinterpret_cast<Handle*>(text);
}
template <class Handle>
const std::string& TextOf(const Handle* handle) {
  return handle == nullptr ? emptyText.text : reinterpret_cast<const FakeText*>(handle)->text;
}

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace

// The functions of the tables; a struct so that FakeHost can befriend them at once.
struct FakeTables {
  static void Record(const std::string& call) { FakeHost::Current().RecordCall(call); }

  template <class Handle>
  static Handle* NewText(const std::string& text) {
    if (IsDue(FakeHost::Current().failText)) return ToHandle<Handle>(&emptyText);
    ++FakeHost::Current().liveTexts_;
    return ToHandle<Handle>(new FakeText{text});
  }
  template <class Handle>
  static void FreeText(Handle* handle) {
    auto* text = reinterpret_cast<FakeText*>(handle);
    if (text == nullptr || text == &emptyText) return;
    --FakeHost::Current().liveTexts_;
    delete text;
  }

  static void* Alloc(std::size_t size) noexcept {
    FakeHost& host = FakeHost::Current();
    const std::lock_guard lock(host.mutex_);
    host.calls.push_back("alloc(" + std::to_string(size) + ")");
    if (IsDue(host.failAllocation)) return nullptr;
    void* block = std::calloc(1, size == 0 ? 1 : size);
    host.blocks_.insert(block);
    return block;
  }
  static void Free(void* block) noexcept {
    if (block == nullptr) return;
    FakeHost& host = FakeHost::Current();
    const std::lock_guard lock(host.mutex_);
    host.blocks_.erase(block);
    host.calls.push_back("free");
    std::free(block);
  }
  static void MessageDialog(const HostString* text, std::int32_t flags) noexcept {
    FakeHost::Current().messages.push_back(TextOf(text));
    Record("messageDialog(" + Quoted(TextOf(text)) + ", " + std::to_string(flags) + ")");
  }
  static std::int32_t RegisterPlugin(std::int32_t pluginApi, std::int32_t type, std::int32_t id,
                                     const HostString* name, const ShaderRecord* record,
                                     std::int32_t size) noexcept {
    FakeHost& host = FakeHost::Current();
    host.registrations.push_back({pluginApi, type, id, TextOf(name), *record, size});
    host.calls.push_back("registerPlugin(" + std::to_string(id) + ")");
    return static_cast<int>(host.registrations.size()) == host.refuseRegistration ? 0 : 1;
  }

  static HostString* StringFromChars(const char* chars, std::int32_t length) noexcept {
    Record("string(" + Quoted(chars) + ", " + std::to_string(length) + ")");
    return NewText<HostString>(length < 0 ? chars : std::string(chars, std::size_t(length)));
  }
  static HostString* CreateString() noexcept { return NewText<HostString>(""); }
  static HostString* CopyString(const HostString* text) noexcept {
    return NewText<HostString>(TextOf(text));
  }
  static std::int32_t CompareStrings(const HostString* a, const HostString* b) noexcept {
    return TextOf(a).compare(TextOf(b));
  }
  static void FreeString(HostString* text) noexcept { FreeText(text); }
  static HostString* Concatenate(const HostString* first, const HostString* second) noexcept {
    return NewText<HostString>(TextOf(first) + TextOf(second));
  }

  static HostFilename* FilenameFromString(const HostString* path) noexcept {
    Record("filename(" + Quoted(TextOf(path)) + ")");
    if (TextOf(path).empty()) return ToHandle<HostFilename>(&emptyText);
    return NewText<HostFilename>(TextOf(path));
  }
  static HostFilename* CopyFilename(const HostFilename* filename) noexcept {
    Record("copyFilename(" + Quoted(TextOf(filename)) + ")");
    return NewText<HostFilename>(TextOf(filename));
  }
  static void FreeFilename(HostFilename* filename) noexcept { FreeText(filename); }
  static HostFilename* Directory(const HostFilename* filename) noexcept {
    Record("directory(" + Quoted(TextOf(filename)) + ")");
    const std::size_t slash = TextOf(filename).rfind('/');
    if (slash == std::string::npos) return ToHandle<HostFilename>(&emptyText);
    return NewText<HostFilename>(TextOf(filename).substr(0, slash));
  }
  static HostFilename* Append(const HostFilename* filename, const HostString* component) noexcept {
    return NewText<HostFilename>(TextOf(filename) + "/" + TextOf(component));
  }

  static HostResources* OpenResources(const HostFilename* directory) noexcept {
    Record("openResources(" + Quoted(TextOf(directory)) + ")");
    FakeHost& host = FakeHost::Current();
    const bool fails = host.failResources || IsDue(host.failResourcesOpen);
    return fails ? nullptr : reinterpret_cast<HostResources*>(&host.texts);
  }
  static void CloseResources(HostResources*) noexcept { Record("closeResources"); }
  static HostString* LoadString(HostResources*, std::int32_t id, std::int32_t flag) noexcept {
    Record("loadString(" + std::to_string(id) + ", " + std::to_string(flag) + ")");
    const auto& texts = FakeHost::Current().texts;
    const auto found = texts.find(id);
    if (found == texts.end()) return ToHandle<HostString>(&emptyText);
    return NewText<HostString>(found->second);
  }

  static std::int32_t CpuCount(const RenderContext*) noexcept {
    Record("cpuCount");
    return FakeHost::Current().cpuCount;
  }
  // Called on render threads: records nothing.
  static std::int32_t CpuIndex(const RenderContext*) noexcept { return FakeHost::cpuIndex; }
  static std::int32_t FractalInit(void* weights, std::int32_t capacity, float step,
                                  float exponent) noexcept {
    Record("fractalInit(" + std::string(weights == nullptr ? "null" : "block") + ", " +
           std::to_string(capacity) + ", " + std::to_string(step) + ", " +
           std::to_string(exponent) + ")");
    return 1;
  }
};

namespace {

const GeneralTable generalTable = {
    .alloc = FakeTables::Alloc,
    .free = FakeTables::Free,
    .messageDialog = FakeTables::MessageDialog,
    .registerPlugin = FakeTables::RegisterPlugin,
    .registerPluginUnsized = nullptr,
    .fileExists = nullptr,
};

const StringTable stringTable = {
    .empty = ToHandle<HostString>(&emptyText),
    .create = FakeTables::CreateString,
    .createFromChars = FakeTables::StringFromChars,
    .copy = FakeTables::CopyString,
    .free = FakeTables::FreeString,
    .length = nullptr,
    .compare = FakeTables::CompareStrings,
    .concatenate = FakeTables::Concatenate,
    .fromNumber = nullptr,
};

const FilenameTable filenameTable = {
    .empty = ToHandle<HostFilename>(&emptyText),
    .create = nullptr,
    .fromString = FakeTables::FilenameFromString,
    .copy = FakeTables::CopyFilename,
    .free = FakeTables::FreeFilename,
    .directory = FakeTables::Directory,
    .append = FakeTables::Append,
};

const ResourceTable resourceTable = {
    .open = FakeTables::OpenResources,
    .close = FakeTables::CloseResources,
    .loadString = FakeTables::LoadString,
};

}  // namespace

std::string& FakeTextOf(HostString* text) {
  return text == nullptr ? emptyText.text : reinterpret_cast<FakeText*>(text)->text;
}
const std::string& FakeTextOf(const HostString* text) { return TextOf(text); }

FakeHost::FakeHost(Word version) {
  current = this;
  texts = {{10001, "sorvaNIX"}};
  for (std::int32_t id = 10002; id <= 10017; ++id) texts[id] = "text " + std::to_string(id);
  render.cpuCount = FakeTables::CpuCount;
  render.cpuIndex = FakeTables::CpuIndex;
  render.fractalInit = FakeTables::FractalInit;
  api.version = version;
  api.general = &generalTable;
  api.render = &render;
  api.stream = &FakeStreamTable();
  api.channel = &ScriptedLinkTable();
  api.bitmap = &FakeBitmapTable();
  api.container = &FakeContainerTable();
  api.string = &stringTable;
  api.filename = &filenameTable;
  api.resources = &resourceTable;
  object = FakeObjectTable();
  document = FakeDocumentTable();
  InstallFakeDocuments(object, document);
  api.object = &object;
  api.document = &document;
  api.documentList = &FakeDocumentListTable();
  api.material = &FakeMaterialTable();
  api.dialog = &FakeDialogTable();
  api.dialogForm = &FakeDialogFormTable();
  api.file = &FakeFileTable();
  api.thread = &FakeThreadTable();
}

FakeHost::~FakeHost() {
  current = nullptr;
  for (void* block : blocks_) std::free(block);  // of a module that was not detached
}

FakeHost& FakeHost::Current() {
  if (current == nullptr) std::abort();
  return *current;
}

}  // namespace sorvanix::test
