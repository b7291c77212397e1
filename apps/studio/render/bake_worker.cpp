#include "apps/studio/render/bake_worker.h"

#include <QMetaObject>
#include <exception>
#include <utility>
#include <variant>

#include "apps/sorvanix/bake_recipe.h"
#include "apps/sorvanix/program.h"
#include "apps/studio/document/scene_edit.h"
#include "apps/studio/render/picture_worker.h"
#include "host/scene/material_links.h"
#include "host/scene/scene_file.h"

namespace sorvanix::studio {

namespace {

// Why the picture cannot be made, before the work; or an empty text.
std::string Check(cli::PlannedPicture& picture, cli::BakeOptions& options) {
  if (const auto settled = cli::SettleBakeOptions(options); !settled) return settled.error();
  if (const auto chosen = cli::ChooseFormat(picture, options.picture); !chosen) {
    return chosen.error();
  }
  const host::InputLog inputs;
  const auto checked = cli::CheckPicture(picture, options.Width(), options.Height(), inputs);
  if (!checked) return checked.error();
  const auto place = cli::CheckPlace(picture);
  return place ? std::string() : place.error().message;
}

}  // namespace

BakeWorker::~BakeWorker() {
  Cancel();
  if (thread_.joinable()) thread_.join();
}

void BakeWorker::Begin(BakeRequest request) {
  cancelled_ = false;
  thread_ = std::thread([this, request = std::move(request)] {
    GiveWayToWindows();
    std::string error;
    try {
      error = Bake(request);
    } catch (const std::exception& exception) {  // memory is short
      error = exception.what();
    }
    QMetaObject::invokeMethod(
        this,
        [this, error] {
          thread_.join();
          Q_EMIT Ended(QString::fromStdString(error), cancelled_);
        },
        Qt::QueuedConnection);
  });
}

std::string BakeWorker::Bake(const BakeRequest& request) {
  cli::BakeOptions options = request.options;
  cli::PlannedPicture picture = {request.file, {}, {std::nullopt, options.picture.time}, {}};
  if (std::string why = Check(picture, options); !why.empty()) return why;

  const auto reading =
      host::ReadScene(request.sceneText, request.sceneFile, {.catalogue = &catalogue_});
  if (reading.scene == nullptr) return FirstError(reading);
  auto& channel =
      reading.scene->materials.front()->channels[static_cast<std::size_t>(options.channel)];
  const auto* graph = std::get_if<host::MaterialNode>(&channel.graph);
  if (graph == nullptr) return "there is no shader in this channel";
  // With what the shader stored, as the views show it.
  const auto problems = host::LinkMaterials(*reading.scene);
  host::Shader* const shader = host::LinkOf(channel).HeldShader();
  if (shader == nullptr) return problems.empty() ? "its shader cannot be had" : problems.front();

  const cli::BakedMesh mesh;
  const auto baked = cli::BakePicture(
      *shader, options, mesh, picture,
      {.threads = options.picture.threads,
       .cancelled = &cancelled_,
       .progress = [this](int done, int total) { Q_EMIT Progressed(done, total); }});
  if (!baked) return baked.error().message;
  if (!baked->image) return {};  // cancelled
  const auto written = cli::WritePicture(picture, *baked->image,
                                         {.program = cli::kProgramName,
                                          .recipe = cli::RecipeOf(*graph, options, mesh, picture),
                                          .isColour = !options.normal},
                                         cancelled_);
  return written ? std::string() : written.error().message;
}

}  // namespace sorvanix::studio
