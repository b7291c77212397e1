// sorvanix convert: a document from one of its forms into the other.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <memory>

#include "apps/sorvanix/report.h"
#include "apps/sorvanix/verb.h"
#include "host/channels/material_file.h"
#include "host/scene/document_file.h"
#include "host/scene/scene_format.h"
#include "host/services/filenames.h"
#include "host/services/text_position.h"

namespace sorvanix::cli {

namespace {

struct ConvertOptions {
  std::string in, out;
};

bool IsScene(const host::Json& document) {
  const host::Json* format = document.Find("format");
  const auto* name = format == nullptr ? nullptr : std::get_if<std::string>(&format->value);
  return name != nullptr && *name == host::kSceneFormat;
}

// The values are taken as they stand, whatever program they are of: nothing is lost that only a
// later one knows. sorvanix validate tells what is wrong with them.
ExitCode Convert(const ConvertOptions& options) {
  const auto complain = [&](const std::string& problem, ExitCode code) {
    Complain(fmt::format("{}: {}", options.in, problem));
    return code;
  };
  const auto bytes = host::ReadMaterialText(host::PathFromUtf8(options.in));
  if (!bytes) return complain(bytes.error(), ExitCode::FileTrouble);
  const auto text = host::TextOfDocument(*bytes);
  if (!text) return complain(text.error(), ExitCode::InvalidInput);
  const auto document = host::ParseJson(*text);
  if (!document) {
    const host::TextPosition at = host::PositionIn(*text, document.error().offset);
    return complain(fmt::format("{}:{}: {}", at.line, at.column, document.error().message),
                    ExitCode::InvalidInput);
  }
  if (!IsScene(*document)) return complain("this is no scene", ExitCode::InvalidInput);
  if (const auto written = host::WriteDocument(*document, host::PathFromUtf8(options.out));
      !written) {
    Complain(written.error());
    return ExitCode::FileTrouble;
  }
  return ExitCode::Done;
}

}  // namespace

VerbAction DeclareConvert(CLI::App& app) {
  const auto options = std::make_shared<ConvertOptions>();
  app.add_option("in", options->in, "A scene file in either form")->required();
  app.add_option("out", options->out,
                 fmt::format("The file to write: in the binary form when its extension is {}, else "
                             "as JSON. One that is there is replaced",
                             host::kBinaryExtension))
      ->required();
  return [options] { return Convert(*options); };
}

}  // namespace sorvanix::cli
