// The gadgets of Projector, and the copy of a texture tag's settings.
#include "module/shaders/surface/projector_dialog.h"

#include "module/editors/shader_dialog.h"
#include "module/kit/vector.h"
#include "module/shaders/surface/projector.h"
#include "module/shaders/surface/projector_tags.h"
#include "module/shell/host_container.h"
#include "module/shell/host_core.h"

namespace sorvanix {

namespace {

#define GADGET(id, member) SORVANIX_GADGET(ProjectorBlock, id, member)
#define AT(member) offsetof(ProjectorBlock, member)

constexpr Limits kRepeats = {0, 1e6, 1};

constexpr Gadget kGadgets[] = {
    {GADGET(16001, input)},
    {GADGET(16011, projection)},
    {GADGET(16012, tile)},
    {GADGET(16013, seamless)},
    {GADGET(16014, offsetU)},
    {GADGET(16015, offsetV)},
    {GADGET(16016, lengthU)},
    {GADGET(16017, lengthV)},
    {GADGET(16018, tilesU), .limits = kRepeats},
    {GADGET(16019, tilesV), .limits = kRepeats},
    {GADGET(16020, position.x), .format = FormatMeters},
    {GADGET(16021, position.y), .format = FormatMeters},
    {GADGET(16022, position.z), .format = FormatMeters},
    {GADGET(16023, scale.x)},
    {GADGET(16024, scale.y)},
    {GADGET(16025, scale.z)},
    {GADGET(16026, rotation.x)},
    {GADGET(16027, rotation.y)},
    {GADGET(16028, rotation.z)},
    {GADGET(16032, uvwIndex)},
};

constexpr std::int32_t kCopyButton = 16029;
constexpr std::int32_t kFurtherGadgets[] = {kCopyButton};

constexpr std::int32_t kTileGadgets[] = {16013, 16018, 16019};
constexpr std::int32_t kUvwGadgets[] = {16032, 16033};  // and its label
constexpr EnablingRule kEnabling[] = {
    {kTileGadgets,
     [](const void* block) noexcept { return BlockAs<ProjectorBlock>(block).tile != 0; }},
    {kUvwGadgets,
     [](const void* block) noexcept {
       return BlockAs<ProjectorBlock>(block).projection == kProjectionUvw;
     }},
};

}  // namespace

constexpr EditorTable kProjectorEditor = {
    .shader = &kProjectorTable,
    .fill = FillProjectorRecord,
    .dialogId = 16000,
    .titleArea = 16010,
    .titleIcon = "Projector Title.tif",
    .aboutName = "Projector",
    .missingResources = "Unable to find dialog resources for sorvaNIX Projector",
    .gadgets = kGadgets,
    .enabling = kEnabling,
    .furtherGadgets = kFurtherGadgets,
    .reset = {AT(tileFlags), AT(uvwIndex)},
};

#undef AT
#undef GADGET

namespace {

float ReciprocalOrZero(float value) noexcept { return value == 0 ? 0 : 1 / value; }

void DeriveFromLengths(ProjectorBlock& block) noexcept {
  block.invLengthU = ReciprocalOrZero(block.lengthU);
  block.invLengthV = ReciprocalOrZero(block.lengthV);
}

void DeriveTileFlags(ProjectorBlock& block) noexcept {
  block.tileFlags =
      (block.tile != 0 ? ProjectorTile : 0) | (block.seamless != 0 ? ProjectorSeamless : 0);
}

// The tag shows percent of a hundred units.
constexpr float kTagScaleShare = 0.01f;

void CopyTag(const HostTag* tag, const HostContainer* settings, ProjectorBlock& block) noexcept {
  const auto real = [settings](std::int32_t key, float otherwise) {
    return hostContainerGetFloat(settings, key, otherwise);
  };
  const auto integer = [settings](std::int32_t key, std::int32_t otherwise) {
    return static_cast<std::int32_t>(hostContainerGetInt(settings, key, otherwise));
  };
  block.projection = integer(KeyTagProjection, block.projection);
  block.offsetU = real(KeyTagOffsetU, block.offsetU);
  block.offsetV = real(KeyTagOffsetV, block.offsetV);
  block.lengthU = real(KeyTagLengthU, block.lengthU);
  block.lengthV = real(KeyTagLengthV, block.lengthV);
  block.tile = integer(KeyTagTile, block.tile);
  block.seamless = integer(KeyTagSeamless, block.seamless);
  DeriveTileFlags(block);
  block.position = hostTagPosition(tag);
  block.scale = Scale(kTagScaleShare, hostTagScale(tag));
  block.rotation = hostTagRotation(tag);
  DeriveFromLengths(block);
  block.tilesU = block.invLengthU;
  block.tilesV = block.invLengthV;
  PlaceProjection(block);
}

class ProjectorDialog final : public ShaderDialog {
 public:
  using ShaderDialog::ShaderDialog;

 protected:
  void Derive() noexcept override {
    auto& edited = block<ProjectorBlock>();
    DeriveFromLengths(edited);
    PlaceProjection(edited);
  }

  // What a render tiles by follows the two switches as they are set; an exchanged or loaded value
  // of its own stands until then.
  void Edited(std::uint32_t member) noexcept override {
    const bool isSwitch =
        member == offsetof(ProjectorBlock, tile) || member == offsetof(ProjectorBlock, seamless);
    if (isSwitch) DeriveTileFlags(block<ProjectorBlock>());
  }

  bool Command(std::int32_t id, const HostContainer* message) noexcept override {
    if (id == kCopyButton) {
      CopySelectedTag();
      return true;
    }
    return ShaderDialog::Command(id, message);
  }

 private:
  void CopySelectedTag() noexcept {
    const HostTag* tag = hostActiveTag(hostActiveDocument());
    const HostContainer* settings = hostTagContainer(tag);
    if (settings == nullptr) {
      const OwnedString text = hostStringFromChars("You must select a TextureTag before copying.");
      hostMessageDialog(text.get(), MessageDialogFlags);
      return;
    }
    CopyTag(tag, settings, block<ProjectorBlock>());
    Init();
  }
};

}  // namespace

std::int32_t EditProjector(ShaderInstance* instance) noexcept {
  return EditShader<kProjectorEditor, ProjectorDialog>(instance);
}

}  // namespace sorvanix
