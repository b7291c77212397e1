// Posterizer: cuts each channel of an input into levels with soft edges.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The parameter block. Values are as they come; only the dialog limits them.
struct PosterizerBlock {
  ChannelLink* input;
  std::int32_t levels;  ///< steps from 0 to 1
  float softness;       ///< half the width of an edge, in levels
  std::int32_t previewObject;
  std::int32_t previewBusy;
  std::int32_t changed;
  std::int32_t previewAuto;
  std::int32_t nested;  ///< set by an enclosing filter
  HostDocument* previewScene;
  std::int32_t previewChannel;
};

extern const ShaderTable kPosterizerTable;

void FillPosterizerRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
