#include "host/services/strings.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace sorvanix::host {

namespace {

// What `make` answers, as a new text.
template <class Make>
HostString* NewTextFrom(Make&& make) noexcept {
  return Guarded(EmptyText(), [&] { return (new Text(make()))->Handle(); });
}

HostString* Create() noexcept {
  return NewTextFrom([] { return std::string(); });
}

HostString* CreateFromChars(const char* chars, std::int32_t length) noexcept {
  constexpr std::int32_t kUpToTerminator = -1;
  if (chars == nullptr || length < kUpToTerminator) return EmptyText();
  return NewTextFrom([&] {
    return length == kUpToTerminator ? std::string(chars)
                                     : std::string(chars, static_cast<std::size_t>(length));
  });
}

HostString* Copy(const HostString* text) noexcept {
  return text == nullptr ? EmptyText() : NewText(TextOf(text));
}

void Free(HostString* text) noexcept {
  if (text != EmptyText()) delete Text::From(text);
}

std::int32_t Length(const HostString* text) noexcept {
  constexpr std::size_t kLongest = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(TextOf(text).size(), kLongest));
}

std::int32_t Compare(const HostString* first, const HostString* second) noexcept {
  if (first == nullptr || second == nullptr) return 0;
  return TextOf(first).compare(TextOf(second));
}

HostString* Concatenate(const HostString* first, const HostString* second) noexcept {
  return NewTextFrom([&] { return std::string(TextOf(first)).append(TextOf(second)); });
}

HostString* FromNumber(double value) noexcept {
  char chars[32];  // the shortest form of a double has at most 24 characters
  const auto [end, error] = std::to_chars(std::begin(chars), std::end(chars), value);
  return NewText({chars, end});
}

}  // namespace

HostString* EmptyText() noexcept {
  // Never destroyed, since a module may still hold it while the process ends; and no counted block.
  static Text* const empty = ::new Text;
  return empty->Handle();
}

HostString* NewText(std::string_view text) noexcept {
  return NewTextFrom([&] { return std::string(text); });
}

std::string_view TextOf(const HostString* text) noexcept {
  return text == nullptr ? std::string_view() : Text::From(text)->text;
}

void InstallStrings(StringTable& table) noexcept {
  table.empty = EmptyText();
  table.create = Create;
  table.createFromChars = CreateFromChars;
  table.copy = Copy;
  table.free = Free;
  table.length = Length;
  table.compare = Compare;
  table.concatenate = Concatenate;
  table.fromNumber = FromNumber;
}

}  // namespace sorvanix::host
