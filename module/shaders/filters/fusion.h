// Fusion: lays one input over another by a blend mode, through the mask of a third.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The parameter block. Values are as they come; only the dialog limits them.
struct FusionBlock {
  ChannelLink* baseInput;
  ChannelLink* blendInput;
  ChannelLink* maskInput;  ///< read only with `useMask`
  std::int32_t mode;       ///< a BlendMode
  float opacity;
  std::int32_t invertMask;
  std::int32_t useMask;
  std::int32_t invertOutput;
  std::int32_t previewObject;
  std::int32_t previewBusy;
  std::int32_t changed;
  std::int32_t previewAuto;
  std::int32_t nested;  ///< set by an enclosing filter
  HostDocument* previewScene;
  std::int32_t previewChannel;
};

extern const ShaderTable kFusionTable;

/// The mixed colour of the three inputs'. The mask's is black, and counts only with `useMask`.
Vector MixFusion(const FusionBlock& block, const Vector& base, const Vector& blend,
                 const Vector& mask) noexcept;

void FillFusionRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
