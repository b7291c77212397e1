// The live picture of a shader in its dialog: drawn on a thread, begun anew after every change.
#pragma once

#include <atomic>
#include <optional>

#include "module/editors/preview_pass.h"
#include "module/editors/preview_scene.h"
#include "module/editors/user_area.h"

namespace sorvanix {

/// One preview. `previewObject` 0 shows the shader's colours over the unit square, 1 to 5 a scene.
class PreviewArea : public UserArea {
 public:
  explicit PreviewArea(EditSession& session) noexcept : session_(session) {}
  ~PreviewArea() { Stop(); }

  /// Draws the picture anew, whatever the block says.
  void Start() noexcept;
  /// Tells a running pass to stop and waits for it: at most one row.
  void Stop() noexcept;
  /// After a change: stops, and starts where the block lets it. A flat picture always follows; a
  /// scene only with `previewAuto`, and otherwise on a click.
  void Restart() noexcept;
  /// Takes the place of the former scene, which is freed; an empty one shows nothing.
  void ShowScene(OwnedDocument scene) noexcept;

 protected:
  bool Init() noexcept override;
  void Draw() noexcept override;
  bool Input(const AreaInputEvent& event) noexcept override;
  void Timer() noexcept override;

  /// On the thread: the flat picture. False when it was stopped.
  virtual bool DrawFlat(PreviewPass& pass) noexcept { return pass.DrawFlat(); }

 private:
  bool MakeBitmap() noexcept;
  bool IsFlat() const noexcept;
  void Run(HostThread* thread) noexcept;
  bool DrawPicture() noexcept;

  EditSession& session_;
  OwnedBitmap bitmap_;
  AreaSize size_;
  OwnedDocument scene_;
  float previewTime_ = 0;  ///< of the flat picture, in seconds
  std::atomic<bool> drawing_ = false;

  // Of the running pass. The thread comes last: it ends before what it reads goes.
  std::optional<PreviewPass> pass_;
  std::optional<ScenePass> scenePass_;
  OwnedThread thread_;
};

}  // namespace sorvanix
