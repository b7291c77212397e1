// The seventeen rows.
#include "module/shell/registry.h"

#include "module/shaders/filters/bright_contrast.h"
#include "module/shaders/filters/colorizer.h"
#include "module/shaders/filters/distorter.h"
#include "module/shaders/filters/fusion.h"
#include "module/shaders/filters/hue.h"
#include "module/shaders/filters/posterizer.h"
#include "module/shaders/generators/noise_2d.h"
#include "module/shaders/surface/banj.h"
#include "module/shaders/surface/buffy.h"
#include "module/shaders/surface/falloff.h"
#include "module/shaders/surface/fresnel.h"
#include "module/shaders/surface/lumas.h"
#include "module/shaders/surface/projector.h"
#include "module/shaders/surface/proximal.h"

namespace sorvanix {

namespace {

// A shader that is not written yet has its ids reserved here and is not registered.
constexpr RegistryRow StillToWrite(std::int32_t pluginId, Nesting nesting,
                                   std::int32_t nameStringId) {
  return {pluginId, nesting, nameStringId, nullptr, nullptr, nullptr};
}

// The order is that of registration. It is not the order of the text ids: Projector and Proximal
// cross, which is deliberate and kept. Banj can be marked as nested, though no filter hands it a
// point.
constexpr RegistryRow kRows[] = {
    {PluginIdFresnel, Nesting::None, 10002, nullptr, FillFresnelRecord, &kFresnelTable},
    {PluginIdBuffy, Nesting::None, kLiteralTitle, "sorvaNIX Buffy", FillBuffyRecord, &kBuffyTable},
    StillToWrite(PluginIdNoise3D, Nesting::Aware, 10003),
    StillToWrite(PluginIdTiles, Nesting::Aware, 10004),
    {PluginIdFusion, Nesting::Aware, 10005, nullptr, FillFusionRecord, &kFusionTable},
    {PluginIdDistorter, Nesting::Aware, 10006, nullptr, FillDistorterRecord, &kDistorterTable},
    {PluginIdBrightContrast, Nesting::Aware, 10007, nullptr, FillBrightContrastRecord,
     &kBrightContrastTable},
    {PluginIdColorizer, Nesting::Aware, 10008, nullptr, FillColorizerRecord, &kColorizerTable},
    StillToWrite(PluginIdGradient, Nesting::Aware, 10009),
    {PluginIdNoise2D, Nesting::Aware, 10010, nullptr, Fill2DNoiseRecord, &kNoise2DTable},
    {PluginIdFalloff, Nesting::Aware, 10011, nullptr, FillFalloffRecord, &kFalloffTable},
    {PluginIdProjector, Nesting::Aware, 10013, nullptr, FillProjectorRecord, &kProjectorTable},
    {PluginIdProximal, Nesting::Aware, 10012, nullptr, FillProximalRecord, &kProximalTable},
    {PluginIdBanj, Nesting::Marked, 10014, nullptr, FillBanjRecord, &kBanjTable},
    {PluginIdLumas, Nesting::Aware, 10015, nullptr, FillLumasRecord, &kLumasTable},
    {PluginIdHue, Nesting::Aware, 10016, nullptr, FillHueRecord, &kHueTable},
    {PluginIdPosterizer, Nesting::Aware, 10017, nullptr, FillPosterizerRecord, &kPosterizerTable},
};
static_assert(std::size(kRows) == 17);

}  // namespace

std::span<const RegistryRow> ShaderRegistry() noexcept { return kRows; }

}  // namespace sorvanix
