// Host strings and filenames as owned values: made by the host, freed once, never null-checked by
// their users.
#pragma once

#include <utility>

#include "module/shell/host_call.h"

namespace sorvanix {

namespace detail {

inline HostString* emptyOf(const StringTable* table) noexcept {
  return table == nullptr ? nullptr : table->empty;
}
inline HostFilename* emptyOf(const FilenameTable* table) noexcept {
  return table == nullptr ? nullptr : table->empty;
}

/// A handle that is freed with its table's `free`, unless it is the table's shared empty object.
template <class Handle, class Table, const Table* HostApi::*table>
class OwnedText {
 public:
  OwnedText() noexcept : handle_(emptyOf(hostApi.*table)) {}
  explicit OwnedText(Handle* handle) noexcept
      : handle_(handle == nullptr ? emptyOf(hostApi.*table) : handle) {}
  OwnedText(OwnedText&& other) noexcept
      : handle_(std::exchange(other.handle_, emptyOf(hostApi.*table))) {}
  OwnedText& operator=(OwnedText&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  OwnedText(const OwnedText&) = delete;
  OwnedText& operator=(const OwnedText&) = delete;
  ~OwnedText() {
    if (!isEmptyObject()) hostCall(hostApi.*table, &Table::free, handle_);
  }

  const Handle* get() const noexcept { return handle_; }
  /// For operations that change the object.
  Handle* get() noexcept { return handle_; }
  /// True for the shared empty object (and for null, when the host has no such table).
  bool isEmptyObject() const noexcept {
    return handle_ == nullptr || handle_ == emptyOf(hostApi.*table);
  }
  /// Hands the object over to the caller.
  Handle* release() noexcept { return std::exchange(handle_, emptyOf(hostApi.*table)); }

 private:
  Handle* handle_;
};

}  // namespace detail

using OwnedString = detail::OwnedText<HostString, StringTable, &HostApi::string>;
using OwnedFilename = detail::OwnedText<HostFilename, FilenameTable, &HostApi::filename>;

/// A host string from zero-terminated UTF-8.
inline OwnedString hostStringFromChars(const char* chars) noexcept {
  constexpr std::int32_t kUpToTerminator = -1;
  return OwnedString(
      hostCall(hostApi.string, &StringTable::createFromChars, nullptr, chars, kUpToTerminator));
}

/// A new empty string; the shared empty one when memory is short.
inline OwnedString hostStringCreate() noexcept {
  return OwnedString(hostCall(hostApi.string, &StringTable::create, nullptr));
}

inline OwnedString hostStringCopy(const HostString* text) noexcept {
  return OwnedString(hostCall(hostApi.string, &StringTable::copy, nullptr, text));
}

/// 0 when both texts are equal.
inline std::int32_t hostStringCompare(const HostString* first, const HostString* second) noexcept {
  return hostCall(hostApi.string, &StringTable::compare, 1, first, second);
}

inline OwnedString hostStringConcatenate(const OwnedString& first,
                                         const OwnedString& second) noexcept {
  return OwnedString(
      hostCall(hostApi.string, &StringTable::concatenate, nullptr, first.get(), second.get()));
}

/// A text of a resource bundle; empty for an unknown id.
inline OwnedString hostLoadString(HostResources* resources, std::int32_t id) noexcept {
  constexpr std::int32_t kLoadFlag = 1;
  if (resources == nullptr) return OwnedString();
  return OwnedString(
      hostCall(hostApi.resources, &ResourceTable::loadString, nullptr, resources, id, kLoadFlag));
}

inline OwnedFilename hostFilenameFromString(const OwnedString& path) noexcept {
  return OwnedFilename(hostCall(hostApi.filename, &FilenameTable::fromString, nullptr, path.get()));
}

/// The folder part of a path.
inline OwnedFilename hostFilenameDirectory(const OwnedFilename& filename) noexcept {
  return OwnedFilename(
      hostCall(hostApi.filename, &FilenameTable::directory, nullptr, filename.get()));
}

/// A path with one component added.
inline OwnedFilename hostFilenameAppend(const OwnedFilename& filename,
                                        const char* component) noexcept {
  const OwnedString text = hostStringFromChars(component);
  return OwnedFilename(
      hostCall(hostApi.filename, &FilenameTable::append, nullptr, filename.get(), text.get()));
}

inline OwnedFilename hostFilenameCopy(const OwnedFilename& filename) noexcept {
  return OwnedFilename(hostCall(hostApi.filename, &FilenameTable::copy, nullptr, filename.get()));
}

}  // namespace sorvanix
