// Buffy: its table without fields, and the one test of a ray against a face.
#include "module/shaders/surface/buffy.h"

#include "module/shaders/surface/along_ray.h"

namespace sorvanix {

constexpr ShaderTable kBuffyTable = {
    .pluginId = PluginIdBuffy,
    .name = "Buffy",
    .category = ShaderCategory::Surface,
    .summary = "A two-sidedness mask: white on the front of a surface, black on its back.",
};

namespace {

constexpr Vector kWhite = {1, 1, 1};
constexpr Vector kBlack = {0, 0, 0};

// A ray along the face meets its front.
bool MeetsBack(const RenderContext& render) noexcept {
  return AlongRay(*render.ray, render.faceNormal) > 0;
}

void Output(Vector* result, ShaderInstance*, ChannelSample* sample) noexcept {
  const RenderContext* render = sample->render;
  const bool hasRay = render != nullptr && render->ray != nullptr;
  *result = hasRay && MeetsBack(*render) ? kBlack : kWhite;
}

}  // namespace

void FillBuffyRecord(ShaderRecord* record) noexcept { record->Output = Output; }

}  // namespace sorvanix
