#include "apps/studio/render/picture_worker.h"

#include <sys/resource.h>

#include <QMetaObject>
#include <exception>
#include <utility>

#include "host/images/quantise.h"

namespace sorvanix::studio {

std::vector<Pass> CoarseToFine(int samples) {
  std::vector<Pass> passes = {{8, 1}, {4, 1}, {2, 1}, {1, 1}};
  if (samples > 1) passes.push_back({1, samples});
  return passes;
}

void GiveWayToWindows() noexcept {
  constexpr int kNiceness = 10;
  ::setpriority(PRIO_PROCESS, 0, kNiceness);  // 0: the calling thread
}

QImage ToQImage(const host::Image& image) {
  QImage converted(image.width, image.height, QImage::Format_RGB888);
  for (int y = 0; y < image.height; ++y) {
    const float* const row = image.rgb.data() + image.IndexOf(0, y);
    uchar* const bytes = converted.scanLine(y);
    for (int i = 0; i < 3 * image.width; ++i) {
      bytes[i] = static_cast<uchar>(host::Quantise(row[i], 255));
    }
  }
  return converted;
}

PictureWorker::PictureWorker() : thread_([this] { Run(); }) {}

PictureWorker::~PictureWorker() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
    cancelled_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

std::uint64_t PictureWorker::Submit(PictureJob job) {
  busy_ = true;
  const std::lock_guard lock(mutex_);
  waiting_ = std::move(job);
  cancelled_ = true;
  changed_.notify_one();
  return ++latest_;
}

void PictureWorker::Cancel() {
  busy_ = false;
  const std::lock_guard lock(mutex_);
  waiting_.reset();
  cancelled_ = true;
  ++latest_;
}

void PictureWorker::Run() {
  GiveWayToWindows();
  while (true) {
    PictureJob job;
    std::uint64_t number = 0;
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return ending_ || waiting_; });
      if (ending_) return;
      job = std::move(*waiting_);
      waiting_.reset();
      cancelled_ = false;
      number = latest_;
    }
    try {
      Paint(job, number);
    } catch (const std::exception& error) {  // memory is short
      Answer({.job = number, .image = {}, .error = error.what(), .note = {}, .isFinal = true});
    }
  }
}

void PictureWorker::Paint(const PictureJob& job, std::uint64_t number) {
  const auto fail = [&](const std::string& error) {
    Answer({.job = number,
            .image = {},
            .error = QString::fromStdString(error),
            .note = {},
            .isFinal = true});
  };
  const PainterPointer painter = job.prepare();
  if (!painter) return fail(painter.error());
  for (const Pass& pass : job.passes) {
    const auto image =
        (*painter)->Paint(pass, {.threads = 0, .cancelled = &cancelled_, .progress = nullptr});
    if (!image) return fail(image.error());
    if (!*image) return;  // cancelled
    Answer({.job = number,
            .image = ToQImage(**image),
            .error = {},
            .note = QString::fromStdString((*painter)->Note()),
            .isFinal = &pass == &job.passes.back()});
  }
}

void PictureWorker::Answer(PaintedPass pass) {
  QMetaObject::invokeMethod(
      this, [this, pass = std::move(pass)] { Deliver(pass); }, Qt::QueuedConnection);
}

// An answer may have been on its way while the next job was asked for.
void PictureWorker::Deliver(const PaintedPass& pass) {
  {
    const std::lock_guard lock(mutex_);
    if (pass.job != latest_) return;
  }
  if (pass.isFinal) busy_ = false;
  Q_EMIT Painted(pass);
}

}  // namespace sorvanix::studio
