// The gadgets of Hue.
#include "module/shaders/filters/hue_dialog.h"

#include "module/editors/preview_members.h"
#include "module/editors/shader_dialog.h"
#include "module/editors/shared_words.h"
#include "module/shaders/filters/hue.h"
#include "module/shell/host_container.h"

namespace sorvanix {

namespace {

using Block = HueBlock;
#define GADGET(id, member) SORVANIX_GADGET(Block, id, member)
#define AT(member) offsetof(Block, member)

// The tab group, whose page on show is what `colorize` says.
constexpr std::int32_t kTabs = 24014;
constexpr std::int32_t kShiftPage = 24015;
constexpr std::int32_t kColorizePage = 24016;
constexpr std::int32_t kTabIds[] = {kTabs, kShiftPage, kColorizePage};

constexpr Gadget kGadgets[] = {
    {GADGET(24001, hueShift)},        {GADGET(24002, hueShift)},
    {GADGET(24003, saturationShift)}, {GADGET(24004, saturationShift)},
    {GADGET(24005, lightnessShift)},  {GADGET(24006, lightnessShift)},
    {GADGET(24008, colorHue)},        {GADGET(24009, colorHue)},
    {GADGET(24010, colorSaturation)}, {GADGET(24011, colorSaturation)},
    {GADGET(24012, colorLightness)},  {GADGET(24013, colorLightness)},
    {GADGET(24017, input)},           {GADGET(24028, previewObject), .limits = kPreviewObjects},
    {GADGET(24029, previewAuto)},
};

constexpr RandomDraw kRandom[] = {
    {AT(hueShift), 360, -180}, {AT(saturationShift), 2, -1}, {AT(lightnessShift), 2, -1},
    {AT(colorHue), 360},       {AT(colorSaturation)},        {AT(colorLightness), 2, -1},
};

}  // namespace

constexpr EditorTable kHueEditor = {
    .shader = &kHueTable,
    .fill = FillHueRecord,
    .dialogId = 24000,
    .titleArea = 24026,
    .previewArea = 24027,
    .titleIcon = "Hue Title.tif",
    .aboutName = "Hue",
    .missingResources = "Unable to find dialog resources for sorvaNIX Hue",
    .gadgets = kGadgets,
    .enabling = kSceneEnabling<Block, 24029>,
    .furtherGadgets = kTabIds,
    .preview = PreviewMembersOf<Block>(),
    .reset = {AT(hueShift), AT(colorLightness)},
    .random = kRandom,
};

#undef AT
#undef GADGET

namespace {

class HueDialog final : public ShaderDialog {
 public:
  using ShaderDialog::ShaderDialog;

 protected:
  void Init() noexcept override {
    ShaderDialog::Init();
    const bool colorizes = block<Block>().colorize != 0;
    hostDialogSetInt(dialog(), kTabs, colorizes ? kColorizePage : kShiftPage, kShiftPage,
                     kColorizePage, 1);
  }

  bool Command(std::int32_t id, const HostContainer* message) noexcept override {
    if (id != kTabs || hostContainerFind(message, DialogValue) < 0) {
      return ShaderDialog::Command(id, message);
    }
    const std::int32_t colorize = hostContainerGetInt(message, DialogValue, 0) == kColorizePage;
    if (colorize != block<Block>().colorize) {
      StoreShared(&block<Block>(), offsetof(Block, colorize), colorize);
      MarkDirty();
    }
    if (!IsDragging(message)) Changed(true);
    return true;
  }
};

}  // namespace

std::int32_t EditHue(ShaderInstance* instance) noexcept {
  return EditShader<kHueEditor, HueDialog>(instance);
}

}  // namespace sorvanix
