// sorvanix edit: plays a list of events in the dialog of a material's shader.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <fstream>
#include <memory>
#include <system_error>

#include "apps/sorvanix/cancellation.h"
#include "apps/sorvanix/edit_report.h"
#include "apps/sorvanix/edit_run.h"
#include "apps/sorvanix/material_input.h"
#include "apps/sorvanix/module_place.h"
#include "apps/sorvanix/picture_file.h"
#include "apps/sorvanix/program.h"
#include "apps/sorvanix/report.h"
#include "apps/sorvanix/verb.h"
#include "host/bake/temporary_file.h"
#include "host/services/filenames.h"

namespace sorvanix::cli {

namespace {

using host::Json;
using Written = tl::expected<void, Failure>;

host::Image ImageOf(const host::Bitmap& bitmap) {
  constexpr float kLargest = 255;
  host::Image image(bitmap.Width(), bitmap.Height());
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      const host::Bitmap::Pixel pixel = bitmap.At(x, y);
      const std::size_t index = image.IndexOf(x, y);
      for (std::size_t i = 0; i < 3; ++i) image.rgb[index + i] = pixel[i] / kLargest;
    }
  }
  return image;
}

Written WritePictures(const Edited& edited, const std::atomic<bool>& cancelled) {
  for (const host::SavedPicture& saved : edited.pictures) {
    const PlannedPicture picture = {
        host::PathFromUtf8(saved.file), {host::FileFormat::Png, host::PixelDepth::Eight}, {}, {}};
    const auto hash = WritePicture(picture, ImageOf(saved.picture),
                                   {.program = kProgramName, .recipe = {}}, cancelled);
    if (!hash) return tl::unexpected(hash.error());
  }
  return {};
}

Written WriteMaterial(const std::string& name, const std::string& text) {
  const auto fail = [](const std::string& why) {
    return tl::unexpected(Failure{ExitCode::FileTrouble, why});
  };
  auto file = host::TemporaryFile::Create(host::PathFromUtf8(name));
  if (!file) return fail(file.error());
  std::ofstream stream(file->Path(), std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) return fail(fmt::format("{}: cannot be written", name));
  if (const auto committed = file->Commit(); !committed) return fail(committed.error());
  return {};
}

Written Write(const EditOptions& options, const Edited& edited,
              const std::atomic<bool>& cancelled) {
  if (const auto written = WritePictures(edited, cancelled); !written) return written;
  const bool isKept = edited.confirmed && edited.failures.empty();
  const std::string text = host::WriteJson(edited.material) + '\n';
  if (isKept && !options.output.empty()) {
    if (const auto written = WriteMaterial(options.output, text); !written) return written;
  }
  if (options.json) {
    Print(host::WriteJson(ReportOf(options, edited)) + '\n');
  } else if (isKept && options.output.empty()) {
    Print(text);
  } else if (isKept && !options.quiet) {
    Print(options.output + '\n');
  }
  return {};
}

bool AreSameFile(const std::string& first, const std::string& second) {
  std::error_code error;
  return std::filesystem::equivalent(host::PathFromUtf8(first), host::PathFromUtf8(second), error);
}

ExitCode Edit(const EditOptions& options) {
  const auto fail = [](ExitCode code, const std::string& message) {
    Complain(message);
    return code;
  };
  if (!options.output.empty() && AreSameFile(options.output, options.script)) {
    return fail(ExitCode::Usage, "--output: this is the list of events");
  }
  const std::atomic<bool>& cancelled = WatchSignals();
  const auto modulePath = FindModule(options.module);
  const auto catalogue = modulePath.and_then(LoadCatalogue);
  if (!catalogue) return fail(ExitCode::NoModule, catalogue.error());
  const auto edited = RunEdit(options, *modulePath, *catalogue, cancelled);
  if (cancelled) return ExitCode::Cancelled;
  if (!edited) return fail(edited.error().code, edited.error().message);
  if (!options.quiet) {
    for (const std::string& warning : edited->warnings) Warn(warning);
  }
  for (const std::string& failure : edited->failures) Complain(failure);
  if (const auto written = Write(options, *edited, cancelled); !written) {
    return fail(written.error().code, written.error().message);
  }
  if (!edited->failures.empty()) return ExitCode::SomeFailed;
  if (!edited->confirmed && !options.quiet)
    Warn("the dialog was cancelled: no material is written");
  return ExitCode::Done;
}

}  // namespace

VerbAction DeclareEdit(CLI::App& app) {
  const auto options = std::make_shared<EditOptions>();
  app.add_option("material", options->material, "A material file")->required();
  app.add_option("--script", options->script, "A JSON list of events: what a user would do")
      ->required()
      ->type_name("EVENTS");
  app.add_option("-o,--output", options->output,
                 "The changed material; may be the material itself; default the standard output")
      ->type_name("FILE");
  app.add_flag("--json", options->json,
               "Print a JSON object with every change that a gadget showed");
  app.add_flag("--quiet", options->quiet, "Print errors only");
  AddImagesOption(app, options->imageFolders);
  AddModuleOption(app, options->module);
  return [options] { return Edit(*options); };
}

}  // namespace sorvanix::cli
