// The flat picture and the frame around a picture to come.
#include "module/editors/preview_pass.h"

#include <bit>

#include "module/editors/shared_words.h"
#include "module/shell/host_channel.h"

namespace sorvanix {

PreviewPass::PreviewPass(EditSession& session, HostBitmap* bitmap, float time) noexcept
    : session_(session),
      bitmap_(bitmap),
      width_(hostBitmapWidth(bitmap)),
      height_(hostBitmapHeight(bitmap)),
      time_(time) {
  instance_.channel = ChannelPreview;
  if (record().Alloc(&instance_) == 0) return;
  if (record().Copy(&session.working(), &instance_) == 0) {
    record().Free(&instance_);
    return;
  }
  ReadBlock();
}

PreviewPass::~PreviewPass() { record().Free(&instance_); }

void PreviewPass::ReadBlock() noexcept {
  CopySharedWords(*table().shader, session_.block(), instance_.data);
}

std::int32_t PreviewPass::Int(std::uint32_t member, std::int32_t otherwise) const noexcept {
  return LoadInt(instance_.data, member, otherwise);
}

float PreviewPass::Real(std::uint32_t member, float otherwise) const noexcept {
  if (member == kNoMember) return otherwise;
  return std::bit_cast<float>(LoadWord(instance_.data, member));
}

ChannelSample PreviewPass::SampleAt(std::int32_t x, std::int32_t y) const noexcept {
  const auto w = static_cast<float>(width_);
  const auto h = static_cast<float>(height_);
  ChannelSample sample = {};
  sample.uvw = {static_cast<float>(x) / w, static_cast<float>(y) / h, 0};
  sample.normal = {0, 1, 0};
  sample.delta = {0.5f / w, 0.5f / h, 0};
  // Output multiplies by the speed once more: the flat picture runs at its square, deliberately.
  sample.time = Real(table().preview.speed, 1) * time_;
  sample.blurScale = 1;
  return sample;
}

bool PreviewPass::DrawFlat() noexcept {
  for (std::int32_t y = 0; y < height_; ++y) {
    ReadBlock();
    for (std::int32_t x = 0; x < width_; ++x) {
      ChannelSample sample = SampleAt(x, y);
      Vector colour = {};
      record().Output(&colour, &instance_, &sample);
      hostBitmapSetPixel(bitmap_, x, y, PixelOf(colour));
    }
    if (MustStop()) return false;
  }
  return true;
}

void PreviewPass::DrawBusyFrame() noexcept {
  constexpr Pixel kRed = {255, 0, 0};
  constexpr std::int32_t kInset = 2;
  const auto isBorder = [](std::int32_t i, std::int32_t size) {
    return i < kInset + 2 || i >= size - kInset - 2;
  };
  for (std::int32_t y = kInset; y < height_ - kInset; ++y) {
    for (std::int32_t x = kInset; x < width_ - kInset; ++x) {
      if (isBorder(x, width_) || isBorder(y, height_)) hostBitmapSetPixel(bitmap_, x, y, kRed);
    }
  }
}

}  // namespace sorvanix
