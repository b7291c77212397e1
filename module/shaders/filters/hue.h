// Hue: turns the hue of an input and shifts its saturation and lightness, or paints it in one hue.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The parameter block. Values are as they come; only the dialog limits them.
struct HueBlock {
  ChannelLink* input;
  float hueShift;  ///< degrees
  float saturationShift;
  float lightnessShift;
  std::int32_t colorize;  ///< nonzero: the next three instead of the three shifts
  float colorHue;         ///< degrees
  float colorSaturation;
  float colorLightness;
  std::int32_t previewObject;
  std::int32_t previewBusy;
  std::int32_t changed;
  std::int32_t previewAuto;
  std::int32_t nested;  ///< set by an enclosing filter
  HostDocument* previewScene;
  std::int32_t previewChannel;
};

extern const ShaderTable kHueTable;

void FillHueRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
