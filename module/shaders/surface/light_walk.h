// The order in which shaders visit the lights of a render.
#pragma once

#include "module/shell/host_render.h"

namespace sorvanix {

/// Calls visit(light) for every light, from the highest index down.
template <class Visit>
void ForEachLight(const RenderContext& render, Visit visit) noexcept {
  for (std::int32_t i = hostLightCount(&render) - 1; i >= 0; --i) {
    if (const LightRecord* light = hostLightAt(&render, i)) visit(*light);
  }
}

/// Calls visit(light, arriving) for every light that reaches the hit, in the same order. `normal`
/// is that of the surface as the caller sees it.
template <class Visit>
void ForEachArrivingLight(const RenderContext& render, const Vector& normal, Visit visit) noexcept {
  ForEachLight(render, [&](const LightRecord& light) {
    const ArrivingLight arriving = hostLightSample(&render, &light, render.hitPoint, normal,
                                                   render.lightParamB, render.lightParamA);
    if (arriving.arrives) visit(light, arriving);
  });
}

}  // namespace sorvanix
