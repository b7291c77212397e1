// The gadgets of Fusion.
#include "module/shaders/filters/fusion_dialog.h"

#include "module/editors/preview_members.h"
#include "module/editors/shader_dialog.h"
#include "module/shaders/filters/fusion_preview.h"

namespace sorvanix {

namespace {

using Block = FusionBlock;
#define GADGET(id, member) SORVANIX_GADGET(Block, id, member)
#define AT(member) offsetof(Block, member)

// The first of the nine ids of each input.
constexpr std::int32_t kInputs[FusionPreview::kInputs] = {13012, 13021, 13030};

constexpr Gadget kGadgets[] = {
    {GADGET(13001, mode)},           {GADGET(13002, opacity)},
    {GADGET(13003, opacity)},        {GADGET(13004, useMask)},
    {GADGET(13005, invertMask)},     {GADGET(13006, invertOutput)},
    {GADGET(kInputs[0], baseInput)}, {GADGET(kInputs[1], blendInput)},
    {GADGET(kInputs[2], maskInput)}, {GADGET(13041, previewObject), .limits = kPreviewObjects},
    {GADGET(13042, previewAuto)},
};

constexpr RandomDraw kRandom[] = {
    {AT(mode), 18.99},        {AT(opacity)}, {AT(invertMask), 1.99}, {AT(useMask), 1.99},
    {AT(invertOutput), 1.99},
};

}  // namespace

constexpr EditorTable kFusionEditor = {
    .shader = &kFusionTable,
    .fill = FillFusionRecord,
    .dialogId = 13000,
    .titleArea = 13039,
    .previewArea = 13040,
    .titleIcon = "Fusion Title.tif",
    .aboutName = "Fusion",
    .missingResources = "Unable to find dialog resources for sorvaNIX Fusion",
    .gadgets = kGadgets,
    .enabling = kSceneEnabling<Block, 13042>,
    .preview = PreviewMembersOf<Block>(),
    .reset = {AT(mode), AT(invertOutput)},
    .random = kRandom,
};

#undef AT
#undef GADGET

namespace {

class FusionDialog final : public ShaderDialog {
 public:
  explicit FusionDialog(EditSession& session) noexcept : ShaderDialog(session), mix_(session) {}

 protected:
  PreviewArea& Preview() noexcept override { return mix_; }

  bool Command(std::int32_t id, const HostContainer* message) noexcept override {
    for (std::size_t i = 0; i < FusionPreview::kInputs; ++i) {
      if (id >= kInputs[i] && id < kInputs[i] + kIdsOfLink) mix_.MarkStale(i);
    }
    return ShaderDialog::Command(id, message);
  }

  void Revert() noexcept override {
    ShaderDialog::Revert();
    for (std::size_t i = 0; i < FusionPreview::kInputs; ++i) mix_.MarkStale(i);
  }

 private:
  FusionPreview mix_;
};

}  // namespace

std::int32_t EditFusion(ShaderInstance* instance) noexcept {
  return EditShader<kFusionEditor, FusionDialog>(instance);
}

}  // namespace sorvanix
