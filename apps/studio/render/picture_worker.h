// Paints pictures on a thread of its own, from coarse to fine, and only the latest one asked for.
#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <tl/expected.hpp>
#include <vector>

#include "host/bake/parallel_tiles.h"
#include "host/images/image.h"

namespace sorvanix::studio {

/// One of the pictures on the way to the final one.
struct Pass {
  int divisor = 1;  ///< of width and height
  int samples = 1;  ///< along each side of a pixel
  bool operator==(const Pass&) const = default;
};

/// An eighth, a quarter, half, the whole, then with this many samples.
std::vector<Pass> CoarseToFine(int samples);

/// What is painted. Made, used and destroyed on the worker's thread.
class Painter {
 public:
  virtual ~Painter() = default;
  /// Nothing when it was cancelled. The error is one line.
  virtual tl::expected<std::optional<host::Image>, std::string> Paint(
      const Pass& pass, const host::TaskOptions& options) = 0;
  /// What is missing in the picture that was painted, in one line; or empty.
  virtual std::string Note() const { return {}; }
};
using PainterPointer = tl::expected<std::unique_ptr<Painter>, std::string>;

struct PictureJob {
  std::function<PainterPointer()> prepare;  ///< called on the worker's thread
  std::vector<Pass> passes;
};

/// An answer of the worker.
struct PaintedPass {
  std::uint64_t job = 0;
  QImage image;   ///< null after an error
  QString error;  ///< one line, or empty
  QString note;   ///< what is missing in the picture, in one line; or empty
  bool isFinal = false;
};

class PictureWorker : public QObject {
  Q_OBJECT

 public:
  PictureWorker();
  /// Ends what is being painted, and the thread.
  ~PictureWorker() override;

  /// Asks for a picture in place of all that were asked for before; answers its number.
  std::uint64_t Submit(PictureJob job);
  /// Ends what is being painted; nothing more comes until the next Submit.
  void Cancel();
  bool IsBusy() const { return busy_; }

 Q_SIGNALS:
  /// On the thread that the worker lives in. Answers of jobs that another one has replaced do not
  /// come.
  void Painted(const PaintedPass& pass);

 private:
  void Run();
  void Paint(const PictureJob& job, std::uint64_t number);
  void Answer(PaintedPass pass);
  void Deliver(const PaintedPass& pass);

  std::mutex mutex_;
  std::condition_variable changed_;
  std::optional<PictureJob> waiting_;  // guarded by the mutex, as are the next two
  std::uint64_t latest_ = 0;
  bool ending_ = false;
  std::atomic<bool> cancelled_ = false;
  bool busy_ = false;  // of the thread that the worker lives in
  std::thread thread_;
};

/// Threads that a thread starts get its priority on Linux, so one call makes a worker and all its
/// helpers give way to the windows.
void GiveWayToWindows() noexcept;

/// Colours as the command line writes them into files of 8 bits.
QImage ToQImage(const host::Image& image);

}  // namespace sorvanix::studio
