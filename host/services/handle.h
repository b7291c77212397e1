// The two tools with which every table of the contract is written: classes that have a handle, and
// functions that let no exception out.
#pragma once

#include <cstddef>
#include <new>
#include <utility>

#include "host/services/memory.h"

namespace sorvanix::host {

/// Base of a class whose objects cross the line as a `HandleType*`. Objects made by `new` come from
/// the counted memory: tests see them leak, and can make them fail.
template <class Object, class HandleType>
class Handled {
 public:
  HandleType* Handle() noexcept {
    return reinterpret_cast<HandleType*>(static_cast<Object*>(this));
  }
  const HandleType* Handle() const noexcept {
    return reinterpret_cast<const HandleType*>(static_cast<const Object*>(this));
  }
  /// The object behind a handle; null for null.
  static Object* From(HandleType* handle) noexcept { return reinterpret_cast<Object*>(handle); }
  static const Object* From(const HandleType* handle) noexcept {
    return reinterpret_cast<const Object*>(handle);
  }

  static void* operator new(std::size_t size) {
    if (void* block = AllocateBlock(size)) return block;
    throw std::bad_alloc();
  }
  static void operator delete(void* block) noexcept { FreeBlock(block); }
};

/// What `work` answers, or `neutral` when it throws: the one way in which a table's function fails
/// is that memory is short, and no exception may cross the line.
template <class Result, class Work>
Result Guarded(Result neutral, Work&& work) noexcept {
  try {
    return std::forward<Work>(work)();
  } catch (...) {
    return neutral;
  }
}

/// The same for work that answers nothing: what it could not do stays undone.
template <class Work>
void Guarded(Work&& work) noexcept {
  try {
    std::forward<Work>(work)();
  } catch (...) {  // the caller has no way to learn of it, and needs none
  }
}

}  // namespace sorvanix::host
