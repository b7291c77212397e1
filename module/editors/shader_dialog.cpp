// What happens in a shader's dialog, told by its table.
#include "module/editors/shader_dialog.h"

#include <cmath>

#include "module/editors/plugin_files.h"
#include "module/editors/shared_words.h"
#include "module/noise/tables.h"
#include "module/shell/host_container.h"
#include "module/shell/host_core.h"
#include "module/shell/resource_bundle.h"
#include "module/shell/value_kind.h"

namespace sorvanix {

namespace {

// Keys count with one of these qualifiers, and change their meaning with one of those.
constexpr std::int32_t kCommanding = QualifierControl | QualifierCommand;
constexpr std::int32_t kShifting = QualifierShift | QualifierAlt;

bool IsOfGadget(const Gadget& gadget, const Field& field, std::int32_t id) noexcept {
  const std::int32_t ids = field.kind == ValueKind::Link ? kIdsOfLink : 1;
  return id >= gadget.id && id < gadget.id + ids;
}

double Draw(const RandomDraw& draw) noexcept {
  return sharedGenerator.Next01() * draw.range + draw.from;
}

void DrawInto(const RandomDraw& draw, ValueKind kind, void* block) noexcept {
  switch (kind) {
    case ValueKind::Int:
    case ValueKind::Bool:
      return StoreShared(block, draw.member, static_cast<std::int32_t>(std::floor(Draw(draw))));
    case ValueKind::Float:
      return StoreShared(block, draw.member, static_cast<float>(Draw(draw)));
    case ValueKind::Vector: {
      Vector colour;
      colour.z = static_cast<float>(Draw(draw));
      colour.y = static_cast<float>(Draw(draw));
      colour.x = static_cast<float>(Draw(draw));
      return StoreShared(block, draw.member, colour);
    }
    default:
      return;
  }
}

}  // namespace

ShaderDialog::ShaderDialog(EditSession& session) noexcept
    : session_(session),
      title_(session.table().titleIcon, session.table().aboutName),
      preview_(session) {}

std::int32_t ShaderDialog::Receive(void* context, std::int32_t id, const HostContainer* message,
                                   HostContainer*) noexcept {
  auto* self = static_cast<ShaderDialog*>(context);
  if (id != DialogKey) return self->Command(id, message) ? 1 : 0;
  const Word key = hostContainerGetInt(message, InputChannel, 0);
  const Word qualifier = hostContainerGetInt(message, InputQualifier, 0);
  return self->Key(static_cast<std::int32_t>(key), static_cast<std::int32_t>(qualifier)) ? 1 : 0;
}

bool ShaderDialog::Run() noexcept {
  const OwnedDialog dialog(Receive, this);
  dialog_ = dialog.get();
  bool confirmed = false;
  if (dialog_ != nullptr && Create()) {
    Init();
    confirmed = hostDialogOpen(dialog_) != 0;
  }
  // The preview draws into its area until it is told to stop: before anything goes.
  Preview().Stop();
  Preview().Detach();
  title_.Detach();
  DetachAreas();
  dialog_ = nullptr;
  return confirmed;
}

bool ShaderDialog::Create() noexcept {
  ResourceBundle resources;
  if (!resources.Open(ModuleFolder()) ||
      hostDialogLoad(dialog_, resources.get(), table().dialogId) == 0) {
    hostMessageDialog(hostStringFromChars(table().missingResources).get(), MessageDialogFlags);
    return false;
  }
  title_.Attach(dialog_, table().titleArea);
  if (table().HasPreview()) {
    shownObject_ = LoadInt(session_.block(), table().preview.object, 0);
    Preview().ShowScene(session_.TakeScene());
    Preview().Attach(dialog_, table().previewArea);
  }
  AttachAreas();
  return true;
}

void ShaderDialog::Init() noexcept {
  Derive();
  for (const Gadget& gadget : table().gadgets) {
    const Field* field = FieldOf(*table().shader, gadget.member);
    if (field != nullptr) ShowGadget(dialog_, gadget, *field, session_.block());
  }
  Enable();
}

void ShaderDialog::ShowMember(std::uint32_t member, std::int32_t except) noexcept {
  const Field* field = FieldOf(*table().shader, member);
  if (field == nullptr) return;
  for (const Gadget& gadget : table().gadgets) {
    if (gadget.member != member || gadget.id == except) continue;
    ShowGadget(dialog_, gadget, *field, session_.block());
  }
}

void ShaderDialog::Enable() noexcept {
  for (const EnablingRule& rule : table().enabling) {
    const bool on = rule.enabled(session_.block());
    for (const std::int32_t id : rule.gadgets) hostDialogEnable(dialog_, id, on);
  }
}

void ShaderDialog::MarkDirty() noexcept { StoreInt(session_.block(), table().preview.dirty, 1); }

bool ShaderDialog::IsDragging(const HostContainer* message) noexcept {
  return hostContainerGetInt(message, DialogDragging, 0) != 0;
}

const Gadget* ShaderDialog::GadgetOf(std::int32_t id) const noexcept {
  for (const Gadget& gadget : table().gadgets) {
    const Field* field = FieldOf(*table().shader, gadget.member);
    if (field != nullptr && IsOfGadget(gadget, *field, id)) return &gadget;
  }
  return nullptr;
}

bool ShaderDialog::Command(std::int32_t id, const HostContainer* message) noexcept {
  const Gadget* gadget = GadgetOf(id);
  if (gadget == nullptr) return false;
  Take(*gadget, *FieldOf(*table().shader, gadget->member), message, id);
  // The end of a drag brings a value that the block has already: the picture follows all the same.
  if (!IsDragging(message)) Changed(gadget->effect != Effect::None);
  return true;
}

void ShaderDialog::Take(const Gadget& gadget, const Field& field, const HostContainer* message,
                        std::int32_t id) noexcept {
  if (!TakeGadget(gadget, field, message, session_.block())) return;
  if (gadget.effect != Effect::None) MarkDirty();
  Edited(gadget.member);
  Derive();
  if (field.kind != ValueKind::Link) ShowMember(gadget.member, id);
  ShowScene();
}

void ShaderDialog::Changed(bool newPicture) noexcept {
  if (newPicture && table().HasPreview()) Preview().Restart();
  Enable();
}

// The flat picture keeps the scene that was loaded last.
void ShaderDialog::ShowScene() noexcept {
  const std::int32_t object = LoadInt(session_.block(), table().preview.object, 0);
  if (!table().HasPreview() || object == 0 || object == shownObject_) return;
  shownObject_ = object;
  Preview().ShowScene(LoadPreviewScene(object));
}

bool ShaderDialog::Key(std::int32_t key, std::int32_t qualifier) noexcept {
  if ((qualifier & kCommanding) == 0) return false;
  switch (key) {
    case 'R':
      ChangeWhole((qualifier & kShifting) == 0 ? &ShaderDialog::Revert : &ShaderDialog::Reset);
      return true;
    case 'M':
      ChangeWhole(&ShaderDialog::Random);
      return true;
    default:
      return false;
  }
}

void ShaderDialog::ChangeWhole(void (ShaderDialog::*change)() noexcept) noexcept {
  Preview().Stop();
  (this->*change)();
  MarkDirty();
  ShowScene();
  Init();
  if (table().HasPreview()) Preview().Restart();
}

void ShaderDialog::Revert() noexcept { session_.Revert(); }

void ShaderDialog::Reset() noexcept {
  for (const Field& field : table().shader->fields) {
    const KindOperations& operations = OperationsOf(field.kind);
    const bool plain = field.initial.given && operations.release == nullptr;
    const bool ofPreview = field.offset == table().preview.object;
    const bool resets =
        table().reset.Holds(field.offset) || table().furtherReset.Holds(field.offset);
    if (!plain || ofPreview || !resets) continue;
    operations.initialise(field.initial, &MemberAt<char>(session_.block(), field.offset));
  }
}

void ShaderDialog::Random() noexcept {
  for (const RandomDraw& draw : table().random) {
    const Field* field = FieldOf(*table().shader, draw.member);
    if (field != nullptr) DrawInto(draw, field->kind, session_.block());
  }
}

}  // namespace sorvanix
