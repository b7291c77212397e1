// One drawing of a preview: the shader as it is read, the picture, and when to stop.
#pragma once

#include "module/editors/edit_session.h"
#include "module/editors/pixel.h"

namespace sorvanix {

/// Made on the main thread, which takes no further part until the pass has ended; the operations
/// run on the pass's thread. Its copy of the shader has links of its own, since a dialog may change
/// the edited ones at any time; all other words are read from the edited block.
class PreviewPass {
 public:
  PreviewPass(EditSession& session, HostBitmap* bitmap, float time) noexcept;
  PreviewPass(const PreviewPass&) = delete;
  PreviewPass& operator=(const PreviewPass&) = delete;
  ~PreviewPass();

  /// False when there was no memory for the copy.
  bool Ready() const noexcept { return instance_.data != nullptr; }
  void SetThread(HostThread* thread) noexcept { thread_ = thread; }
  bool MustStop() const noexcept { return hostThreadMustStop(thread_) != 0; }

  /// Brings the copy up to the edited block, which may change meanwhile.
  void ReadBlock() noexcept;
  /// What the copy holds in a member; `otherwise` where the shader has none.
  std::int32_t Int(std::uint32_t member, std::int32_t otherwise) const noexcept;
  float Real(std::uint32_t member, float otherwise) const noexcept;

  const EditorTable& table() const noexcept { return session_.table(); }
  const ShaderRecord& record() const noexcept { return session_.record(); }
  ShaderInstance& instance() noexcept { return instance_; }
  HostBitmap* bitmap() const noexcept { return bitmap_; }
  HostThread* thread() const noexcept { return thread_; }
  std::int32_t width() const noexcept { return width_; }
  std::int32_t height() const noexcept { return height_; }
  float time() const noexcept { return time_; }

  /// The sample at a pixel of the flat picture, with the footprint of half a pixel.
  ChannelSample SampleAt(std::int32_t x, std::int32_t y) const noexcept;

  /// The shader's own colours over the unit square. False when it was stopped: the picture then
  /// stays half painted.
  bool DrawFlat() noexcept;
  /// A red frame that tells that a picture is on its way; it stays until that covers it.
  void DrawBusyFrame() noexcept;

 private:
  EditSession& session_;
  ShaderInstance instance_ = {};
  HostBitmap* bitmap_;
  HostThread* thread_ = nullptr;
  std::int32_t width_;
  std::int32_t height_;
  float time_;  ///< of the animation, in seconds
};

}  // namespace sorvanix
