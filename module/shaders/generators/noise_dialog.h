// What the dialogs of both noise shaders share: which controls a noise type listens to, and reset.
#pragma once

#include <algorithm>
#include <iterator>

#include "module/editors/shader_dialog.h"

namespace sorvanix {

/// Types of one layer, or of none: the number of octaves changes nothing.
inline bool NoiseHasOctaves(std::int32_t type) noexcept {
  constexpr std::int32_t kWithout[] = {0, 3, 10, 12, 17, 21, 23, 25, 26, 27, 28};
  return std::find(std::begin(kWithout), std::end(kWithout), type) == std::end(kWithout);
}

/// Types of flat cells and dots: their values are no wave that could be cycled or folded.
inline bool NoiseIsWave(std::int32_t type) noexcept {
  constexpr std::int32_t kNot[] = {3, 10, 17, 18, 23};
  return std::find(std::begin(kNot), std::end(kNot), type) == std::end(kNot);
}

/// What a dialog keeps the size along one axis within; its field is the frequency.
inline constexpr Limits kNoiseAxisSize = {0, 1e6, 1};

/// A new block shows type 12; a reset one type 0. Deliberate.
template <class Block>
class NoiseDialog final : public ShaderDialog {
 public:
  using ShaderDialog::ShaderDialog;

 protected:
  void Reset() noexcept override {
    ShaderDialog::Reset();
    block<Block>().noiseType = 0;
  }
};

}  // namespace sorvanix
