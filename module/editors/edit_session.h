// What one Edit works on: a working copy of the block, the block it came from, the preview's scene.
#pragma once

#include "module/editors/gadget_table.h"
#include "module/shell/host_scene.h"

namespace sorvanix {

/// Begins with a copy and ends by taking it over or dropping it.
class EditSession {
 public:
  EditSession(const EditorTable& table, ShaderInstance* original) noexcept;
  EditSession(const EditSession&) = delete;
  EditSession& operator=(const EditSession&) = delete;
  ~EditSession();

  /// Makes the working copy and loads the preview's scene. False when there is no block, no memory
  /// or no scene: the dialog then does not open.
  bool Begin() noexcept;

  /// Takes the working copy over into the instance's own block.
  void Confirm() noexcept;
  /// Makes the working copy anew by the shader's own Copy. Where that fails it stays as it is. Not
  /// while a preview runs.
  void Revert() noexcept;

  const EditorTable& table() const noexcept { return table_; }
  const ShaderRecord& record() const noexcept { return record_; }
  /// The instance as it was on opening.
  const ShaderInstance& saved() const noexcept { return *original_; }
  /// The instance that the dialog edits.
  ShaderInstance& working() noexcept { return working_; }
  void* block() noexcept { return working_.data; }
  /// The scene loaded by Begin; handed over to the preview.
  OwnedDocument TakeScene() noexcept { return static_cast<OwnedDocument&&>(scene_); }

 private:
  bool MakeCopy() noexcept;
  void TellChannel() noexcept;

  const EditorTable& table_;
  ShaderRecord record_ = {};
  ShaderInstance* original_;
  ShaderInstance working_ = {};
  OwnedDocument scene_;
};

}  // namespace sorvanix
