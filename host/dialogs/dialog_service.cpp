#include "host/dialogs/dialog_service.h"

#include <atomic>
#include <utility>

namespace sorvanix::host {

namespace {

constinit std::atomic<DialogService*> processService = nullptr;
constinit thread_local DialogService* threadService = nullptr;

}  // namespace

DialogService* SetDialogService(DialogService* service) noexcept {
  return processService.exchange(service);
}

ThreadDialogService::ThreadDialogService(DialogService& service) noexcept
    : former_(std::exchange(threadService, &service)) {}

ThreadDialogService::~ThreadDialogService() { threadService = former_; }

DialogService* CurrentDialogService() noexcept {
  return threadService != nullptr ? threadService : processService.load();
}

}  // namespace sorvanix::host
