// Reading the inputs of Fusion into small pictures, and mixing those.
#include "module/shaders/filters/fusion_preview.h"

#include "module/shaders/filters/input_stage.h"

namespace sorvanix {

namespace {

// The white border around the mix, in pixels.
constexpr std::int32_t kBorder = 2;
constexpr Pixel kWhite = {255, 255, 255};

bool IsBorder(std::int32_t i, std::int32_t size) noexcept {
  return i < kBorder || i >= size - kBorder;
}

Vector ColourOf(const Pixel& pixel) noexcept {
  constexpr float kPerByte = 0.003921568393707275f;
  const auto channel = [](std::int32_t byte) { return static_cast<float>(byte) * kPerByte; };
  return {channel(pixel.red), channel(pixel.green), channel(pixel.blue)};
}

}  // namespace

void FusionPreview::MarkStale(std::size_t input) noexcept {
  Stop();
  inputs_[input].stale = true;
}

bool FusionPreview::DrawFlat(PreviewPass& pass) noexcept {
  const RenderInit withoutRender = {};
  pass.record().InitRender(&pass.instance(), &withoutRender);
  const bool drawn = ReadInputs(pass) && Mix(pass);
  pass.record().FreeRender(&pass.instance());
  return drawn;
}

// The mask waits until it is used.
bool FusionPreview::ReadInputs(PreviewPass& pass) noexcept {
  const auto& block = *BlockOf<FusionBlock>(&pass.instance());
  ChannelLink* const links[kInputs] = {block.baseInput, block.blendInput, block.maskInput};
  const std::size_t used = block.useMask != 0 ? kInputs : kInputs - 1;
  for (std::size_t i = 0; i < used; ++i) {
    if (!ReadInputInto(inputs_[i], links[i], pass)) return false;
  }
  return true;
}

bool FusionPreview::ReadInputInto(InputPicture& picture, ChannelLink* link,
                                  PreviewPass& pass) noexcept {
  const HostBitmap* former = picture.bitmap.get();
  const bool fits =
      hostBitmapWidth(former) == pass.width() && hostBitmapHeight(former) == pass.height();
  if (fits && !picture.stale) return true;
  if (!fits && !picture.bitmap.Make(pass.width(), pass.height())) return false;

  constexpr std::int32_t kNoTagFlag = 0;
  picture.stale = true;
  for (std::int32_t y = 0; y < pass.height(); ++y) {
    for (std::int32_t x = 0; x < pass.width(); ++x) {
      const ChannelSample sample = pass.SampleAt(x, y);
      const Vector colour = ReadInput(link, sample, sample.uvw, kNoTagFlag);
      hostBitmapSetPixel(picture.bitmap.get(), x, y, PixelOf(colour));
    }
    if (pass.MustStop()) return false;
  }
  picture.stale = false;
  return true;
}

bool FusionPreview::Mix(PreviewPass& pass) noexcept {
  for (std::int32_t y = 0; y < pass.height(); ++y) {
    pass.ReadBlock();
    const auto& block = *BlockOf<FusionBlock>(&pass.instance());
    for (std::int32_t x = 0; x < pass.width(); ++x) {
      const bool border = IsBorder(x, pass.width()) || IsBorder(y, pass.height());
      hostBitmapSetPixel(pass.bitmap(), x, y, border ? kWhite : MixedPixel(block, x, y));
    }
    if (pass.MustStop()) return false;
  }
  return true;
}

Pixel FusionPreview::MixedPixel(const FusionBlock& block, std::int32_t x,
                                std::int32_t y) const noexcept {
  const auto colourAt = [&](std::size_t input) {
    return ColourOf(hostBitmapGetPixel(inputs_[input].bitmap.get(), x, y));
  };
  const Vector mask = block.useMask != 0 ? colourAt(2) : Vector{};
  return PixelOf(MixFusion(block, colourAt(0), colourAt(1), mask));
}

}  // namespace sorvanix
