// The six dialogs of filters, as tests go through them.
#pragma once

#include <ostream>

#include "module/shaders/filters/bright_contrast.h"
#include "module/shaders/filters/colorizer.h"
#include "module/shaders/filters/distorter.h"
#include "module/shaders/filters/fusion.h"
#include "module/shaders/filters/hue.h"
#include "module/shaders/filters/posterizer.h"
#include "tests/module/editors/editor_fixture.h"

namespace sorvanix::test {

/// An input: the first of its nine gadgets, and its link in the block.
struct InputGadget {
  std::int32_t id;
  std::size_t member;
};

struct FilterEditor {
  const char* name;
  const char* textName;  ///< as the message for missing resources says it
  std::int32_t pluginId, dialog, title, preview, previewObject, previewAuto;
  std::size_t blockSize, nested, previewChannel, changed;
  std::vector<InputGadget> inputs;
  friend void PrintTo(const FilterEditor& editor, std::ostream* out) { *out << editor.name; }
};

#define SORVANIX_FILTER_BLOCK(Block) \
  sizeof(Block), offsetof(Block, nested), offsetof(Block, previewChannel), offsetof(Block, changed)

inline const FilterEditor kFilterEditors[] = {
    {"BrightContrast",
     "Brightness/Contrast",
     PluginIdBrightContrast,
     15000,
     15018,
     15019,
     15020,
     15021,
     SORVANIX_FILTER_BLOCK(BrightContrastBlock),
     {{15009, offsetof(BrightContrastBlock, input)}}},
    {"Colorizer",
     "Colorizer",
     PluginIdColorizer,
     17000,
     17014,
     17015,
     17016,
     17017,
     SORVANIX_FILTER_BLOCK(ColorizerBlock),
     {{17005, offsetof(ColorizerBlock, input)}}},
    {"Hue",
     "Hue",
     PluginIdHue,
     24000,
     24026,
     24027,
     24028,
     24029,
     SORVANIX_FILTER_BLOCK(HueBlock),
     {{24017, offsetof(HueBlock, input)}}},
    {"Posterizer",
     "Posterizer",
     PluginIdPosterizer,
     26000,
     26014,
     26015,
     26016,
     26017,
     SORVANIX_FILTER_BLOCK(PosterizerBlock),
     {{26005, offsetof(PosterizerBlock, input)}}},
    {"Distorter",
     "Distorter",
     PluginIdDistorter,
     14000,
     14033,
     14034,
     14035,
     14036,
     SORVANIX_FILTER_BLOCK(DistorterBlock),
     {{14013, offsetof(DistorterBlock, input)}, {14022, offsetof(DistorterBlock, distortInput)}}},
    {"Fusion",
     "Fusion",
     PluginIdFusion,
     13000,
     13039,
     13040,
     13041,
     13042,
     SORVANIX_FILTER_BLOCK(FusionBlock),
     {{13012, offsetof(FusionBlock, baseInput)},
      {13021, offsetof(FusionBlock, blendInput)},
      {13030, offsetof(FusionBlock, maskInput)}}},
};

#undef SORVANIX_FILTER_BLOCK

}  // namespace sorvanix::test
