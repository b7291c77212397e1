// The noise operations of the contract's render table, with the ranges that callers are tuned to.
#pragma once

#include <sorvanix/host_render.h>

namespace sorvanix::host {

// Each is the entry of RenderTable by that name, see there for meaning and ranges. All are pure and
// safe on several threads. Whatever the point, the time and the octaves are, the answer is finite.
// A null point is the origin, and a null weights block has no octaves.
float SignedNoise(const Vector* point, float time) noexcept;
float UnitNoise(const Vector* point) noexcept;
float UnitNoiseAt(const Vector* point, float time) noexcept;
float Turbulence(const Vector* point, float time, float octaves, int32_t absolute) noexcept;

// band is the half width of the range around 0.5; the result stays within 0..1 whatever it is.
float BandTurbulence(const Vector* point, float time, float octaves, float band) noexcept;

// Fills all 22 weights: step^(-exponent i) up to capacity, which is limited to 0..21, and 0 beyond.
// Answers 1, or 0 for null weights and for a step that is not above 0, which leaves a single
// octave.
int32_t FractalInit(void* weights, int32_t capacity, float step, float exponent) noexcept;
float FractalSum(const void* weights, const Vector* point, float time, float octaves) noexcept;
float FractalSumPoint(const void* weights, const Vector* point, float octaves) noexcept;
float FractalRidged(const void* weights, const Vector* point, float octaves, float offset,
                    float gain) noexcept;

// Sets the nine noise entries of the table and leaves the others alone.
void InstallNoiseServices(RenderTable& table) noexcept;

}  // namespace sorvanix::host
