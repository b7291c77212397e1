// Conversions between RGB and hue, saturation and value or lightness, in two families.
//
// Hsv and Hls measure the hue in degrees and mark an undefined one; blending uses them. The Vector
// forms keep the hue in 0..1 and treat weak saturation as grey; shaders that turn hues use them.
// The families differ in their edge cases, and pictures depend on both.
//
// Reference: A. R. Smith, "Color Gamut Transform Pairs", SIGGRAPH 1978 (the hexcone); Foley, van
// Dam, Feiner, Hughes, "Computer Graphics: Principles and Practice", section 13.3 (the double
// hexcone).
#pragma once

#include <sorvanix/types.h>

namespace sorvanix {

/// A colour of the hexcone: hue in degrees, kNoHue for black, NaN for other greys.
struct Hsv {
  float h, s, v;
};

/// A colour of the double hexcone: hue in degrees, kNoHue for every grey.
struct Hls {
  float h, l, s;
};

/// The hue of a colour that has none.
inline constexpr float kNoHue = -1;

/// Black has the hue kNoHue. The hue of any other grey is NaN, so read the saturation, which is 0
/// then, before the hue.
Hsv RgbToHsv(const Vector& colour);

/// Grey of the colour's value when the saturation is 0 or the hue is kNoHue or NaN. Hues from 0 to
/// 300 turn as usual; a hue outside 0..360 counts as one of the last sixth.
Vector HsvToRgb(const Hsv& colour);

/// Every grey has saturation 0 and the hue kNoHue.
Hls RgbToHls(const Vector& colour);

/// One component of a colour whose components lie between m1 and m2; h is the hue in degrees,
/// turned by 120 for red and by -120 for blue. One turn outside 0..360 is taken off.
float HlsChannel(double m1, double m2, double h);

/// Grey of the colour's lightness when the saturation is 0 or the hue is kNoHue.
Vector HlsToRgb(const Hls& colour);

/// (hue, saturation, value), the hue in 0..1. A colour with a saturation below 0.001 is taken for
/// the grey of its smallest component; one without a positive component is black.
Vector RgbToHsvVector(const Vector& colour);

/// The colour of (hue, saturation, value); the hues 0 and 1 are the same. Black for a hue outside
/// 0..1: wrap it first.
Vector HsvVectorToRgb(const Vector& colour);

}  // namespace sorvanix
