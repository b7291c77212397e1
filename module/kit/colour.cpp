// The colour conversions: largest component, smallest component, and the sector of the hue.
#include "module/kit/colour.h"

#include <algorithm>
#include <cmath>

namespace sorvanix {
namespace {

// 1/60 as a float: a hue of exactly 360 degrees comes out just above sector 6, not in sector 5.
constexpr float kSectorsPerDegree = 1.0f / 60.0f;

// Below this saturation the Vector family sees grey.
constexpr double kWeakSaturation = 0.001;

struct Range {
  double max, min;
};

Range RangeOf(const Vector& c) {
  return {std::max(std::max(c.x, c.y), c.z), std::min(std::min(c.x, c.y), c.z)};
}

// The hue in sixths of a turn, from -1 to 5. NaN when all components are equal.
double HueSixths(const Vector& c, const Range& range) {
  const double delta = range.max - range.min;
  if (c.x == range.max) return (double{c.y} - c.z) / delta;
  if (c.y == range.max) return (double{c.z} - c.x) / delta + 2;
  return (double{c.x} - c.y) / delta + 4;
}

float Degrees(double sixths) {
  const double degrees = sixths * 60;
  return static_cast<float>(degrees < 0 ? degrees + 360 : degrees);
}

// The colour at a hue in sixths of a turn; `beyond` is the sector that stands in for hues outside
// 0..6, and any number but 0 to 5 makes them black.
Vector HexconeColour(double sixths, double saturation, float value, int beyond) {
  const double base = std::floor(sixths);
  const double f = sixths - base;
  const auto p = static_cast<float>((1 - saturation) * value);
  const auto q = static_cast<float>((1 - f * saturation) * value);
  const auto t = static_cast<float>((1 - (1 - f) * saturation) * value);
  switch (base >= 0 && base <= 5 ? static_cast<int>(base) : beyond) {
    case 0:
      return {value, t, p};
    case 1:
      return {q, value, p};
    case 2:
      return {p, value, t};
    case 3:
      return {p, q, value};
    case 4:
      return {t, p, value};
    case 5:
      return {value, p, q};
    default:
      return {0, 0, 0};
  }
}

}  // namespace

Hsv RgbToHsv(const Vector& colour) {
  const Range range = RangeOf(colour);
  const auto value = static_cast<float>(range.max);
  if (range.max == 0) return {kNoHue, 0, value};
  // No test for other greys: 0 / 0 is the hue that they do not have.
  return {Degrees(HueSixths(colour, range)),
          static_cast<float>((range.max - range.min) / range.max), value};
}

Vector HsvToRgb(const Hsv& colour) {
  // NaN needs a test of its own: it is unequal to kNoHue, and to itself.
  if (colour.s == 0 || colour.h == kNoHue || std::isnan(colour.h)) {
    return {colour.v, colour.v, colour.v};
  }
  return HexconeColour(double{colour.h} * kSectorsPerDegree, colour.s, colour.v, 5);
}

Hls RgbToHls(const Vector& colour) {
  const Range range = RangeOf(colour);
  const double lightness = (range.min + range.max) * 0.5;
  const auto l = static_cast<float>(lightness);
  if (range.max == range.min) return {kNoHue, l, 0};

  const double delta = range.max - range.min;
  const double span = lightness > 0.5 ? 2 - range.max - range.min : range.min + range.max;
  // Deliberate: where green leads, the 2 is added before the division, unlike in the other rows,
  // so that the hue runs away as delta falls below 1. Saved pictures are made of these hues.
  const bool greenLeads = colour.x != range.max && colour.y == range.max;
  const double sixths = greenLeads ? ((double{colour.z} - colour.x) + 2) / delta  //
                                   : HueSixths(colour, range);
  return {Degrees(sixths), l, static_cast<float>(delta / span)};
}

float HlsChannel(double m1, double m2, double h) {
  if (h > 360) {
    h -= 360;
  } else if (h < 0) {
    h += 360;
  }
  if (h < 60) return static_cast<float>((m2 - m1) * h * kSectorsPerDegree + m1);
  if (h < 180) return static_cast<float>(m2);
  if (h < 240) return static_cast<float>((240 - h) * (m2 - m1) * kSectorsPerDegree + m1);
  return static_cast<float>(m1);
}

Vector HlsToRgb(const Hls& colour) {
  if (colour.s == 0 || colour.h == kNoHue) return {colour.l, colour.l, colour.l};
  const double h = colour.h, l = colour.l, s = colour.s;
  const double m2 = l > 0.5 ? (l + s) - l * s : (s + 1) * l;
  const double m1 = (l + l) - m2;
  return {HlsChannel(m1, m2, h + 120), HlsChannel(m1, m2, h), HlsChannel(m1, m2, h - 120)};
}

Vector RgbToHsvVector(const Vector& colour) {
  const Range range = RangeOf(colour);
  if (range.max <= 0) return {0, 0, 0};
  const double saturation = 1 - range.min / range.max;
  // The smallest component, not the largest: they differ by less than a thousandth.
  if (saturation < kWeakSaturation) return {0, 0, static_cast<float>(range.min)};
  const double hue = HueSixths(colour, range) * (1.0 / 6.0);
  return {static_cast<float>(hue < 0 ? hue + 1 : hue), static_cast<float>(saturation),
          static_cast<float>(range.max)};
}

Vector HsvVectorToRgb(const Vector& colour) {
  if (colour.y < kWeakSaturation) return {colour.z, colour.z, colour.z};
  const float hue = colour.x == 1 ? 0 : colour.x;
  return HexconeColour(double{hue} * 6, colour.y, colour.z, -1);
}

}  // namespace sorvanix
