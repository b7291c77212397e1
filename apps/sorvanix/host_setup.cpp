#include "apps/sorvanix/host_setup.h"

#include <utility>

#include "host/dialogs/dialog_tables.h"
#include "host/noise/noise_services.h"
#include "host/render/document_render.h"
#include "host/render/matrix.h"
#include "host/render/shading_services.h"
#include "host/scene/document_tables.h"
#include "host/scene/object_table.h"

namespace sorvanix::cli {

namespace {

void InstallServices(host::HostTables& tables) {
  host::InstallNoiseServices(tables.render);
  host::InstallShadingServices(tables.render);
  host::InstallMatrices(tables.matrix);
  host::InstallChannelLinks(tables.channel, tables.stream);
  host::InstallBitmaps(tables.bitmap);
  host::InstallObjects(tables.object);
  host::InstallMaterials(tables.material);
  host::InstallDocuments(tables.document, tables.documentList);
  host::InstallDocumentRender(tables);
  host::InstallDialogs(tables);
}

}  // namespace

tl::expected<void, Failure> LoadedModule::Load(const std::filesystem::path& file, bool afresh) {
  if (afresh) {
    links_.reset();
    module_.reset();
  }
  if (module_) return {};
  if (!host_) host_.emplace(host::HostOptions{.services = {InstallServices}});
  auto module = host::Module::Load(*host_, file);
  if (!module) return tl::unexpected(Failure{ExitCode::NoModule, module.error()});
  module_.emplace(std::move(*module));
  links_.emplace(module_->Shaders());
  return {};
}

}  // namespace sorvanix::cli
