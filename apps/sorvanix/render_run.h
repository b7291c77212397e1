// Carries out a render: a scene in, image files out, one for each frame.
#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "apps/sorvanix/failure_tally.h"
#include "apps/sorvanix/host_setup.h"
#include "apps/sorvanix/picture_file.h"
#include "apps/sorvanix/progress.h"
#include "apps/sorvanix/recipe_files.h"
#include "host/scene/document_tables.h"
#include "host/scene/scene.h"
#include "host/services/json.h"

namespace sorvanix::cli {

struct RenderOptions {
  std::string scene;
  PictureOptions picture;
  bool noFilter = false;
};

/// The outputs, in order. The error, of one line, is one of usage.
tl::expected<std::vector<PlannedPicture>, std::string> PlanRender(const RenderOptions& options);

class RenderRun {
 public:
  /// All that it is given must outlive it.
  RenderRun(const RenderOptions& options, const std::filesystem::path& modulePath,
            const host::ShaderCatalogue& catalogue, const std::atomic<bool>& cancelled);

  /// Renders what can be rendered, and tells about each output and each failure.
  ExitCode Run(const std::vector<PlannedPicture>& plan);

 private:
  bool Cancelled() const { return cancelled_.load(std::memory_order_relaxed); }
  tl::expected<void, Failure> ReadScene();
  tl::expected<void, Failure> Check(const std::vector<PlannedPicture>& plan) const;
  tl::expected<void, Failure> PrepareLinks(bool afresh);
  tl::expected<void, Failure> RenderOutput(const PlannedPicture& output);
  std::string Recipe(const PlannedPicture& output) const;
  void WarnOnce(const std::vector<std::string>& warnings);
  void Succeed(const PlannedPicture& output, const std::string& hash);
  void Fail(const Failure& failure);

  const RenderOptions& options_;
  const std::filesystem::path& modulePath_;
  const host::InputLog inputs_;
  host::OpenDocuments documents_;
  const std::atomic<bool>& cancelled_;
  Progress progress_;
  FailureTally tally_;
  host::Json::Array report_;
  bool hasWarned_ = false;
  LoadedModule module_;                 // outlives the scene, whose materials hold its shaders
  std::unique_ptr<host::Scene> scene_;  // null until it is read
  RecipeFiles files_;                   // of the scene
  int width_ = 0, height_ = 0;
};

}  // namespace sorvanix::cli
