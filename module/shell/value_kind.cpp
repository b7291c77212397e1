// What each kind of value does: one row of operations a kind.
#include "module/shell/value_kind.h"

#include <iterator>

#include "module/kit/matrix.h"
#include "module/shell/host_channel.h"
#include "module/shell/host_container.h"
#include "module/shell/host_stream.h"
#include "module/shell/host_text.h"
#include "module/shell/ramp_form.h"

namespace sorvanix {

namespace {

template <class Value>
Value& At(void* value) noexcept {
  return *static_cast<Value*>(value);
}
template <class Value>
const Value& At(const void* value) noexcept {
  return *static_cast<const Value*>(value);
}

// --- plain values ---

void Take(const InitialValue& initial, std::int32_t& value) noexcept { value = initial.integer; }
void Take(const InitialValue& initial, float& value) noexcept { value = initial.real.x; }
void Take(const InitialValue& initial, Vector& value) noexcept { value = initial.real; }

// Floats exactly: a NaN equals nothing.
bool Equal(std::int32_t a, std::int32_t b) noexcept { return a == b; }
bool Equal(float a, float b) noexcept { return a == b; }
bool Equal(const Vector& a, const Vector& b) noexcept {
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

// A kind that is a Value in the block and goes through these host operations.
template <class Value, auto writeValue, auto readValue, auto getValue, auto setValue>
constexpr KindOperations Plain() {
  return {
      .initialise =
          [](const InitialValue& initial, void* value) noexcept {
            Take(initial, At<Value>(value));
            return true;
          },
      .release = nullptr,
      .copy =
          [](const void* from, void* to) noexcept {
            At<Value>(to) = At<Value>(from);
            return true;
          },
      .equal =
          [](const void* first, const void* second) noexcept {
            return Equal(At<Value>(first), At<Value>(second));
          },
      .write = [](const void* value,
                  HostStream* writer) noexcept { writeValue(writer, At<Value>(value)); },
      .read = [](void* value,
                 HostStream* reader) noexcept { readValue(reader, &At<Value>(value)); },
      .get = [](const void* value, std::int32_t key,
                HostContainer* payload) noexcept { setValue(payload, key, At<Value>(value)); },
      // Values are taken as they come: a block may hold what no dialog would let through.
      .set =
          [](void* value, std::int32_t key, const HostContainer* payload) noexcept {
            At<Value>(value) = static_cast<Value>(getValue(payload, key, Value{}));
          },
      .describe = nullptr,
  };
}

// --- strings ---

using StringHandle = HostString*;

void ReplaceString(void* value, OwnedString text) noexcept {
  const OwnedString former(At<StringHandle>(value));
  At<StringHandle>(value) = text.release();
}

constexpr KindOperations kString = {
    .initialise =
        [](const InitialValue&, void* value) noexcept {
          At<StringHandle>(value) = OwnedString().release();
          return true;
        },
    .release = [](void* value) noexcept { ReplaceString(value, OwnedString()); },
    .copy =
        [](const void* from, void* to) noexcept {
          ReplaceString(to, hostStringCopy(At<StringHandle>(from)));
          return true;
        },
    .equal =
        [](const void* first, const void* second) noexcept {
          return hostStringCompare(At<StringHandle>(first), At<StringHandle>(second)) == 0;
        },
    .write = [](const void* value,
                HostStream* writer) noexcept { hostWriteString(writer, At<StringHandle>(value)); },
    .read =
        [](void* value, HostStream* reader) noexcept {
          OwnedString text = hostStringCreate();
          if (hostReadString(reader, text.get()) != 0) ReplaceString(value, std::move(text));
        },
    .get =
        [](const void* value, std::int32_t key, HostContainer* payload) noexcept {
          hostContainerSetString(payload, key, At<StringHandle>(value));
        },
    .set =
        [](void* value, std::int32_t key, const HostContainer* payload) noexcept {
          ReplaceString(value, hostStringCopy(hostContainerGetString(payload, key, nullptr)));
        },
    .describe = nullptr,
};

// --- links: a message about the field is a message to the linked shader ---

using LinkHandle = ChannelLink*;

template <std::int32_t message>
void Ask(const void* value, std::int32_t key, HostContainer* payload) noexcept {
  if (At<LinkHandle>(value) == nullptr) return;
  const OwnedContainer answer;
  hostChannelMessage(At<LinkHandle>(value), message, answer.get());
  hostContainerSetContainer(payload, key, answer.get());
}

constexpr KindOperations kLink = {
    .initialise =
        [](const InitialValue&, void* value) noexcept {
          At<LinkHandle>(value) = hostChannelCreate();
          return At<LinkHandle>(value) != nullptr;
        },
    .release =
        [](void* value) noexcept {
          hostChannelRelease(At<LinkHandle>(value));
          At<LinkHandle>(value) = nullptr;
        },
    .copy =
        [](const void* from, void* to) noexcept {
          return hostChannelCopy(At<LinkHandle>(from), At<LinkHandle>(to)) != 0;
        },
    .equal =
        [](const void* first, const void* second) noexcept {
          const ChannelLink* a = At<LinkHandle>(first);
          const ChannelLink* b = At<LinkHandle>(second);
          return a != nullptr && b != nullptr && hostChannelCompare(a, b) != 0;
        },
    .write =
        [](const void* value, HostStream* writer) noexcept {
          // A failed Copy leaves no link: an empty one keeps the stream in step.
          const LinkHandle link = At<LinkHandle>(value);
          const LinkHandle empty = link == nullptr ? hostChannelCreate() : nullptr;
          hostWriteChannelLink(writer, link == nullptr ? empty : link);
          hostChannelRelease(empty);
        },
    .read =
        [](void* value, HostStream* reader) noexcept {
          LinkHandle& link = At<LinkHandle>(value);
          if (link == nullptr) link = hostChannelCreate();
          hostReadChannelLink(reader, link);
        },
    .get = Ask<MessageGetParameters>,
    .set =
        [](void* value, std::int32_t key, const HostContainer* payload) noexcept {
          HostContainer* parameters = hostContainerGetContainer(payload, key);
          if (parameters == nullptr) return;
          hostChannelMessage(At<LinkHandle>(value), MessageSetParameters, parameters);
        },
    .describe = Ask<MessageDescribeParameters>,
};

// --- matrices ---

constexpr KindOperations kMatrix = {
    .initialise =
        [](const InitialValue&, void* value) noexcept {
          At<Matrix>(value) = kIdentityMatrix;
          return true;
        },
    .release = nullptr,
    .copy =
        [](const void* from, void* to) noexcept {
          At<Matrix>(to) = At<Matrix>(from);
          return true;
        },
    .equal =
        [](const void* first, const void* second) noexcept {
          const Matrix& a = At<Matrix>(first);
          const Matrix& b = At<Matrix>(second);
          return Equal(a.off, b.off) && Equal(a.v1, b.v1) && Equal(a.v2, b.v2) && Equal(a.v3, b.v3);
        },
    .write = [](const void* value,
                HostStream* writer) noexcept { hostWriteMatrix(writer, At<Matrix>(value)); },
    .read = [](void* value,
               HostStream* reader) noexcept { hostReadMatrix(reader, &At<Matrix>(value)); },
    .get = nullptr,
    .set = nullptr,
    .describe = nullptr};

// --- parts of a saved ramp ---

template <auto writePart, auto readPart>
constexpr KindOperations RampPart() {
  return {
      .initialise = nullptr,
      .release = nullptr,
      .copy = nullptr,
      .equal = nullptr,
      .write = [](const void* value,
                  HostStream* writer) noexcept { writePart(At<Ramp>(value), writer); },
      .read = [](void* value, HostStream* reader) noexcept { readPart(At<Ramp>(value), reader); },
      .get = nullptr,
      .set = nullptr,
      .describe = nullptr};
}

// In the order of ValueKind.
constexpr KindOperations kOperations[] = {
    Plain<std::int32_t, hostWriteInt, hostReadInt, hostContainerGetInt, hostContainerSetInt>(),
    Plain<std::int32_t, hostWriteBool, hostReadBool, hostContainerGetBool, hostContainerSetBool>(),
    Plain<float, hostWriteFloat, hostReadFloat, hostContainerGetFloat, hostContainerSetFloat>(),
    Plain<Vector, hostWriteVector, hostReadVector, hostContainerGetVector,
          hostContainerSetVector>(),
    kString,
    kLink,
    kMatrix,
    RampPart<WriteRampCount, ReadRampCount>(),
    RampPart<WriteRampKnots, ReadRampKnots>(),
    RampPart<WriteRampOrder, ReadRampOrder>(),
};
static_assert(std::size(kOperations) == static_cast<std::size_t>(ValueKind::RampOrder) + 1);

}  // namespace

const KindOperations& OperationsOf(ValueKind kind) noexcept {
  return kOperations[static_cast<std::size_t>(kind)];
}

}  // namespace sorvanix
