#include "host/services/messages.h"

#include <cstdio>
#include <utility>

#include "host/services/handle.h"
#include "host/services/strings.h"

namespace sorvanix::host {

namespace {

constinit MessageSink* currentSink = nullptr;

void Show(const HostString* text, std::int32_t flags) noexcept {
  if (text != nullptr) Guarded([&] { ShowMessage(TextOf(text), flags); });
}

}  // namespace

MessageSink* SetMessageSink(MessageSink* sink) noexcept { return std::exchange(currentSink, sink); }

void ShowMessage(std::string_view text, std::int32_t flags) {
  if (currentSink != nullptr) {
    currentSink->Show(text, flags);
  } else {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
  }
}

void InstallMessages(GeneralTable& table) noexcept { table.messageDialog = Show; }

}  // namespace sorvanix::host
