#include "host/dialogs/preview_threads.h"

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

#include "host/dialogs/dialog_service.h"
#include "host/services/handle.h"

namespace sorvanix::host {

namespace {

using Run = void (*)(void* context, HostThread* thread) noexcept;
using Finished = void (*)(void* context) noexcept;

class PreviewThread;

// The threads that are at work: the contract's functions carry no context.
class WorkingThreads {
 public:
  void Add(PreviewThread& thread) {
    const std::lock_guard lock(mutex_);
    threads_.push_back(&thread);
  }
  void Remove(const PreviewThread& thread) noexcept {
    const std::lock_guard lock(mutex_);
    std::erase(threads_, &thread);
    changed_.notify_all();
  }
  void WaitForNone() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return threads_.empty(); });
  }
  void TellToStop();

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<PreviewThread*> threads_;
};
WorkingThreads working;

class PreviewThread : public Handled<PreviewThread, HostThread> {
 public:
  PreviewThread(Run run, Finished finished, void* context) {
    working.Add(*this);
    try {
      thread_ = std::jthread([this, run, finished, context] {
        run(context, Handle());
        if (finished != nullptr) finished(context);
        working.Remove(*this);
      });
    } catch (...) {
      working.Remove(*this);
      throw;
    }
  }

  bool MustStop() const noexcept { return stop_.stop_requested(); }
  void TellToStop() noexcept { stop_.request_stop(); }
  void Join() { thread_.join(); }

 private:
  std::stop_source stop_;  // not the thread's own: run may ask before thread_ has its thread
  std::jthread thread_;
};

void WorkingThreads::TellToStop() {
  const std::lock_guard lock(mutex_);
  for (PreviewThread* thread : threads_) thread->TellToStop();
}

HostThread* Start(Run run, Finished finished, void* context) noexcept {
  const DialogService* service = CurrentDialogService();
  if (run == nullptr || service == nullptr || !service->ShowsPictures()) return nullptr;
  return Guarded<HostThread*>(
      nullptr, [&] { return (new PreviewThread(run, finished, context))->Handle(); });
}

std::int32_t MustStop(const HostThread* thread) noexcept {
  return thread != nullptr && PreviewThread::From(thread)->MustStop() ? 1 : 0;
}

void End(HostThread* thread) noexcept {
  if (thread == nullptr) return;
  PreviewThread* ended = PreviewThread::From(thread);
  ended->TellToStop();
  ended->Join();
  delete ended;
}

}  // namespace

void InstallPreviewThreads(ThreadTable& table) noexcept {
  table = {.start = Start, .mustStop = MustStop, .end = End};
}

void WaitForPreviews() { working.WaitForNone(); }

void StopPreviews() {
  working.TellToStop();
  working.WaitForNone();
}

}  // namespace sorvanix::host
