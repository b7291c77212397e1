#include "module/shell/registry.h"

#include "module/shaders/generators/noise_2d.h"
#include "module/shaders/surface/buffy.h"

namespace sorvanix {

namespace {

// A shader that is not written yet has its ids reserved here and is not registered.
constexpr RegistryRow StillToWrite(std::int32_t pluginId, std::int32_t nameStringId) {
  return {pluginId, nameStringId, nullptr, nullptr, nullptr};
}

// The order is that of registration. It is not the order of the text ids: Projector and Proximal
// cross, which is deliberate and kept.
constexpr RegistryRow kRows[] = {
    StillToWrite(PluginIdFresnel, 10002),
    {PluginIdBuffy, kLiteralTitle, "sorvaNIX Buffy", FillBuffyRecord, &kBuffyTable},
    StillToWrite(PluginIdNoise3D, 10003),
    StillToWrite(PluginIdTiles, 10004),
    StillToWrite(PluginIdFusion, 10005),
    StillToWrite(PluginIdDistorter, 10006),
    StillToWrite(PluginIdBrightContrast, 10007),
    StillToWrite(PluginIdColorizer, 10008),
    StillToWrite(PluginIdGradient, 10009),
    {PluginIdNoise2D, 10010, nullptr, Fill2DNoiseRecord, &kNoise2DTable},
    StillToWrite(PluginIdFalloff, 10011),
    StillToWrite(PluginIdProjector, 10013),
    StillToWrite(PluginIdProximal, 10012),
    StillToWrite(PluginIdBanj, 10014),
    StillToWrite(PluginIdLumas, 10015),
    StillToWrite(PluginIdHue, 10016),
    StillToWrite(PluginIdPosterizer, 10017),
};
static_assert(std::size(kRows) == 17);

}  // namespace

std::span<const RegistryRow> ShaderRegistry() noexcept { return kRows; }

}  // namespace sorvanix
