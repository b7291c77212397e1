// Messages that the module shows to the user, and where they go.
#pragma once

#include <sorvanix/host_services.h>

#include <cstdint>
#include <string_view>

namespace sorvanix::host {

/// Takes the messages. On the main thread.
class MessageSink {
 public:
  virtual ~MessageSink() = default;
  virtual void Show(std::string_view text, std::int32_t flags) = 0;
};

/// Where messages go from now on; null sends them to the standard error stream, one to a line. The
/// sink must stay until another takes its place. Answers the former one.
MessageSink* SetMessageSink(MessageSink* sink) noexcept;

/// Shows a message of the host's own in the same place.
void ShowMessage(std::string_view text, std::int32_t flags);

/// While it lives, what the calling thread has to say is shown only once in the process: for work
/// that is repeated many times.
class MessagesOnce {
 public:
  MessagesOnce() noexcept;
  ~MessagesOnce();
  MessagesOnce(const MessagesOnce&) = delete;
  MessagesOnce& operator=(const MessagesOnce&) = delete;

 private:
  bool former_;
};

void InstallMessages(GeneralTable& table) noexcept;

}  // namespace sorvanix::host
