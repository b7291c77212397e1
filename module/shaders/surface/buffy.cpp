// Buffy: its table without fields, and the one test of a ray against a face.
#include "module/shaders/surface/buffy.h"

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

// True when the ray runs along the face normal, and so meets the back. A ray along the face does
// not.
bool MeetsBack(const RenderContext& render) noexcept {
  const double* direction = render.ray->direction;
  const Vector& normal = render.faceNormal;
  const double facing = direction[0] * normal.x + direction[1] * normal.y + direction[2] * normal.z;
  return facing > 0;
}

void Output(Vector* result, ShaderInstance*, ChannelSample* sample) noexcept {
  const RenderContext* render = sample->render;
  const bool hasRay = render != nullptr && render->ray != nullptr;
  *result = hasRay && MeetsBack(*render) ? kBlack : kWhite;
}

}  // namespace

void FillBuffyRecord(ShaderRecord* record) noexcept { record->Output = Output; }

}  // namespace sorvanix
