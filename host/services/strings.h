// Texts: UTF-8 behind the HostString of the contract.
#pragma once

#include <sorvanix/host_services.h>

#include <string>
#include <string_view>

#include "host/services/handle.h"

namespace sorvanix::host {

class Text : public Handled<Text, HostString> {
 public:
  Text() = default;
  explicit Text(std::string value) : text(std::move(value)) {}

  friend bool operator==(const Text& a, const Text& b) { return a.text == b.text; }

  std::string text;
};

/// The shared empty text, which is never freed.
HostString* EmptyText() noexcept;

/// A new text for the other side, which frees it; the shared empty one when memory is short.
HostString* NewText(std::string_view text) noexcept;

/// What a handle holds, valid while it lives; empty for null.
std::string_view TextOf(const HostString* text) noexcept;

void InstallStrings(StringTable& table) noexcept;

}  // namespace sorvanix::host
