// The gadgets of Banj.
#include "module/shaders/surface/banj_dialog.h"

#include "module/editors/shader_dialog.h"
#include "module/editors/shared_words.h"
#include "module/shaders/surface/banj.h"

namespace sorvanix {

namespace {

#define GADGET(id, member) SORVANIX_GADGET(BanjBlock, id, member)
#define AT(member) offsetof(BanjBlock, member)

constexpr Gadget kGadgets[] = {
    {GADGET(22001, orenNayar)},
    {GADGET(22002, diffuseLevel)},
    {GADGET(22003, shadowMix)},
    {GADGET(22004, sigma)},
    {GADGET(22005, diffuseContrast)},
    {GADGET(22006, diffuseColour)},
    {GADGET(22012, previewObject), .limits = kPreviewObjects},
    {GADGET(22013, previewAuto)},
};

constexpr RandomDraw kRandom[] = {
    {AT(diffuseLevel)},
    {AT(shadowMix)},
    {AT(sigma), 2},
    {AT(diffuseColour)},
};

}  // namespace

constexpr EditorTable kBanjEditor = {
    .shader = &kBanjTable,
    .fill = FillBanjRecord,
    .dialogId = 22000,
    .titleArea = 22010,
    .previewArea = 22011,
    .titleIcon = "Banj Title.tif",
    .aboutName = "Banj",
    .missingResources = "Unable to find dialog resources for sorvaNIX Banj",
    .gadgets = kGadgets,
    .preview = {.object = AT(previewObject),
                .dirty = AT(changed),
                .automatic = AT(previewAuto),
                .inScene = AT(previewBusy)},
    .reset = {AT(orenNayar), AT(diffuseColour)},
    .random = kRandom,
};

#undef AT
#undef GADGET

namespace {

class BanjDialog final : public ShaderDialog {
 public:
  using ShaderDialog::ShaderDialog;

 protected:
  void Derive() noexcept override { ChangeShared<BanjBlock>(session().block(), DeriveRoughness); }
};

}  // namespace

std::int32_t EditBanj(ShaderInstance* instance) noexcept {
  return EditShader<kBanjEditor, BanjDialog>(instance);
}

}  // namespace sorvanix
