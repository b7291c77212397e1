// Background work for previews: the threads behind the HostThread of the contract.
#pragma once

#include <sorvanix/host_dialog.h>

namespace sorvanix::host {

/// A thread is told to stop and joined by `end`, and runs to its end before that. `finished` is
/// called on the thread itself, after `run`. `start` answers null without a dialog service that
/// shows pictures, and when the system has no thread left.
void InstallPreviewThreads(ThreadTable& table) noexcept;

/// Waits until no `run` is at work. On the main thread.
void WaitForPreviews();

/// The same, and tells all to stop: before something changes that a preview may be reading, such as
/// what stands in a link. The module starts the preview anew when it learns of the change.
void StopPreviews();

}  // namespace sorvanix::host
