#include "fuzz/dialog_user.h"

#include <sorvanix/ids.h>

#include <iterator>
#include <limits>

#include "fuzz/shader_host.h"
#include "host/channels/channel_link.h"
#include "host/dialogs/preview_threads.h"

namespace sorvanix::fuzz {

using host::Dialog;
using host::ElementKind;
using host::Gadget;
using host::GadgetValue;
using host::MousePlace;
using host::UserArea;

namespace {

constexpr int kMostDialogs = 8;   // opened by one input
constexpr int kMostPreviews = 4;  // waited for, and ticks
constexpr int kMostActs = 16;     // with pictures, each of which may load a scene and begin anew

// Where arithmetic goes wrong.
constexpr float kNumbers[] = {0,
                              -0.0f,
                              1,
                              -1,
                              0.5f,
                              1e-45f,
                              1e-30f,
                              9e18f,
                              -9e18f,
                              2147483648.0f,
                              -2147483904.0f,
                              std::numeric_limits<float>::max(),
                              -std::numeric_limits<float>::max(),
                              std::numeric_limits<float>::infinity(),
                              -std::numeric_limits<float>::infinity(),
                              std::numeric_limits<float>::quiet_NaN()};

constexpr std::int32_t kKeys[] = {'R', 'M', 'I', KeyUp, KeyDown, KeyLeft, KeyRight, KeyEscape};

void Shrink(Dialog& dialog) {
  constexpr std::int32_t kSide = 8;
  for (const auto& area : dialog.Areas()) area->Resize(kSide, kSide);
}

}  // namespace

bool DrawsAtRandom(std::int32_t code, std::int32_t qualifier) noexcept {
  return code == 'M' && (qualifier & (QualifierControl | QualifierCommand)) != 0;
}

void PrepareSmallAreas(Dialog& dialog) {
  for (const auto& area : dialog.Areas()) area->Prepare();
  Shrink(dialog);
}

void DialogUser::RunModal(Dialog& dialog, std::int32_t, std::int32_t) {
  if (++opened_ > kMostDialogs) return dialog.Close(false);
  showsPictures_ ? Shrink(dialog) : PrepareSmallAreas(dialog);
  while (!dialog.IsClosed() && !bytes_.AtEnd() && !IsTired()) {
    Act(dialog);
    if (showsPictures_) DrawWaiting();
  }
  if (!dialog.IsClosed()) dialog.Close(false);
}

std::optional<Vector> DialogUser::ChooseColour(const Vector&) {
  if (bytes_.Byte() % 4 == 0) return std::nullopt;
  return bytes_.Take<Vector>();
}

std::optional<MousePlace> DialogUser::PollMouse(UserArea&) {
  if (showsPictures_) DrawWaiting();
  if (bytes_.AtEnd() || bytes_.Byte() % 4 == 0) return std::nullopt;
  return TakePlace();
}

bool DialogUser::IsTired() const noexcept { return showsPictures_ && acts_ == kMostActs; }

void DialogUser::Act(Dialog& dialog) {
  ++acts_;
  switch (bytes_.Byte()) {
    case 'k':
      return PressKey(dialog);
    case 'a':
      return UseArea(dialog);
    case 'm':
      return SendAnything(dialog);
    case 'w':
      if (++previews_ <= kMostPreviews) host::WaitForPreviews();
      return;
    case 'd':
      return DrawWaiting();
    case 'o':
      return dialog.Close(true);
    case 'c':
      return dialog.Close(false);
    default:
      return SetGadget(dialog);
  }
}

void DialogUser::SetGadget(Dialog& dialog) {
  const std::size_t count = dialog.Gadgets().size();
  if (count == 0) return;
  Gadget& gadget = *dialog.Find(dialog.Gadgets()[bytes_.Byte() % count].id);
  if (!gadget.enabled) return;
  if (gadget.kind == ElementKind::Link) return ChangeLink(dialog, gadget);
  const bool isDragging = bytes_.Byte() == 1;
  dialog.Set(gadget, TakeValue(gadget), isDragging);
}

// Of the type that the gadget has.
GadgetValue DialogUser::TakeValue(const Gadget& gadget) {
  if (gadget.IsNumber()) return TakeNumber(gadget);
  if (std::holds_alternative<bool>(gadget.value)) return bytes_.Byte() % 2 == 1;
  if (std::holds_alternative<Vector>(gadget.value)) return bytes_.Take<Vector>();
  if (std::holds_alternative<std::string>(gadget.value)) return bytes_.Text();
  return {};
}

// An entry of a choice; else mostly a number within the limits, as dialogs keep them.
GadgetValue DialogUser::TakeNumber(const Gadget& gadget) {
  const std::uint8_t how = bytes_.Byte();
  if (how >= 64 && !gadget.entries.empty()) {
    return gadget.entries[how % gadget.entries.size()].value;
  }
  const bool isListed = how % 2 == 0;
  const float number =
      isListed ? kNumbers[bytes_.Byte() % std::size(kNumbers)] : bytes_.Take<float>();
  if (how >= 16) return gadget.TypedNumber(number);
  if (std::holds_alternative<float>(gadget.value)) return number;
  return bytes_.Take<std::int32_t>();
}

void DialogUser::ChangeLink(Dialog& dialog, const Gadget& gadget) {
  if (gadget.link == nullptr) return;
  host::StopPreviews();
  host::Link& link = *host::Link::From(gadget.link);
  const std::uint8_t how = bytes_.Byte();
  if (how == 0) {
    link.Clear();
  } else if (how == 1) {
    link.HoldBitmap(bytes_.Text());
  } else if (host::Shader* held = link.HeldShader(); how == 2 && held != nullptr) {
    held->Edit();
  } else {
    host::Container description = TakeContainer(bytes_);
    const auto& shaders = Catalogue().Shaders();
    description.Set(KeyLinkPluginId, Word{shaders[how % shaders.size()].id});
    link.Message(MessageSetParameters, description);
  }
  dialog.ChangeLink(gadget);
}

void DialogUser::PressKey(Dialog& dialog) {
  const std::uint8_t number = bytes_.Byte();
  const std::int32_t code = number < std::size(kKeys) ? kKeys[number] : std::int32_t{number};
  const std::int32_t qualifier = TakeQualifier();
  hasDrawnAtRandom_ |= DrawsAtRandom(code, qualifier);
  dialog.PressKey(code, qualifier);
}

void DialogUser::UseArea(Dialog& dialog) {
  const std::size_t count = dialog.Areas().size();
  if (count == 0) return;
  UserArea& area = *dialog.Areas()[bytes_.Byte() % count];
  switch (bytes_.Byte()) {
    case 't':
      if (++previews_ <= kMostPreviews) area.Tick();
      return;
    case 'w':
      return area.Wheel(TakePlace(), bytes_.Take<std::int32_t>());
    case 'd':
      return area.Press(TakePlace(), true);
    case 's': {
      const std::int32_t width = bytes_.Byte() % 64;
      area.Resize(width, bytes_.Byte() % 64);
      return area.Draw();
    }
    default:
      return area.Press(TakePlace(), false);
  }
}

void DialogUser::SendAnything(Dialog& dialog) {
  const auto id = bytes_.Take<std::int32_t>();
  hasDrawnAtRandom_ |= id == DialogKey;
  dialog.Send(id, TakeContainer(bytes_));
}

MousePlace DialogUser::TakePlace() {
  const auto x = bytes_.Take<std::int16_t>(), y = bytes_.Take<std::int16_t>();
  // The last values stand for what is far outside every area.
  const auto widened = [](std::int16_t at) {
    if (at == std::numeric_limits<std::int16_t>::max())
      return std::numeric_limits<std::int32_t>::max();
    if (at == std::numeric_limits<std::int16_t>::min())
      return std::numeric_limits<std::int32_t>::min();
    return std::int32_t{at};
  };
  return {widened(x), widened(y), TakeQualifier()};
}

std::int32_t DialogUser::TakeQualifier() { return bytes_.Byte() % 32; }

}  // namespace sorvanix::fuzz
