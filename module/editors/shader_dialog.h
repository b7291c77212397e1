// The dialog of a shader: one shell over each shader's table of gadgets.
#pragma once

#include "module/editors/gadget.h"
#include "module/editors/preview_area.h"
#include "module/editors/title_area.h"

namespace sorvanix {

/// Shows and changes the working copy of a session. What is irregular in one shader overrides an
/// operation here. All of it runs on the main thread; the preview alone has one of its own.
class ShaderDialog {
 public:
  explicit ShaderDialog(EditSession& session) noexcept;
  ShaderDialog(const ShaderDialog&) = delete;
  ShaderDialog& operator=(const ShaderDialog&) = delete;

  /// Opens the dialog modally; true when the user confirmed. False too, with a message, when the
  /// resources beside the module are missing.
  bool Run() noexcept;

 protected:
  ~ShaderDialog() = default;

  /// The preview, for a dialog with one of its own making.
  virtual PreviewArea& Preview() noexcept { return preview_; }
  /// Attaches further areas, after title and preview.
  virtual void AttachAreas() noexcept {}
  /// Detaches them, when the dialog goes.
  virtual void DetachAreas() noexcept {}
  /// Shows the block in all gadgets.
  virtual void Init() noexcept;
  /// A command of a gadget; false for one that the dialog does not know.
  virtual bool Command(std::int32_t id, const HostContainer* message) noexcept;
  /// A key; false leaves it to the host. R reverts, with shift or alt resets, and M draws at
  /// random, all with control or command.
  virtual bool Key(std::int32_t key, std::int32_t qualifier) noexcept;
  /// A gadget changed a member: time for what follows from that alone.
  virtual void Edited(std::uint32_t /*member*/) noexcept {}
  /// Brings derived members up to date: on showing and after each change.
  virtual void Derive() noexcept {}
  /// Enables gadgets as the block says.
  virtual void Enable() noexcept;

  // What the keys do with the block, while no preview runs.
  virtual void Revert() noexcept;
  virtual void Reset() noexcept;
  virtual void Random() noexcept;

  HostDialog* dialog() const noexcept { return dialog_; }
  EditSession& session() noexcept { return session_; }
  const EditorTable& table() const noexcept { return session_.table(); }
  template <class Block>
  Block& block() noexcept {
    return *static_cast<Block*>(session_.block());
  }

  /// Shows a member in every gadget that edits it, but not in gadget `except`.
  void ShowMember(std::uint32_t member, std::int32_t except = 0) noexcept;
  /// Says that the preview no longer shows the block.
  void MarkDirty() noexcept;
  /// What follows every command of a gadget that changes the picture, at the end of a drag.
  void Changed(bool newPicture) noexcept;
  static bool IsDragging(const HostContainer* message) noexcept;

 private:
  static std::int32_t Receive(void* context, std::int32_t id, const HostContainer* message,
                              HostContainer* reply) noexcept;
  bool Create() noexcept;
  void Take(const Gadget& gadget, const Field& field, const HostContainer* message,
            std::int32_t id) noexcept;
  void ShowScene() noexcept;
  void ChangeWhole(void (ShaderDialog::*change)() noexcept) noexcept;
  const Gadget* GadgetOf(std::int32_t id) const noexcept;

  EditSession& session_;
  HostDialog* dialog_ = nullptr;
  TitleArea title_;
  PreviewArea preview_;
  std::int32_t shownObject_ = 0;  ///< the preview object whose scene is loaded
};

/// The dialog of a shader whose table says all.
class PlainShaderDialog final : public ShaderDialog {
 public:
  using ShaderDialog::ShaderDialog;
};

/// Edit of a shader, as its record holds it: 1 when the user confirmed and the block took over what
/// was set, else 0 with the block as it was.
template <const EditorTable& table, class Dialog = PlainShaderDialog>
std::int32_t EditShader(ShaderInstance* instance) noexcept {
  EditSession session(table, instance);
  if (!session.Begin()) return 0;
  Dialog dialog(session);
  if (!dialog.Run()) return 0;
  session.Confirm();
  return 1;
}

}  // namespace sorvanix
