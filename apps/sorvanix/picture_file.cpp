#include "apps/sorvanix/picture_file.h"

#include <fmt/format.h>

#include "apps/sorvanix/program.h"
#include "host/bake/temporary_file.h"
#include "host/images/image_info.h"
#include "host/services/filenames.h"
#include "host/services/machine_memory.h"

namespace sorvanix::cli {

tl::expected<void, std::string> ChooseFormat(PlannedPicture& picture,
                                             const PictureOptions& options) {
  const auto format = host::ChooseImageFormat(picture.file, options.depth);
  if (!format) return tl::unexpected(fmt::format("--output: {}", format.error()));
  picture.format = *format;
  return {};
}

tl::expected<void, std::string> CheckPicture(const PlannedPicture& picture, int width, int height,
                                             const host::InputLog& inputs) {
  const auto refuse = [&picture](const std::string& why) {
    return tl::unexpected(fmt::format("--output: {}: {}", host::Utf8FromPath(picture.file), why));
  };
  if (inputs.Holds(picture.file)) return refuse("this is a file that the picture is made from");
  const int longest = host::LongestSide(picture.format.file);
  if (width > longest || height > longest) {
    return refuse(fmt::format("files of this format hold at most {} pixels along a side", longest));
  }
  const double needed = host::WrittenBytes(width, height, picture.format.depth);
  const double machine = host::MachineMemory();
  constexpr double kGigabyte = 1e9;
  if (needed <= machine) return {};
  return refuse(fmt::format("a picture of {}x{} takes {:.1f} GB of memory, this machine has {:.1f}",
                            width, height, needed / kGigabyte, machine / kGigabyte));
}

tl::expected<void, Failure> CheckPlace(const PlannedPicture& picture) {
  const auto probe = host::TemporaryFile::Create(picture.file);
  if (!probe) return tl::unexpected(Failure{ExitCode::FileTrouble, probe.error()});
  return {};
}

tl::expected<std::optional<std::string>, Failure> WritePicture(const PlannedPicture& picture,
                                                               const host::Image& image,
                                                               const host::Provenance& provenance,
                                                               const std::atomic<bool>& cancelled) {
  auto file = host::TemporaryFile::Create(picture.file);
  if (!file) return tl::unexpected(Failure{ExitCode::FileTrouble, file.error()});
  const auto hash = host::WriteImage(file->Path(), image, picture.format, provenance);
  if (!hash) {
    return tl::unexpected(Failure{
        ExitCode::FileTrouble,
        fmt::format("{}: cannot be written: {}", host::Utf8FromPath(picture.file), hash.error())});
  }
  if (cancelled.load(std::memory_order_relaxed)) return std::nullopt;
  if (const auto committed = file->Commit(); !committed) {
    return tl::unexpected(Failure{ExitCode::FileTrouble, committed.error()});
  }
  return *hash;
}

bool IsFinished(const PlannedPicture& picture, const std::string& recipe) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(picture.file, error)) return false;
  const auto info = host::ReadImageInfo(picture.file);
  return info && info->program == kProgramName && info->recipe == recipe && info->Intact() &&
         (!info->recordedHash.empty() || !KeepsPixels(picture.format.file)) &&
         info->depth == NameOf(picture.format.depth);
}

}  // namespace sorvanix::cli
