// When a preview draws, stops and moves on.
#include "module/editors/preview_area.h"

#include "module/editors/shared_words.h"

namespace sorvanix {

namespace {

constexpr std::int32_t kTickMilliseconds = 100;
constexpr float kTickSeconds = 0.1f;

}  // namespace

bool PreviewArea::IsFlat() const noexcept {
  return LoadInt(session_.block(), session_.table().preview.object, 0) == 0;
}

bool PreviewArea::MakeBitmap() noexcept {
  size_ = hostAreaSize(get());
  return bitmap_.Make(size_.width, size_.height);
}

bool PreviewArea::Init() noexcept {
  Stop();
  if (session_.table().preview.animated != kNoMember) hostAreaSetTimer(get(), kTickMilliseconds);
  if (!MakeBitmap()) return false;
  Start();
  return true;
}

void PreviewArea::Draw() noexcept {
  const AreaSize now = hostAreaSize(get());
  if (now.width != size_.width || now.height != size_.height) Init();
  hostAreaDrawBitmap(get(), bitmap_.get(), 0, 0);
}

bool PreviewArea::Input(const AreaInputEvent& event) noexcept {
  if (!event.IsLeftPress()) return false;
  Start();
  return true;
}

// Time goes on with every tick; a picture that takes longer than one is let finish, since it would
// never be seen otherwise.
void PreviewArea::Timer() noexcept {
  const PreviewMembers& members = session_.table().preview;
  const void* block = session_.block();
  if (!IsFlat() || LoadInt(block, members.animated, 0) == 0) return;
  if (members.speed == kNoMember || !(MemberAt<float>(block, members.speed) > 0)) return;
  previewTime_ += kTickSeconds;
  if (!drawing_.load(std::memory_order_relaxed)) Start();
}

void PreviewArea::Start() noexcept {
  Stop();
  if (bitmap_.get() == nullptr) return;
  pass_.emplace(session_, bitmap_.get(), previewTime_);
  if (!pass_->Ready()) return;
  if (!IsFlat()) scenePass_.emplace(scene_.get(), session_.table().shader->pluginId);
  drawing_.store(true, std::memory_order_relaxed);
  const auto run = [](void* context, HostThread* thread) noexcept {
    static_cast<PreviewArea*>(context)->Run(thread);
  };
  if (!thread_.Start(run, this)) Stop();
}

void PreviewArea::Stop() noexcept {
  thread_.End();
  scenePass_.reset();
  pass_.reset();
  drawing_.store(false, std::memory_order_relaxed);
}

void PreviewArea::Restart() noexcept {
  Stop();
  const bool automatic = LoadInt(session_.block(), session_.table().preview.automatic, 1) != 0;
  if (IsFlat() || automatic) Start();
}

void PreviewArea::ShowScene(OwnedDocument scene) noexcept {
  Stop();
  scene_ = static_cast<OwnedDocument&&>(scene);
}

void PreviewArea::Run(HostThread* thread) noexcept {
  pass_->SetThread(thread);
  if (pass_->width() > 0 && pass_->height() > 0 && DrawPicture()) {
    Redraw();
    StoreInt(session_.block(), session_.table().preview.dirty, 0);
  }
  drawing_.store(false, std::memory_order_relaxed);
}

// An animated flat picture comes at once, so that a frame would only flicker.
bool PreviewArea::DrawPicture() noexcept {
  const bool flat = !scenePass_.has_value();
  if (!flat || pass_->Int(session_.table().preview.animated, 0) == 0) {
    pass_->DrawBusyFrame();
    Redraw();
  }
  return flat ? DrawFlat(*pass_) : scenePass_->Draw(*pass_);
}

}  // namespace sorvanix
