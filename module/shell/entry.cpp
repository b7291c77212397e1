// The module's one exported function: attach, start, detach, query.
#include <cstring>

#include "module/shell/module_state.h"
#include "module/shell/plugin_start.h"

namespace sorvanix {

namespace {

// How often the module is attached. Not rolled back by a failed attach, so that a second attempt is
// taken for a nested one and answered with 1: deliberate, hosts rely on it.
constinit std::int32_t loadCount = 0;

void CopyPath(const char* path) noexcept {
  const std::size_t length = strnlen(path, kPluginPathCapacity - 1);
  std::memcpy(pluginPath, path, length);
  pluginPath[length] = '\0';
}

std::int32_t Attach(const void* hostTables, const char* path) noexcept {
  constexpr std::int32_t kAttached = 1;
  // Wraps like the machine word it is, so that no number of calls is undefined.
  loadCount = static_cast<std::int32_t>(static_cast<std::uint32_t>(loadCount) + 1u);
  if (loadCount != 1) return kAttached;
  if (hostTables == nullptr) return ActionRefused;
  std::memcpy(&hostApi, hostTables, sizeof(hostApi));
  if (hostApi.version < HostVersionAttach) return ActionRefused;
  if (path == nullptr) return ActionRefused;
  CopyPath(path);
  return kAttached;
}

std::int32_t Detach() noexcept {
  loadCount = static_cast<std::int32_t>(static_cast<std::uint32_t>(loadCount) - 1u);
  if (loadCount == 0) PluginEnd();
  return 1;
}

}  // namespace

}  // namespace sorvanix

#if defined(_WIN32)
#define SORVANIX_EXPORT __declspec(dllexport)
#else
#define SORVANIX_EXPORT __attribute__((visibility("default")))
#endif

extern "C" SORVANIX_EXPORT std::int32_t c4d_main(std::int32_t action, void* arg1, Word,
                                                 const char* arg3) noexcept {
  using namespace sorvanix;
  switch (action) {
    case ActionAttach:
      return Attach(arg1, arg3);
    case ActionStart:
      return PluginStart();
    case ActionDetach:
      return Detach();
    case ActionQuery:
      return ActionQueryAnswer;
    default:
      return ActionUnknown;
  }
}
