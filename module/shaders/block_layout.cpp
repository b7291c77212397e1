// The layout of the parameter blocks, held at compile time.
//
// Filters mark a nested shader by the place of a word in its block, and hosts of the module's age
// know blocks by their words; a field that moves must not compile.
#include <cstddef>

#include "module/noise/tables.h"
#include "module/shaders/filters/bright_contrast.h"
#include "module/shaders/filters/colorizer.h"
#include "module/shaders/filters/distorter.h"
#include "module/shaders/filters/fusion.h"
#include "module/shaders/filters/hue.h"
#include "module/shaders/filters/posterizer.h"
#include "module/shaders/generators/gradient.h"
#include "module/shaders/generators/noise_2d.h"
#include "module/shaders/generators/noise_3d.h"
#include "module/shaders/generators/tiles.h"
#include "module/shaders/surface/banj.h"
#include "module/shaders/surface/falloff.h"
#include "module/shaders/surface/fresnel.h"
#include "module/shaders/surface/lumas.h"
#include "module/shaders/surface/projector.h"
#include "module/shaders/surface/proximal.h"

namespace sorvanix {

namespace {

constexpr std::size_t kWord = 4;
constexpr bool EveryBuild = true;
constexpr bool On32Bits = sizeof(void*) == kWord;

#define BLOCK(record, words, builds)        \
  constexpr bool record##IsHeld = (builds); \
  static_assert(!record##IsHeld || sizeof(record) == (words)*kWord, #record " changed its size");
#define WORD(record, field, word)                                           \
  static_assert(!record##IsHeld || offsetof(record, field) == (word)*kWord, \
                #record "::" #field " has moved");
#include "module/shaders/block_rows.h"
#undef WORD
#undef BLOCK

}  // namespace

}  // namespace sorvanix
