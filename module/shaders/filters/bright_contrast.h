// Bright/Contrast: levels, a brightness and a contrast for each channel of an input.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The parameter block. Values are as they come; only the dialog limits them.
struct BrightContrastBlock {
  ChannelLink* input;
  float brightness;
  float contrast;
  float levelLow;   ///< the value that becomes 0
  float levelHigh;  ///< the value that becomes 1
  std::int32_t previewObject;
  std::int32_t previewBusy;
  std::int32_t changed;
  std::int32_t previewAuto;
  std::int32_t reserved9;
  std::int32_t nested;  ///< set by an enclosing filter
  HostDocument* previewScene;
  std::int32_t previewChannel;
};

extern const ShaderTable kBrightContrastTable;

void FillBrightContrastRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
