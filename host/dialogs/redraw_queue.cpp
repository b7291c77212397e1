#include "host/dialogs/redraw_queue.h"

#include <algorithm>

#include "host/dialogs/user_area.h"

namespace sorvanix::host {

void RedrawQueue::Add(UserArea* area) {
  const std::lock_guard lock(mutex_);
  if (std::find(waiting_.begin(), waiting_.end(), area) == waiting_.end()) {
    waiting_.push_back(area);
  }
}

void RedrawQueue::Remove(const UserArea* area) noexcept {
  const std::lock_guard lock(mutex_);
  std::erase(waiting_, area);
}

std::size_t RedrawQueue::Size() {
  const std::lock_guard lock(mutex_);
  return waiting_.size();
}

UserArea* RedrawQueue::Next() {
  const std::lock_guard lock(mutex_);
  if (waiting_.empty()) return nullptr;
  UserArea* next = waiting_.front();
  waiting_.pop_front();
  return next;
}

void RedrawQueue::Draw() {
  // One by one: what draws one area may free another.
  for (std::size_t count = Size(); count > 0; --count) {
    if (UserArea* area = Next()) area->Draw();
  }
}

}  // namespace sorvanix::host
