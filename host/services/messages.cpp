#include "host/services/messages.h"

#include <cstdio>
#include <mutex>
#include <set>
#include <string>
#include <utility>

#include "host/services/handle.h"
#include "host/services/strings.h"

namespace sorvanix::host {

namespace {

constinit MessageSink* currentSink = nullptr;
constinit thread_local bool showsOnce = false;

bool IsNew(std::string_view text) {
  static std::mutex mutex;
  static std::set<std::string, std::less<>> shown;
  const std::lock_guard lock(mutex);
  return shown.emplace(text).second;
}

void Show(const HostString* text, std::int32_t flags) noexcept {
  if (text != nullptr) Guarded([&] { ShowMessage(TextOf(text), flags); });
}

}  // namespace

MessageSink* SetMessageSink(MessageSink* sink) noexcept { return std::exchange(currentSink, sink); }

void ShowMessage(std::string_view text, std::int32_t flags) {
  if (showsOnce && !IsNew(text)) return;
  if (currentSink != nullptr) {
    currentSink->Show(text, flags);
  } else {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
  }
}

MessagesOnce::MessagesOnce() noexcept : former_(std::exchange(showsOnce, true)) {}

MessagesOnce::~MessagesOnce() { showsOnce = former_; }

void InstallMessages(GeneralTable& table) noexcept { table.messageDialog = Show; }

}  // namespace sorvanix::host
