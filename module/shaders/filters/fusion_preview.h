// The flat preview of Fusion: its inputs are read once and mixed as often as the dialog changes.
#pragma once

#include <array>
#include <cstddef>

#include "module/editors/preview_area.h"
#include "module/shaders/filters/fusion.h"

namespace sorvanix {

/// Keeps a picture of each input, which is read anew only when it is stale.
class FusionPreview final : public PreviewArea {
 public:
  static constexpr std::size_t kInputs = 3;  ///< base, blend, mask

  using PreviewArea::PreviewArea;
  ~FusionPreview() { Stop(); }

  /// The input shows something else from now on. Stops a running pass.
  void MarkStale(std::size_t input) noexcept;

 protected:
  bool DrawFlat(PreviewPass& pass) noexcept override;

 private:
  struct InputPicture {
    OwnedBitmap bitmap;
    bool stale = true;
  };

  bool ReadInputs(PreviewPass& pass) noexcept;
  bool ReadInputInto(InputPicture& picture, ChannelLink* link, PreviewPass& pass) noexcept;
  bool Mix(PreviewPass& pass) noexcept;
  Pixel MixedPixel(const FusionBlock& block, std::int32_t x, std::int32_t y) const noexcept;

  std::array<InputPicture, kInputs> inputs_;
};

}  // namespace sorvanix
