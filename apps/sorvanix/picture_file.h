// Pictures on their way into files.
#pragma once

#include <atomic>
#include <filesystem>
#include <optional>
#include <string>
#include <tl/expected.hpp>

#include "apps/sorvanix/failure.h"
#include "apps/sorvanix/picture_options.h"
#include "host/bake/uv_chart.h"
#include "host/images/image_writer.h"
#include "host/services/input_log.h"

namespace sorvanix::cli {

struct PlannedPicture {
  std::filesystem::path file;
  host::ImageFormat format;
  FrameTime at;
  std::optional<host::UvTile> tile;  // of several; none for the only one
};

/// Chooses the format for the planned file. The error, of one line, is one of usage.
tl::expected<void, std::string> ChooseFormat(PlannedPicture& picture,
                                             const PictureOptions& options);

/// Looks before the work for what would end it badly: a picture that would replace a file that it
/// is made from, that its format cannot hold, or that would not fit the memory, which would end the
/// program without a word. The error, of one line, is one of usage.
tl::expected<void, std::string> CheckPicture(const PlannedPicture& picture, int width, int height,
                                             const host::InputLog& inputs);

/// Looks before the work whether the picture's folder can be written, which leaves nothing there.
tl::expected<void, Failure> CheckPlace(const PlannedPicture& picture);

/// Writes the file, whole or not at all, and answers its pixel hash; nothing when it was cancelled
/// before the file had its name.
tl::expected<std::optional<std::string>, Failure> WritePicture(const PlannedPicture& picture,
                                                               const host::Image& image,
                                                               const host::Provenance& provenance,
                                                               const std::atomic<bool>& cancelled);

/// Whether the file is there already: whole, of the format asked for, and made by this recipe.
/// Formats that are too small for a recipe are never finished.
bool IsFinished(const PlannedPicture& picture, const std::string& recipe);

}  // namespace sorvanix::cli
