// User areas that wait to be drawn. Threads add them, the main thread draws them.
#pragma once

#include <cstddef>
#include <deque>
#include <mutex>

namespace sorvanix::host {

class UserArea;

class RedrawQueue {
 public:
  /// An area that waits already is not added again. Safe on several threads. Throws std::bad_alloc.
  void Add(UserArea* area);
  /// For an area that goes away.
  void Remove(const UserArea* area) noexcept;
  /// Draws what waited when it was called; what is added while it draws waits for the next call.
  /// On the main thread.
  void Draw();

 private:
  std::size_t Size();
  UserArea* Next();

  std::mutex mutex_;
  std::deque<UserArea*> waiting_;
};

}  // namespace sorvanix::host
