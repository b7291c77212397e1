// The texts and dialogs beside the module: opened once from the module's folder, closed on unload.
#pragma once

#include "module/shell/host_text.h"

namespace sorvanix {

/// Four words that start as zeros. Closing happens in the destructor: for the one bundle of the
/// module that is when the module is unloaded, after the last call of its entry.
class ResourceBundle {
 public:
  constexpr ResourceBundle() noexcept = default;
  ~ResourceBundle() { Close(); }
  ResourceBundle(const ResourceBundle&) = delete;
  ResourceBundle& operator=(const ResourceBundle&) = delete;

  /// Opens the resources of a folder. Tried once: a later call answers from the remembered result.
  bool Open(const OwnedFilename& folder) noexcept;

  /// A text by its id; empty when there is none.
  OwnedString Text(std::int32_t id) const noexcept { return hostLoadString(handle_, id); }

  /// The opened resources; null before, and when they could not be opened.
  HostResources* get() const noexcept { return handle_; }

  /// Releases the handle, unless it is borrowed, and the folder.
  void Close() noexcept;

 private:
  bool KeepFolder(const OwnedFilename& folder) noexcept;

  HostResources* handle_ = nullptr;
  Word opened_ = 0;    // the open has been tried
  Word borrowed_ = 0;  // the handle belongs to somebody else; never so in this module
  HostFilename** directory_ = nullptr;  // a holder from hostAlloc with the owned folder
};

static_assert(sizeof(ResourceBundle) == 4 * sizeof(Word));

/// The module's own resources.
extern ResourceBundle resourceBundle;

}  // namespace sorvanix
