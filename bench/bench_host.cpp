#include "bench/bench_host.h"

#include "host/channels/channel_link.h"
#include "host/host.h"
#include "host/noise/noise_services.h"
#include "host/scene/scene_services.h"

namespace sorvanix::bench {

namespace {

constexpr std::int32_t kLights = 3;
constexpr LightRecord kLight = {};

void InstallLights(RenderTable& table) {
  table.illuminate = [](const RenderContext*, Vector* diffuse, Vector*, float) noexcept {
    diffuse->x += 1;
  };
  table.lightCount = [](const RenderContext*) noexcept { return kLights; };
  table.lightAt = [](const RenderContext*, std::int32_t) noexcept { return &kLight; };
  table.lightSample = [](const RenderContext*, const LightRecord*, Vector* colour,
                         Vector* direction, const Vector*, const Vector*, std::int32_t,
                         std::int32_t) noexcept {
    *colour = {1, 1, 1};
    *direction = {0.6f, 0, 0.8f};
    return std::int32_t{1};
  };
}

void InstallProjection(RenderTable& table) {
  table.projectTexture = [](const TextureTag*, const RenderContext*, const Vector* point,
                            const UvwRecord*, Vector* uvw) noexcept {
    *uvw = *point;
    return std::int32_t{1};
  };
}

}  // namespace

host::Module& LoadedModule() {
  static host::Host host({.services = {[](host::HostTables& tables) {
                            host::InstallNoiseServices(tables.render);
                            host::InstallChannelLinks(tables.channel, tables.stream);
                            host::InstallScenes(tables);
                            InstallLights(tables.render);
                            InstallProjection(tables.render);
                          }}});
  static host::Module module = host::Module::Load(host, SORVANIX_MODULE_PATH).value();
  static host::LinkedShaders linked(module.Shaders());
  return module;
}

}  // namespace sorvanix::bench
