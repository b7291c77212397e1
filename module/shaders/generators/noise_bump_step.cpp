// The table of bump steps, and the curve through its points.
#include "module/shaders/generators/noise_bump_step.h"

#include <iterator>

#include "module/kit/remap.h"

namespace sorvanix {

namespace {

// A step at three octave counts, and beyond the last of them.
struct StepCurve {
  float atNone;  // at 0 octaves
  float atFive;
  float atTwelve;
  float beyond;  // above 12 octaves
};

constexpr StepCurve Constant(float step) { return {step, step, step, step}; }

// By noise type. Types 8 and 18 jump as the count passes 12, which is deliberate.
constexpr StepCurve kCurves[] = {
    /* 0 AxisWarp */ Constant(0.15f),
    /* 1 DualScaleBand */ {0.25f, 0.05f, 0.01f, 0.01f},
    /* 2 SquaredFractal */ {0.2f, 0.04f, 0.015f, 0.015f},
    /* 3 HashBlock */ Constant(0.02f),
    /* 4 BiasedSum */ {0.1f, 0.05f, 0.01f, 0.01f},
    /* 5 PeakMagnitude */ {0.1f, 0.05f, 0.05f, 0.05f},
    /* 6 TurbulentUnitSum */ {0.11f, 0.03f, 0.01f, 0.01f},
    /* 7 SmoothFractal */ {0.25f, 0.05f, 0.01f, 0.01f},
    /* 8 InvertedPeak */ {0.18f, 0.07f, 0.04f, 0.03f},
    /* 9 HardBand */ {0.2f, 0.025f, 0.005f, 0.005f},
    /* 10 UnitBlock */ Constant(0.02f),
    /* 11 TurbulentThreshold */ {0.18f, 0.04f, 0.01f, 0.01f},
    /* 12 PlainUnit */ Constant(0.45f),
    /* 13 WarpedMagnitude */ {0.12f, 0.025f, 0.01f, 0.01f},
    /* 14 RidgedBand */ {0.08f, 0.04f, 0.01f, 0.01f},
    /* 15 RidgeProduct */ Constant(0.03f),
    /* 16 DifferenceOctave */ {0.07f, 0.03f, 0.0005f, 0.0005f},
    /* 17 WhiteRandom */ Constant(0.02f),
    /* 18 SparsePeak */ {0.05f, 0.025f, 0.0125f, 0.012f},
    /* 19 SoftBand */ {0.08f, 0.012f, 0.004f, 0.004f},
    /* 20 RemappedTurbulence */ {0.25f, 0.02f, 0.005f, 0.005f},
    /* 21 OffsetWarp */ Constant(0.15f),
    /* 22 BandTurbulence */ {0.08f, 0.03f, 0.015f, 0.015f},
    /* 23 CellValue */ Constant(0.02f),
    /* 24 FractalCell */ {0.1f, 0.05f, 0.01f, 0.01f},
    /* 25 SparseConvolution */ Constant(0.3f),
    /* 26 CellNearest */ Constant(0.1f),
    /* 27 CellSecond */ Constant(0.1f),
    /* 28 CellEdge */ Constant(0.1f),
    /* 29 RidgedPeak */ {0.08f, 0.02f, 0.005f, 0.005f},
};
static_assert(std::size(kCurves) == 30);

constexpr StepCurve kOffTheTable = Constant(0.3f);

// From one step to the next; the fall between them is rounded to a float first.
float Fall(float from, float to, double way) noexcept {
  const float fall = from - to;
  return static_cast<float>(from - Clamp01(way) * fall);
}

}  // namespace

float NoiseBumpStep(std::int32_t noiseType, float octaves) noexcept {
  const bool known = noiseType >= 0 && noiseType < static_cast<std::int32_t>(std::size(kCurves));
  const StepCurve& curve = known ? kCurves[noiseType] : kOffTheTable;
  if (octaves <= 5) return Fall(curve.atNone, curve.atFive, static_cast<double>(octaves) * 0.2f);
  if (octaves <= 12) {
    return Fall(curve.atFive, curve.atTwelve, (static_cast<double>(octaves) - 5) * 0.14285715f);
  }
  return curve.beyond;
}

}  // namespace sorvanix
