// Carries out a planned bake: materials in, image files out, one after the other.
#pragma once

#include <atomic>
#include <filesystem>
#include <string>

#include "apps/sorvanix/bake_options.h"
#include "apps/sorvanix/bake_picture.h"
#include "apps/sorvanix/bake_plan.h"
#include "apps/sorvanix/failure_tally.h"
#include "apps/sorvanix/host_setup.h"
#include "apps/sorvanix/material_input.h"
#include "apps/sorvanix/progress.h"
#include "host/channels/material.h"
#include "host/services/input_log.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::cli {

class BakeRun {
 public:
  /// All that it is given must outlive it.
  BakeRun(const BakeOptions& options, const BakedMesh& mesh,
          const std::filesystem::path& modulePath, const host::ShaderCatalogue& catalogue,
          const host::InputLog& inputs, const std::atomic<bool>& cancelled);

  /// Reads all materials, checks the plan against what they are made of, bakes what can be baked,
  /// and tells about each output and each failure.
  ExitCode Run(const BakePlan& plan);

 private:
  bool Cancelled() const { return cancelled_.load(std::memory_order_relaxed); }
  tl::expected<void, std::string> Check(const BakePlan& plan) const;
  void BakeMaterial(const std::string& file, const MaterialInput& input,
                    const std::vector<PlannedPicture>& outputs);
  tl::expected<void, Failure> BakeOutput(const std::string& materialFile,
                                         const host::MaterialNode& material,
                                         const PlannedPicture& output);
  void Succeed(const std::string& materialFile, const PlannedPicture& output,
               const std::string& hash);
  void Fail(const std::string& materialFile, const Failure& failure);

  const BakeOptions& options_;
  const BakedMesh& mesh_;
  const std::filesystem::path& modulePath_;
  const host::ShaderCatalogue& catalogue_;
  const host::InputLog& inputs_;
  const std::atomic<bool>& cancelled_;
  Progress progress_;
  FailureTally tally_;
  host::Json::Array report_;
  LoadedModule module_;  // outlives the shaders
};

}  // namespace sorvanix::cli
