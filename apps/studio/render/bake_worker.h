// Bakes one channel of a material into an image file, on a thread of its own.
//
// It is the command line's bake of the same graph: the same pixels, the same recipe in the file.
#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <filesystem>
#include <string>
#include <thread>

#include "apps/sorvanix/bake_options.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::studio {

struct BakeRequest {
  std::string sceneText;            ///< its first material is baked
  std::filesystem::path sceneFile;  ///< names of files in it are relative to this one's folder
  cli::BakeOptions options;         ///< channel, normal map, surface, size, samples, time, depth
  std::filesystem::path file;       ///< the image; its extension is its format
};

class BakeWorker : public QObject {
  Q_OBJECT

 public:
  /// The catalogue must outlive it.
  explicit BakeWorker(const host::ShaderCatalogue& catalogue) : catalogue_(catalogue) {}
  /// Cancels.
  ~BakeWorker() override;

  /// Not while another one runs.
  void Begin(BakeRequest request);
  /// The file stays as it was; Ended comes all the same.
  void Cancel() { cancelled_ = true; }
  bool IsRunning() const { return thread_.joinable(); }

 Q_SIGNALS:
  void Progressed(int done, int total);
  /// The error is one line; empty after success, and after a cancellation.
  void Ended(const QString& error, bool cancelled);

 private:
  std::string Bake(const BakeRequest& request);

  const host::ShaderCatalogue& catalogue_;
  std::atomic<bool> cancelled_ = false;
  std::thread thread_;
};

}  // namespace sorvanix::studio
