#include "host/services/messages.h"

#include <cstdio>
#include <utility>

#include "host/services/handle.h"
#include "host/services/strings.h"

namespace sorvanix::host {

namespace {

constinit MessageSink* currentSink = nullptr;

void Show(const HostString* text, std::int32_t flags) noexcept {
  if (text == nullptr) return;
  const std::string_view words = TextOf(text);
  Guarded([&] {
    if (currentSink != nullptr) {
      currentSink->Show(words, flags);
    } else {
      std::fprintf(stderr, "%.*s\n", static_cast<int>(words.size()), words.data());
    }
  });
}

}  // namespace

MessageSink* SetMessageSink(MessageSink* sink) noexcept { return std::exchange(currentSink, sink); }

void InstallMessages(GeneralTable& table) noexcept { table.messageDialog = Show; }

}  // namespace sorvanix::host
