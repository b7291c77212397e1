// Keeps the messages to the user for a test to look at.
#pragma once

#include <string>
#include <vector>

#include "host/services/messages.h"

namespace sorvanix::host {

class CollectingSink : public MessageSink {
 public:
  void Show(std::string_view text, std::int32_t flags) override {
    texts.emplace_back(text);
    lastFlags = flags;
  }

  std::vector<std::string> texts;
  std::int32_t lastFlags = 0;
};

}  // namespace sorvanix::host
