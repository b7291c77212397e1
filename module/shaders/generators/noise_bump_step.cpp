#include "module/shaders/generators/noise_bump_step.h"

#include <iterator>

#include "module/kit/remap.h"

namespace sorvanix {

namespace {

// A curve through three octave counts. The falls are constants of their own, not differences of the
// values: their last digits are part of the table.
struct StepCurve {
  float atNone;        // at 0 octaves
  float fallToFive;    // what it loses up to 5 octaves
  float atFive;        // from above 5 octaves on
  float fallToTwelve;  // what it loses from there up to 12
  float beyond;        // above 12 octaves
};

constexpr StepCurve Constant(float step) { return {step, 0, step, 0, step}; }

// By noise type. Types 8 and 18 jump as the count passes 12, which is deliberate.
constexpr StepCurve kCurves[] = {
    /* 0 AxisWarp            */ Constant(0.15f),
    /* 1 DualScaleBand       */ {0.25f, 0.2f, 0.05f, 0.04f, 0.01f},
    /* 2 SquaredFractal      */ {0.2f, 0.16f, 0.04f, 0.024999999f, 0.015f},
    /* 3 HashBlock           */ Constant(0.02f),
    /* 4 BiasedSum           */ {0.1f, 0.05f, 0.05f, 0.04f, 0.01f},
    /* 5 PeakMagnitude       */ {0.1f, 0.05f, 0.05f, 0, 0.05f},
    /* 6 TurbulentUnitSum    */ {0.11f, 0.08f, 0.03f, 0.02f, 0.01f},
    /* 7 SmoothFractal       */ {0.25f, 0.2f, 0.05f, 0.04f, 0.01f},
    /* 8 InvertedPeak        */ {0.18f, 0.11000001f, 0.07f, 0.030000001f, 0.03f},
    /* 9 HardBand            */ {0.2f, 0.175f, 0.025f, 0.02f, 0.005f},
    /* 10 UnitBlock          */ Constant(0.02f),
    /* 11 TurbulentThreshold */ {0.18f, 0.14000002f, 0.04f, 0.03f, 0.01f},
    /* 12 PlainUnit          */ Constant(0.45f),
    /* 13 WarpedMagnitude    */ {0.12f, 0.095f, 0.025f, 0.015000001f, 0.01f},
    /* 14 RidgedBand         */ {0.08f, 0.04f, 0.04f, 0.03f, 0.01f},
    /* 15 RidgeProduct       */ Constant(0.03f),
    /* 16 DifferenceOctave   */ {0.07f, 0.04f, 0.03f, 0.0295f, 0.0005f},
    /* 17 WhiteRandom        */ Constant(0.02f),
    /* 18 SparsePeak         */ {0.05f, 0.025f, 0.025f, 0.0125f, 0.012f},
    /* 19 SoftBand           */ {0.08f, 0.067999996f, 0.012f, 0.007999999f, 0.004f},
    /* 20 RemappedTurbulence */ {0.25f, 0.23f, 0.02f, 0.015f, 0.005f},
    /* 21 OffsetWarp         */ Constant(0.15f),
    /* 22 BandTurbulence     */ {0.08f, 0.049999997f, 0.03f, 0.015f, 0.015f},
    /* 23 CellValue          */ Constant(0.02f),
    /* 24 FractalCell        */ {0.1f, 0.05f, 0.05f, 0.04f, 0.01f},
    /* 25 SparseConvolution  */ Constant(0.3f),
    /* 26 CellNearest        */ Constant(0.1f),
    /* 27 CellSecond         */ Constant(0.1f),
    /* 28 CellEdge           */ Constant(0.1f),
    /* 29 RidgedPeak         */ {0.08f, 0.06f, 0.02f, 0.015f, 0.005f},
};
static_assert(std::size(kCurves) == 30);

constexpr StepCurve kOffTheTable = Constant(0.3f);

}  // namespace

float NoiseBumpStep(std::int32_t noiseType, float octaves) noexcept {
  const bool known = noiseType >= 0 && noiseType < static_cast<std::int32_t>(std::size(kCurves));
  const StepCurve& curve = known ? kCurves[noiseType] : kOffTheTable;
  if (octaves <= 5) {
    const double way = Clamp01(static_cast<double>(octaves) * 0.2f);
    return static_cast<float>(curve.atNone - way * curve.fallToFive);
  }
  if (octaves <= 12) {
    const double way = Clamp01((static_cast<double>(octaves) - 5) * 0.14285715f);
    return static_cast<float>(curve.atFive - way * curve.fallToTwelve);
  }
  return curve.beyond;
}

}  // namespace sorvanix
