// The order in which shaders visit the lights of a render.
#pragma once

#include "module/shell/host_render.h"

namespace sorvanix {

/// Calls visit(light, arriving) for every light that reaches the hit, from the highest index down.
/// `normal` is that of the surface as the caller sees it.
template <class Visit>
void ForEachArrivingLight(const RenderContext& render, const Vector& normal, Visit visit) noexcept {
  for (std::int32_t i = hostLightCount(&render) - 1; i >= 0; --i) {
    const LightRecord* light = hostLightAt(&render, i);
    if (light == nullptr) continue;
    const ArrivingLight arriving = hostLightSample(&render, light, render.hitPoint, normal,
                                                   render.lightParamB, render.lightParamA);
    if (arriving.arrives) visit(*light, arriving);
  }
}

}  // namespace sorvanix
