#include "host/services/streams.h"

#include <cstring>

#include "host/services/strings.h"

namespace sorvanix::host {

namespace {

// A C record of the contract, compared by its bits.
template <class Record>
bool SameBits(const Record& first, const Record& second) {
  return std::memcmp(&first, &second, sizeof(Record)) == 0;
}

template <class Type>
std::int32_t Store(HostStream* stream, Type value) noexcept {
  if (stream == nullptr) return 0;
  return Guarded(0, [&] {
    Stream::From(stream)->Write(std::move(value));
    return 1;
  });
}

// Takes the next number or record when it is of this type; anything else leaves stream and
// destination alone.
template <class Type, class Destination>
std::int32_t Take(HostStream* stream, Destination* destination) noexcept {
  if (stream == nullptr || destination == nullptr) return 0;
  const Type* value = Stream::From(stream)->Read<Type>();
  if (value == nullptr) return 0;
  *destination = *value;
  return 1;
}

std::int32_t WriteBool(HostStream* stream, std::int32_t value) noexcept {
  return Store(stream, value != 0);
}

template <class Record>
std::int32_t WriteRecord(HostStream* stream, const Record* value) noexcept {
  return value == nullptr ? 0 : Store(stream, *value);
}

std::int32_t WriteString(HostStream* stream, const HostString* value) noexcept {
  if (stream == nullptr || value == nullptr) return 0;
  return Guarded(0, [&] { return Store(stream, std::string(TextOf(value))); });
}

std::int32_t ReadString(HostStream* stream, HostString* value) noexcept {
  // The shared empty text stands for every failed creation: it must stay empty.
  if (stream == nullptr || value == nullptr || value == EmptyText()) return 0;
  return Guarded(0, [&] {
    const std::string* next = Stream::From(stream)->Peek<std::string>();
    if (next == nullptr) return 0;
    Text::From(value)->text = *next;
    Stream::From(stream)->Read<std::string>();  // only now: the copy may have failed
    return 1;
  });
}

}  // namespace

bool operator==(const StreamLink& first, const StreamLink& second) {
  return first.pluginId == second.pluginId && first.filename == second.filename &&
         first.values == second.values;
}

bool operator==(const StreamValue& first, const StreamValue& second) {
  if (first.value.index() != second.value.index()) return false;
  return std::visit(
      [&](const auto& value) {
        using Type = std::decay_t<decltype(value)>;
        const Type& other = std::get<Type>(second.value);
        if constexpr (std::is_trivially_copyable_v<Type>) return SameBits(value, other);
        if constexpr (!std::is_trivially_copyable_v<Type>) return value == other;
      },
      first.value);
}

void InstallStreams(StreamTable& table) noexcept {
  table.writeInt = Store<std::int32_t>;
  table.writeFloat = Store<float>;
  table.writeBool = WriteBool;
  table.writeVector = WriteRecord<Vector>;
  table.writeMatrix = WriteRecord<Matrix>;
  table.writeString = WriteString;
  table.readInt = Take<std::int32_t, std::int32_t>;
  table.readFloat = Take<float, float>;
  table.readBool = Take<bool, std::int32_t>;
  table.readVector = Take<Vector, Vector>;
  table.readMatrix = Take<Matrix, Matrix>;
  table.readString = ReadString;
}

}  // namespace sorvanix::host
