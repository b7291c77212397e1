// What a shader is, as data: its fields, how they are stored and exchanged, and the words of its
// registration.
//
// Each shader declares one ShaderTable; the interpreters beside this file (block, persistence,
// exchange, with value_kind and ramp_form for what a value is) and the generator of shaders.json do
// the rest. A field is named in its Field row, and once more where the order of a saved file
// differs from that of the block.
#pragma once

#include <sorvanix/host_api.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

#include "module/kit/ramp.h"

namespace sorvanix {

/// How a field is held in a block, and in a saved file.
enum class ValueKind : std::uint8_t {
  Int,     ///< int32
  Bool,    ///< int32, 0 or 1 in files
  Float,   ///< 32-bit float
  Vector,  ///< three 32-bit floats
  String,  ///< HostString*, owned by the block; at first the host's shared empty string
  Link,    ///< ChannelLink*, owned by the block; made by Alloc
  Matrix,  ///< at first the identity; never exchanged

  // Parts of a saved ramp, each placed at the Ramp as a whole, stored in this order.
  RampCount,  ///< how many knots and order entries the file holds
  RampKnots,  ///< colour, position and bias of each
  RampOrder   ///< the order entry of each
};

/// One named value of an integer field.
struct Choice {
  std::int32_t value;
  const char* name;   ///< as materials write it
  const char* label;  ///< as dialogs and the manual show it
  /// Every sample draws a new random number: pictures depend on the order of their samples.
  bool random = false;
};

/// What Alloc stores into a field. Fields without one stay as the allocator cleared them.
struct InitialValue {
  bool given = false;
  std::int32_t integer = 0;
  Vector real = {};
};

constexpr InitialValue Initially(int value) { return {true, value, {}}; }
constexpr InitialValue Initially(float value) { return {true, 0, {value, 0, 0}}; }
/// What a matrix starts as.
constexpr InitialValue InitiallyIdentity() { return {true, 0, {}}; }
constexpr InitialValue Initially(float x, float y, float z) { return {true, 0, {x, y, z}}; }

/// A truth that messages and files hold as an integer.
inline constexpr Choice kSwitchChoices[] = {{0, "off", "Off"}, {1, "on", "On"}};

/// What a dialog keeps a value within, in the units of the block. Files and messages may hold
/// others.
struct Limits {
  double minimum = -std::numeric_limits<double>::infinity();
  double maximum = std::numeric_limits<double>::infinity();
  double step = 0;
  constexpr bool given() const { return step > 0; }
};

/// How people read a value.
enum class Unit : std::uint8_t { None, Percent, Degrees, Colour, Radians };

inline constexpr std::int32_t kNotExchanged = 0;

/// One field of a parameter block.
struct Field {
  std::uint32_t offset;  ///< in bytes from the start of the block
  const char* name;      ///< as the block and materials call it
  ValueKind kind;
  InitialValue initial = {};
  bool compared = false;  ///< takes part in Compare
  bool copied = false;    ///< taken over by CopyRule::ListedFields

  // Only fields with a key are parameters that people set; the others are state.
  std::int32_t key = kNotExchanged;
  std::int32_t describeAs = DescribeReal;  ///< the type word of MessageDescribeParameters
  const char* label = nullptr;
  const char* help = nullptr;  ///< one sentence for the manual
  Limits limits = {};
  Unit unit = Unit::None;
  std::span<const Choice> choices = {};

  // Two irregular ways to exchange a value. Other programs rely on them.
  bool importedAsReal = false;   ///< an int that messages set as a real, which is truncated
  bool describedAsReal = false;  ///< the type word is stored as a real
};

/// The first columns of a field's row, and the two columns that place a saved value.
#define SORVANIX_MEMBER(Block, kind_, member)                                     \
  .offset = static_cast<std::uint32_t>(offsetof(Block, member)), .name = #member, \
  .kind = ValueKind::kind_
#define SORVANIX_PLACE(Block, kind_, member) ValueKind::kind_, offsetof(Block, member)

/// The same for one component of a vector, which goes by a name of its own.
#define SORVANIX_COMPONENT(Block, member, axis, name_)                                    \
  .offset = static_cast<std::uint32_t>(offsetof(Block, member) + offsetof(Vector, axis)), \
  .name = name_, .kind = ValueKind::Float
#define SORVANIX_COMPONENT_PLACE(Block, member, axis) \
  ValueKind::Float, offsetof(Block, member) + offsetof(Vector, axis)

/// The first columns of a row for a field of the block's member `ramp`.
#define SORVANIX_RAMP_MEMBER(Block, kind_, member)                                      \
  .offset = static_cast<std::uint32_t>(offsetof(Block, ramp) + offsetof(Ramp, member)), \
  .name = #member, .kind = ValueKind::kind_
#define SORVANIX_RAMP_PLACE(Block, kind_, member) \
  ValueKind::kind_, offsetof(Block, ramp) + offsetof(Ramp, member)

/// The rows of several lists as one.
template <class Row, std::size_t... sizes>
constexpr auto Join(const std::array<Row, sizes>&... parts) {
  std::array<Row, (sizes + ...)> joined = {};
  auto end = joined.begin();
  ((end = std::copy(parts.begin(), parts.end(), end)), ...);
  return joined;
}

inline constexpr std::uint32_t kNoMember = std::numeric_limits<std::uint32_t>::max();
inline constexpr std::int32_t kEveryLaterMarker = std::numeric_limits<std::int32_t>::max();

/// One value of the saved form, in file order. Build rows with the functions below.
struct StoredItem {
  ValueKind kind;
  std::uint32_t offset;      ///< the field, or kNoMember for a value that is read and dropped
  std::int32_t firstMarker;  ///< files with a marker from here on hold the value
  std::int32_t lastMarker;
  bool written;               ///< false for values that only old files hold
  std::int32_t literal = 0;   ///< what is written where there is no field
  std::int32_t times = 1;     ///< how many of it stand in a row
  InitialValue implied = {};  ///< where no value is in the file, but its marker tells one
};

/// A value that every file with this shader's form holds.
constexpr StoredItem Stored(ValueKind kind, std::size_t offset) {
  return {kind, static_cast<std::uint32_t>(offset), std::numeric_limits<std::int32_t>::min(),
          kEveryLaterMarker, true};
}

/// A value that the version with this marker introduced.
constexpr StoredItem StoredSince(std::int32_t marker, ValueKind kind, std::size_t offset) {
  return {kind, static_cast<std::uint32_t>(offset), marker, kEveryLaterMarker, true};
}

/// A value that one version alone wrote: read to stay in step, and dropped.
constexpr StoredItem StoredOnlyIn(std::int32_t marker, ValueKind kind) {
  return {kind, kNoMember, marker, marker, false};
}

/// A value that only versions before this marker hold: their form was another one.
constexpr StoredItem StoredBefore(std::int32_t marker, ValueKind kind, std::size_t offset) {
  return {kind, static_cast<std::uint32_t>(offset), std::numeric_limits<std::int32_t>::min(),
          marker - 1, false};
}

/// What a file from before this marker says by its age alone. A later row may still read the field.
constexpr StoredItem ImpliedBefore(std::int32_t marker, ValueKind kind, std::size_t offset,
                                   InitialValue value) {
  StoredItem item = StoredBefore(marker, kind, offset);
  item.implied = value;
  return item;
}

/// Fillers that the version with this marker introduced: always written as `literal`, and dropped
/// on reading. `kind` is Int or Bool.
constexpr StoredItem StoredLiteral(std::int32_t marker, ValueKind kind, std::int32_t literal,
                                   std::int32_t times = 1) {
  return {kind, kNoMember, marker, kEveryLaterMarker, true, literal, times};
}

/// Markers first to last, both included.
struct MarkerRange {
  std::int32_t first = 0, last = -1;
  constexpr bool Holds(std::int32_t marker) const { return marker >= first && marker <= last; }
};

/// Where a block holds its ramp, and the keys of the knots: the colour of knot i goes under
/// colourKey + i * keyStride, and so on. `interpolation`, `count` and `selected` have rows of their
/// own.
struct RampForm {
  std::uint32_t offset = kNoMember;
  const Ramp* initial = nullptr;  ///< what Alloc stores
  std::int32_t colourKey = kNotExchanged;
  std::int32_t positionKey = kNotExchanged;
  std::int32_t biasKey = kNotExchanged;
  std::int32_t keyStride = 1;
  const char* label = nullptr;
  const char* help = nullptr;
  constexpr bool given() const { return initial != nullptr; }
};

/// What Copy takes over.
enum class CopyRule : std::uint8_t {
  WholeBlock,  ///< all words as they stand; only for blocks that own nothing
  /// The fields marked `copied` and the live knots of the ramp. A block without links keeps all
  /// others; in one with links they get the values of Alloc, where Alloc stores any.
  ListedFields
};

enum class ShaderCategory : std::uint8_t { Generator, Surface, Filter };

/// All that is data about one shader.
struct ShaderTable {
  std::int32_t pluginId;
  const char* name;
  ShaderCategory category;
  const char* summary;  ///< one sentence for lists and the manual
  std::uint32_t infoWord = 0;

  std::uint32_t blockSize = 0;  ///< in bytes; 0 for a shader without parameters
  std::uint32_t nestedOffset = kNoMember;
  std::span<const Field> fields = {};
  RampForm ramp = {};
  CopyRule copyRule = CopyRule::WholeBlock;
  std::uint32_t copyStart = 0;  ///< WholeBlock leaves the bytes before it as they are

  std::int32_t marker = 0;  ///< of the saved form that Write stores
  /// Of a file with an older marker Read takes nothing, and answers 1.
  std::int32_t oldestMarker = std::numeric_limits<std::int32_t>::min();
  MarkerRange foreignMarkers = {};  ///< Read does the same with a marker that no version had
  bool onlyOwnMarker = false;       ///< Read takes nothing, and answers 0, where the marker differs
  std::span<const StoredItem> stored = {};
  /// Called after values were read: for what follows from them, or from the age of the file.
  void (*completeRead)(void* block, std::int32_t marker) noexcept = nullptr;

  std::int32_t slotStride = 0;  ///< size of one ThreadSlot in bytes; 0 for a shader without slots
  const char* slotFailureText = nullptr;  ///< null for a shader that fails without a word
};

}  // namespace sorvanix
