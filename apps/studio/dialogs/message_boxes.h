// What the module and the host have to say, in boxes.
#pragma once

#include "host/services/messages.h"

namespace sorvanix::studio {

/// While it lives, messages are shown modally. One at a time.
class MessageBoxes final : public host::MessageSink {
 public:
  MessageBoxes() noexcept : former_(host::SetMessageSink(this)) {}
  ~MessageBoxes() override { host::SetMessageSink(former_); }
  MessageBoxes(const MessageBoxes&) = delete;
  MessageBoxes& operator=(const MessageBoxes&) = delete;

  void Show(std::string_view text, std::int32_t flags) override;

 private:
  host::MessageSink* former_;
};

}  // namespace sorvanix::studio
