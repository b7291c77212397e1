// What a value does, by its kind: the one place that tells a vector from a link.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The operations of one kind. `value` points at the value inside a block. The kinds of a saved
/// ramp are only written and read, and a matrix is not exchanged: what they lack is null.
struct KindOperations {
  /// Stores the initial value into a place that owns nothing; false when memory is short.
  bool (*initialise)(const InitialValue& initial, void* value) noexcept;
  /// Releases what the value owns and leaves a value that owns nothing. Null where none does.
  void (*release)(void* value) noexcept;
  /// Makes `to`, which is initialised, equal to `from`; false when the host cannot.
  bool (*copy)(const void* from, void* to) noexcept;
  bool (*equal)(const void* first, const void* second) noexcept;

  void (*write)(const void* value, HostStream* writer) noexcept;
  /// A failed read leaves the value alone.
  void (*read)(void* value, HostStream* reader) noexcept;

  /// Answers to the messages that get, set and describe parameters.
  void (*get)(const void* value, std::int32_t key, HostContainer* payload) noexcept;
  void (*set)(void* value, std::int32_t key, const HostContainer* payload) noexcept;
  /// Null where the type word of the field's row is the answer.
  void (*describe)(const void* value, std::int32_t key, HostContainer* payload) noexcept;
};

const KindOperations& OperationsOf(ValueKind kind) noexcept;

}  // namespace sorvanix
