// The blend modes: each makes a target colour and mixes the base towards it.
//
// Reference for multiply, screen, overlay, hard light, difference and exclusion: W3C, "Compositing
// and Blending Level 1", section 9. Dodge and burn here work on lightness, soft light is a softened
// overlay, and darken and lighten take or leave a colour as a whole.
#include "module/kit/blend.h"

#include <cmath>

#include "module/kit/colour.h"
#include "module/kit/remap.h"
#include "module/kit/vector.h"

namespace sorvanix {
namespace {

// The modes that limit both colours to 0..1 before anything else, one bit each.
constexpr std::uint32_t kClampingModes =
    1u << BlendHue | 1u << BlendSaturation | 1u << BlendColor | 1u << BlendLuminance |
    1u << BlendScreen | 1u << BlendOverlay | 1u << BlendHardLight | 1u << BlendSoftLight |
    1u << BlendDodge | 1u << BlendBurn | 1u << BlendExclusion;

bool ClampsColours(std::int32_t mode) {
  return mode >= BlendNormal && mode <= BlendThreshold && (kClampingModes >> mode & 1u) != 0;
}

Vector Clamped(const Vector& colour) { return ByComponent(Clamp01, colour); }

double Mixed(double base, double target, double f) { return base + f * (target - base); }

Vector MixTo(const Vector& base, const Vector& target, double f) {
  return ByComponent([f](double a, double t) { return Mixed(a, t, f); }, base, target);
}

// Mixes each component towards target(base, blend).
template <typename Target>
Vector MixEach(const Vector& base, const Vector& blend, double f, Target target) {
  return ByComponent([=](double a, double b) { return Mixed(a, target(a, b), f); }, base, blend);
}

// The doubled product of overlay and its kin. The light branch works on inverted colours and
// inverts the mixed value. `soften` shapes the base's part of the product.
template <typename Soften>
double ProductMix(double base, double blend, bool light, double f, Soften soften) {
  if (!light) return Mixed(base, 2 * blend * soften(base), f);
  const double inverted = 1 - base;
  return 1 - Mixed(inverted, 2 * (1 - blend) * soften(inverted), f);
}

double Unchanged(double v) { return v; }

double DrawnToHalf(double v) { return v * 0.5 + 0.25; }

// The base with another lightness. Of the blend colour only the lightness counts.
template <typename Lightness>
Vector WithLightness(const Vector& base, const Vector& blend, Lightness lightness) {
  Hls colour = RgbToHls(base);
  colour.l = static_cast<float>(lightness(double{colour.l}, double{RgbToHls(blend).l}));
  return HlsToRgb(colour);
}

Vector Threshold(const Vector& base, const Vector& blend, double f) {
  const double mean = Mean(blend);
  const double low = mean * f;
  const double width = 1 - f;
  const double high = (1 - width) * mean + width;
  // Deliberate: red alone decides for all three components.
  const auto v = static_cast<float>(SmoothStep(low, high, base.x));
  return {v, v, v};
}

}  // namespace

Vector BlendColors(Vector base, Vector blend, Vector mask, float opacity, std::int32_t mode,
                   std::int32_t useMask) {
  const double f = useMask == 0 ? opacity : Mean(mask) * opacity;
  if (ClampsColours(mode)) {
    base = Clamped(base);
    blend = Clamped(blend);
  }
  switch (mode) {
    case BlendDarken:  // The whole colour is taken or left; equal means leave it.
      return Mean(base) > Mean(blend) ? MixTo(base, blend, f) : base;
    case BlendLighten:
      return Mean(base) < Mean(blend) ? MixTo(base, blend, f) : base;
    case BlendHue: {
      const Hsv a = RgbToHsv(base), b = RgbToHsv(blend);
      return MixTo(base, HsvToRgb({b.h, a.s, a.v}), f);
    }
    case BlendSaturation: {
      const Hls a = RgbToHls(base), b = RgbToHls(blend);
      return MixTo(base, HlsToRgb({a.h, a.l, b.s}), f);
    }
    case BlendColor: {
      const Hsv a = RgbToHsv(base), b = RgbToHsv(blend);
      return MixTo(base, HsvToRgb({b.h, b.s, a.v}), f);
    }
    case BlendLuminance:
      return MixTo(base, WithLightness(base, blend, [](double, double b) { return b; }), f);
    case BlendMultiply:
      return MixEach(base, blend, f, [](double a, double b) { return a * b; });
    case BlendScreen:  // Mixed in inverted space and turned back.
      return ByComponent([f](double a, double b) { return 1 - Mixed(1 - a, (1 - a) * (1 - b), f); },
                         base, blend);
    case BlendOverlay:
      return ByComponent(
          [f](double a, double b) { return ProductMix(a, b, a >= 0.5, f, Unchanged); }, base,
          blend);
    case BlendHardLight:
      return ByComponent(
          [f](double a, double b) { return ProductMix(a, b, b >= 0.5, f, Unchanged); }, base,
          blend);
    case BlendSoftLight:
      return ByComponent(
          [f](double a, double b) { return ProductMix(a, b, a >= 0.5, f, DrawnToHalf); }, base,
          blend);
    case BlendDifference:
      return MixEach(base, blend, f, [](double a, double b) { return std::fabs(a - b); });
    case BlendDodge:
      return MixTo(
          base,
          WithLightness(base, blend, [](double a, double b) { return 1 - (1 - a) * (1 - b); }), f);
    case BlendBurn:
      return MixTo(base, WithLightness(base, blend, [](double a, double b) { return a * (1 - b); }),
                   f);
    case BlendExclusion: {  // One level deep: neither of the two modes calls again.
      const Vector product = BlendColors(base, blend, {}, 1, BlendMultiply, 0);
      const Vector screen = BlendColors(base, blend, {}, 1, BlendScreen, 0);
      return MixTo(base, Sub(screen, product), f);
    }
    case BlendAdd:
      return MixEach(base, blend, f, [](double a, double b) { return Clamp01(a + b); });
    case BlendSubtract:
      return MixEach(base, blend, f, [](double a, double b) { return Clamp01(a - b); });
    case BlendThreshold:
      return Threshold(base, blend, f);
    case BlendNormal:  // by vector operators, which round each step; the default is scalar
      return Add(base, Scale(static_cast<float>(f), Sub(blend, base)));
    default:
      return MixTo(base, blend, f);
  }
}

}  // namespace sorvanix
