// The diffuse light: the Oren-Nayar term over all lights, with the contrasts of light and surface.
#include "module/shaders/surface/lumas_diffuse.h"

#include "module/kit/oren_nayar.h"
#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/shaders/surface/illumination.h"
#include "module/shaders/surface/light_walk.h"

namespace sorvanix {

namespace {

Vector HostDiffuse(const RenderContext& render) noexcept {
  Vector diffuse = {}, unused = {};
  hostIlluminate(&render, diffuse, unused, 1);
  return diffuse;
}

struct RoughSurface {
  OrenNayarFactors factors;
  Vector reflectance;
  ViewedSurface viewed;
  double low, high;  // what the surface's contrast makes 0 and 1

  Vector Reflected(const LightRecord& light, const ArrivingLight& arriving) const noexcept {
    if (light.ambient != 0) return arriving.colour;
    const double cosine = WideDot(viewed.normal, arriving.direction);
    if (light.noDiffuse != 0 || (cosine < 0 && low == 0)) return {};
    // The contrasts bend the cosine in the whole term: deliberate.
    const double bent = LinearStep(low, high, ContrastedCosine(cosine, light.contrast));
    return Product(OrenNayarShare(factors, reflectance, viewed, arriving.direction, bent),
                   arriving.colour);
  }
};

}  // namespace

Vector DiffuseLight(const LumasBlock& block, const LumasSlot& slot,
                    const RenderContext& render) noexcept {
  if (block.orenNayar != IlluminationOrenNayar) return HostDiffuse(render);
  if (render.lightsEnabled == 0) return {};
  const double level = double{block.diffuseLevel} * block.diffuseStrength;
  const RoughSurface surface = {{block.sigma2, block.orenA, block.orenB},
                                Scale(static_cast<float>(level), block.diffuseColour),
                                ViewSurface(slot.surfaceNormal, slot.viewVector),
                                block.diffuseLow,
                                block.diffuseHigh};
  Vector sum = {};
  ForEachArrivingLight(render, surface.viewed.normal,
                       [&](const LightRecord& light, const ArrivingLight& arriving) {
                         AddInPlace(sum, surface.Reflected(light, arriving));
                       });
  return WithoutNegatives(sum);
}

}  // namespace sorvanix
