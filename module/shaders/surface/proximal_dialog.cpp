// The gadgets of Proximal. It shows no preview: nothing is near in an empty scene.
#include "module/shaders/surface/proximal_dialog.h"

#include "module/editors/shader_dialog.h"
#include "module/shaders/surface/proximal.h"
#include "module/shell/value_kind.h"

namespace sorvanix {

namespace {

#define GADGET(id, member) SORVANIX_GADGET(ProximalBlock, id, member)
#define AT(member) offsetof(ProximalBlock, member)

constexpr Gadget kGadgets[] = {
    {GADGET(21001, minimum)},   {GADGET(21002, maximum)},     {GADGET(21003, objectName)},
    {GADGET(21005, matchFlag)}, {GADGET(21006, useChildren)}, {GADGET(21007, strength)},
    {GADGET(21008, falloff)},   {GADGET(21010, useGeometry)}, {GADGET(21011, useFaces)},
    {GADGET(21012, combine)},
};

constexpr std::int32_t kFoundGadget = 21004;
constexpr std::int32_t kFurtherGadgets[] = {kFoundGadget};

constexpr std::int32_t kFaceGadgets[] = {21011};
constexpr EnablingRule kEnabling[] = {
    {kFaceGadgets,
     [](const void* block) noexcept { return BlockAs<ProximalBlock>(block).useGeometry != 0; }},
};

// The distances are drawn far beyond what a scene needs. Deliberate.
constexpr RandomDraw kRandom[] = {
    {AT(minimum), 10000},
    {AT(maximum), 10000},
    {AT(falloff), 1.99},
};

}  // namespace

constexpr EditorTable kProximalEditor = {
    .shader = &kProximalTable,
    .fill = FillProximalRecord,
    .dialogId = 21000,
    .titleArea = 21009,
    .titleIcon = "Proximal Title.tif",
    .aboutName = "Proximal",
    .missingResources = "Unable to find dialog resources for sorvaNIX Proximal",
    .gadgets = kGadgets,
    .enabling = kEnabling,
    .furtherGadgets = kFurtherGadgets,
    .reset = {AT(minimum), AT(maximum)},
    .random = kRandom,
};

#undef AT
#undef GADGET

namespace {

class ProximalDialog final : public ShaderDialog {
 public:
  using ShaderDialog::ShaderDialog;

 protected:
  // Shows what the name finds in the user's scene.
  void Enable() noexcept override {
    ShaderDialog::Enable();
    const HostString* name = block<ProximalBlock>().objectName;
    const HostObject* found = hostFindObject(hostActiveDocument(), name);
    const OwnedString none;
    const HostString* shown = found == nullptr ? none.get() : hostObjectName(found);
    hostDialogSetText(dialog(), kFoundGadget, shown);
  }

  void Reset() noexcept override {
    ShaderDialog::Reset();
    OperationsOf(ValueKind::String).release(&block<ProximalBlock>().objectName);
    block<ProximalBlock>().matchFlag = 0;
  }

  void Random() noexcept override {
    ShaderDialog::Random();
    block<ProximalBlock>().matchFlag = 0;
  }
};

}  // namespace

std::int32_t EditProximal(ShaderInstance* instance) noexcept {
  return EditShader<kProximalEditor, ProximalDialog>(instance);
}

}  // namespace sorvanix
