// Carries out a planned bake: materials in, image files out, one after the other.
#pragma once

#include <atomic>
#include <filesystem>
#include <optional>
#include <string>

#include "apps/sorvanix/bake_options.h"
#include "apps/sorvanix/bake_plan.h"
#include "apps/sorvanix/failure_tally.h"
#include "apps/sorvanix/progress.h"
#include "host/channels/channel_link.h"
#include "host/channels/material.h"
#include "host/loader/module.h"

namespace sorvanix::cli {

class BakeRun {
 public:
  /// All that it is given must outlive it.
  BakeRun(const BakeOptions& options, const std::filesystem::path& modulePath,
          const host::ShaderCatalogue& catalogue, const std::atomic<bool>& cancelled);

  /// Bakes what can be baked, and tells about each output and each failure.
  ExitCode Run(const BakePlan& plan);

 private:
  // Why something was not made, and the exit code that it leads to.
  struct Failure {
    ExitCode code;
    std::string message;
  };

  bool Cancelled() const { return cancelled_.load(std::memory_order_relaxed); }
  void BakeMaterial(const std::string& file, const std::vector<PlannedOutput>& outputs);
  std::optional<Failure> LoadModule(bool afresh);
  std::optional<Failure> BakeOutput(const std::string& materialFile,
                                    const host::MaterialNode& material,
                                    const PlannedOutput& output);
  std::optional<Failure> WriteOutput(const std::string& materialFile,
                                     const host::MaterialNode& material, const host::Image& image,
                                     const host::FlatBakeSettings& settings,
                                     const PlannedOutput& output);
  void Succeed(const std::string& materialFile, const PlannedOutput& output,
               const host::FlatBakeSettings& settings, const std::string& hash);
  void Fail(const std::string& materialFile, const Failure& failure);

  const BakeOptions& options_;
  const std::filesystem::path& modulePath_;
  const host::ShaderCatalogue& catalogue_;
  const std::atomic<bool>& cancelled_;
  Progress progress_;
  FailureTally tally_;
  host::Json::Array report_;
  std::optional<host::Host> host_;      // outlives the module
  std::optional<host::Module> module_;  // outlives the shaders
  std::optional<host::LinkedShaders> links_;
};

}  // namespace sorvanix::cli
