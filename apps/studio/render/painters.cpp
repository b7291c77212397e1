#include "apps/studio/render/painters.h"

#include <algorithm>
#include <utility>

#include "apps/studio/document/scene_edit.h"
#include "host/bake/flat_bake.h"
#include "host/channels/channel_link.h"
#include "host/render/renderer.h"
#include "host/scene/material_links.h"
#include "host/scene/scene_file.h"

namespace sorvanix::studio {

namespace {

using ScenePointer = tl::expected<std::unique_ptr<host::Scene>, std::string>;

ScenePointer ReadLinkedScene(const SceneRequest& request) {
  host::SceneReading reading =
      host::ReadScene(request.text, request.file, {.catalogue = request.catalogue});
  if (reading.scene == nullptr) return tl::unexpected(FirstError(reading));
  // Of what shaders stored, and no reason to show nothing: the picture is the command line's.
  [[maybe_unused]] const auto doubtful = host::LinkMaterials(*reading.scene);
  return std::move(reading.scene);
}

int Divided(int side, int divisor) { return std::max(1, side / divisor); }

class ScenePainter : public Painter {
 public:
  ScenePainter(SceneRequest request, std::unique_ptr<host::Scene> scene)
      : request_(std::move(request)), scene_(std::move(scene)) {}

  tl::expected<std::optional<host::Image>, std::string> Paint(
      const Pass& pass, const host::TaskOptions& options) override {
    auto picture = host::RenderPicture(*scene_,
                                       {.width = Divided(request_.width, pass.divisor),
                                        .height = Divided(request_.height, pass.divisor),
                                        .samples = pass.samples,
                                        .time = request_.time},
                                       options);
    if (!picture) return tl::unexpected(picture.error());
    if (!picture->problems.empty()) note_ = picture->problems.front();
    return std::move(picture->image);
  }
  std::string Note() const override { return note_; }

 private:
  SceneRequest request_;
  std::unique_ptr<host::Scene> scene_;
  std::string note_;
};

class FlatPainter : public Painter {
 public:
  FlatPainter(SceneRequest request, std::size_t channel, std::unique_ptr<host::Scene> scene)
      : request_(std::move(request)), scene_(std::move(scene)) {
    link_ = &host::LinkOf(scene_->materials.front()->channels[channel]);
    if (!link_->IsEmpty()) isReady_ = link_->InitRender({});
  }
  ~FlatPainter() override {
    if (isReady_) link_->FreeRender();
  }

  // Without a graph a channel is white.
  tl::expected<std::optional<host::Image>, std::string> Paint(
      const Pass& pass, const host::TaskOptions& options) override {
    if (!link_->IsEmpty() && !isReady_) {
      return tl::unexpected(std::string("what fills this channel needs a surface"));
    }
    const auto colourAt = [this](ChannelSample& sample) {
      if (!isReady_) return Vector{1, 1, 1};
      return link_->Sample(sample);
    };
    return host::BakeFlat(colourAt,
                          {.width = Divided(request_.width, pass.divisor),
                           .height = Divided(request_.height, pass.divisor),
                           .samples = pass.samples,
                           .time = request_.time},
                          options);
  }

 private:
  SceneRequest request_;
  std::unique_ptr<host::Scene> scene_;
  host::Link* link_ = nullptr;
  bool isReady_ = false;
};

}  // namespace

PictureJob JobFor(PictureRequest request, int samples) {
  const bool isDraft = request.isDraft;
  auto prepare = [request = std::move(request)]() -> PainterPointer {
    auto scene = ReadLinkedScene(request.scene);
    if (!scene) return tl::unexpected(scene.error());
    if (!request.flatChannel) {
      return std::make_unique<ScenePainter>(request.scene, std::move(*scene));
    }
    if ((*scene)->materials.empty()) return tl::unexpected(std::string("there is no material"));
    return std::make_unique<FlatPainter>(request.scene, *request.flatChannel, std::move(*scene));
  };
  return {.prepare = std::move(prepare),
          .passes = isDraft ? std::vector<Pass>{{2, 1}} : CoarseToFine(samples)};
}

}  // namespace sorvanix::studio
