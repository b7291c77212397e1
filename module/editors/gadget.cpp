// Between a gadget and its member, by the member's kind.
#include "module/editors/gadget.h"

#include <algorithm>
#include <bit>

#include "module/editors/shared_words.h"
#include "module/shell/host_container.h"
#include "module/shell/value_kind.h"

namespace sorvanix {

namespace {

static_assert(std::bit_cast<std::uint32_t>(kEndless) == 0x5EF9CCD9);

ValueKind KindOf(const Gadget& gadget, const Field& field) noexcept {
  return gadget.shown == Shown::Component ? ValueKind::Float : field.kind;
}

const Limits& LimitsOf(const Gadget& gadget, const Field& field) noexcept {
  return gadget.limits.given() ? gadget.limits : field.limits;
}

std::int32_t FormatOf(const Gadget& gadget, const Field& field) noexcept {
  if (gadget.format != kFormatOfUnit) return gadget.format;
  switch (field.unit) {
    case Unit::Percent:
      return FormatPercent;
    case Unit::Radians:
      return FormatDegrees;
    default:  // degrees in the block are shown as the plain numbers that they are
      return FormatReal;
  }
}

// A truth, whether files hold it as one or as an integer.
bool IsSwitch(const Field& field) noexcept {
  return field.kind == ValueKind::Bool || field.choices.data() == kSwitchChoices;
}

std::int32_t ToInt(double value) noexcept {
  constexpr double kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr double kMost = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp(value, kLeast, kMost));
}

// Both ways the same but for what has no reciprocal. Written so that NaN is endless too.
float SizeOf(float frequency) noexcept { return frequency > 0 ? 1 / frequency : kEndless; }
float FrequencyOf(float size) noexcept { return size == 0 ? kEndless : 1 / size; }

// Between what the member holds and what the gadget shows.
float ShownValue(Shown shown, float value) noexcept {
  switch (shown) {
    case Shown::Reciprocal:
      return SizeOf(value);
    case Shown::Doubled:
      return 2 * value;
    default:
      return value;
  }
}
float HeldValue(Shown shown, float value) noexcept {
  switch (shown) {
    case Shown::Reciprocal:
      return FrequencyOf(value);
    case Shown::Doubled:
      return 0.5f * value;
    default:
      return value;
  }
}

void ShowInt(HostDialog* dialog, const Gadget& gadget, const Field& field,
             std::int32_t value) noexcept {
  if (IsSwitch(field)) {
    hostDialogSetBool(dialog, gadget.id, value);
    return;
  }
  const Limits& limits = LimitsOf(gadget, field);
  hostDialogSetInt(dialog, gadget.id, value, ToInt(limits.minimum), ToInt(limits.maximum),
                   ToInt(limits.step));
}

void ShowFloat(HostDialog* dialog, const Gadget& gadget, const Field& field, float value) noexcept {
  const Limits& limits = LimitsOf(gadget, field);
  const auto bounded = [](double limit) {
    return std::clamp(static_cast<float>(limit), -kEndless, kEndless);
  };
  hostDialogSetFloat(dialog, gadget.id, ShownValue(gadget.shown, value), bounded(limits.minimum),
                     bounded(limits.maximum), bounded(limits.step), FormatOf(gadget, field));
}

// The value of a message as the member holds it.
template <class Value>
Value TakenFrom(const HostContainer* message, const Gadget& gadget) noexcept;

template <>
std::int32_t TakenFrom(const HostContainer* message, const Gadget&) noexcept {
  return static_cast<std::int32_t>(hostContainerGetInt(message, DialogValue, 0));
}
template <>
float TakenFrom(const HostContainer* message, const Gadget& gadget) noexcept {
  return HeldValue(gadget.shown, hostContainerGetFloat(message, DialogValue, 0));
}
template <>
Vector TakenFrom(const HostContainer* message, const Gadget&) noexcept {
  return hostContainerGetVector(message, DialogValue, {});
}

bool SameValue(std::int32_t a, std::int32_t b) noexcept { return a == b; }
bool SameValue(float a, float b) noexcept { return a == b; }
bool SameValue(const Vector&, const Vector&) noexcept { return false; }  // colours always count

template <class Value>
bool Take(const Gadget& gadget, const HostContainer* message, void* block) noexcept {
  const auto value = TakenFrom<Value>(message, gadget);
  const bool compares = gadget.effect == Effect::NewPicture;
  if (compares && SameValue(value, MemberAt<Value>(block, gadget.member))) return false;
  StoreShared(block, gadget.member, value);
  return true;
}

}  // namespace

const Field* FieldOf(const ShaderTable& table, std::uint32_t member) noexcept {
  const auto found =
      std::find_if(table.fields.begin(), table.fields.end(), [member](const Field& field) {
        const std::size_t size = field.kind == ValueKind::Vector ? sizeof(Vector) : 1;
        return member >= field.offset && member < field.offset + size;
      });
  return found == table.fields.end() ? nullptr : &*found;
}

void ShowGadget(HostDialog* dialog, const Gadget& gadget, const Field& field,
                void* block) noexcept {
  switch (KindOf(gadget, field)) {
    case ValueKind::Int:
    case ValueKind::Bool:
      return ShowInt(dialog, gadget, field, MemberAt<std::int32_t>(block, gadget.member));
    case ValueKind::Float:
      return ShowFloat(dialog, gadget, field, MemberAt<float>(block, gadget.member));
    case ValueKind::Vector:
      return hostDialogSetVector(dialog, gadget.id, MemberAt<Vector>(block, gadget.member));
    case ValueKind::String:
      return hostDialogSetText(dialog, gadget.id, MemberAt<HostString*>(block, gadget.member));
    case ValueKind::Link:
      return hostDialogSetChannelLink(dialog, gadget.id,
                                      MemberAt<ChannelLink*>(block, gadget.member));
    default:
      return;
  }
}

bool TakeGadget(const Gadget& gadget, const Field& field, const HostContainer* message,
                void* block) noexcept {
  if (field.kind == ValueKind::Link) return true;  // the host changed what the link holds
  if (hostContainerFind(message, DialogValue) < 0) return false;
  switch (KindOf(gadget, field)) {
    case ValueKind::Int:
    case ValueKind::Bool:
      return Take<std::int32_t>(gadget, message, block);
    case ValueKind::Float:
      return Take<float>(gadget, message, block);
    case ValueKind::Vector:
      return Take<Vector>(gadget, message, block);
    case ValueKind::String:
      OperationsOf(field.kind).set(&MemberAt<char>(block, gadget.member), DialogValue, message);
      return true;
    default:
      return false;
  }
}

}  // namespace sorvanix
