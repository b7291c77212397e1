// How the module calls its host: one function that tolerates tables and operations that are
// missing.
#pragma once

#include <type_traits>

#include "module/shell/module_state.h"

namespace sorvanix {

/// Calls an operation of a host table, or answers `neutral` when the host does not supply it.
template <class Table, class Result, class... Parameters, class... Arguments>
inline Result hostCall(const Table* table, Result (*Table::*operation)(Parameters...) noexcept,
                       std::type_identity_t<Result> neutral, Arguments... arguments) noexcept {
  if (table == nullptr || table->*operation == nullptr) return neutral;
  return (table->*operation)(arguments...);
}

/// The same for an operation without a result.
template <class Table, class... Parameters, class... Arguments>
inline void hostCall(const Table* table, void (*Table::*operation)(Parameters...) noexcept,
                     Arguments... arguments) noexcept {
  if (table != nullptr && table->*operation != nullptr) (table->*operation)(arguments...);
}

/// hostCall for an operation on a handle, its first argument: a null handle answers `neutral`.
template <class Table, class Result, class Handle, class... Parameters, class... Arguments>
inline Result hostCallOn(const Table* table,
                         Result (*Table::*operation)(Handle*, Parameters...) noexcept,
                         std::type_identity_t<Result> neutral, std::type_identity_t<Handle>* handle,
                         Arguments... arguments) noexcept {
  if (handle == nullptr) return neutral;
  return hostCall(table, operation, neutral, handle, arguments...);
}

/// The same for an operation without a result.
template <class Table, class Handle, class... Parameters, class... Arguments>
inline void hostCallOn(const Table* table,
                       void (*Table::*operation)(Handle*, Parameters...) noexcept,
                       std::type_identity_t<Handle>* handle, Arguments... arguments) noexcept {
  if (handle != nullptr) hostCall(table, operation, handle, arguments...);
}

}  // namespace sorvanix
