// Host operations that Output and InitRender call: CPUs, the host's noise, the surface at a hit and
// the light on it.
//
// All are safe on several threads at once; the noise operations are pure functions.
#pragma once

#include "module/shell/host_call.h"

namespace sorvanix {

/// How many CPUs the render uses, at least 1.
inline std::int32_t hostCpuCount(const RenderContext* render) noexcept {
  return hostCall(hostApi.render, &RenderTable::cpuCount, 1, render);
}

/// The index of the calling render thread, from 0.
inline std::int32_t hostCpuIndex(const RenderContext* render) noexcept {
  return hostCall(hostApi.render, &RenderTable::cpuIndex, 0, render);
}

/// Smooth noise of point and time around 0, of magnitude up to about 0.65.
inline float hostSignedNoise(const Vector& point, float time) noexcept {
  return hostCall(hostApi.render, &RenderTable::signedNoise, 0.0f, &point, time);
}

/// The same family without time, around 0.5, nearly all of it within 0.3..0.7.
inline float hostUnitNoise(const Vector& point) noexcept {
  return hostCall(hostApi.render, &RenderTable::unitNoise, 0.5f, &point);
}

/// As hostUnitNoise, with time.
inline float hostUnitNoiseAt(const Vector& point, float time) noexcept {
  return hostCall(hostApi.render, &RenderTable::unitNoiseAt, 0.5f, &point, time);
}

/// Sum of octaves, fractional counts allowed; signed, or not negative with `absolute`.
inline float hostTurbulence(const Vector& point, float time, float octaves,
                            std::int32_t absolute) noexcept {
  return hostCall(hostApi.render, &RenderTable::turbulence, 0.0f, &point, time, octaves, absolute);
}

/// Sum of octaves around 0.5, within 0..1.
inline float hostBandTurbulence(const Vector& point, float time, float octaves,
                                float band) noexcept {
  return hostCall(hostApi.render, &RenderTable::bandTurbulence, 0.5f, &point, time, octaves, band);
}

/// Fills the per-octave weights of the fractal operations; `weights` may be null.
inline std::int32_t hostFractalInit(void* weights, std::int32_t capacity, float step,
                                    float exponent) noexcept {
  return hostCall(hostApi.render, &RenderTable::fractalInit, 0, weights, capacity, step, exponent);
}

/// Fractal sum of point and time, signed.
inline float hostFractalSum(const void* weights, const Vector& point, float time,
                            float octaves) noexcept {
  return hostCall(hostApi.render, &RenderTable::fractalSum, 0.0f, weights, &point, time, octaves);
}

/// Fractal sum without time, about -1.75 to 1.75.
inline float hostFractalSumPoint(const void* weights, const Vector& point, float octaves) noexcept {
  return hostCall(hostApi.render, &RenderTable::fractalSumPoint, 0.0f, weights, &point, octaves);
}

/// Ridged fractal without time, about -0.5 to 0.6.
inline float hostFractalRidged(const void* weights, const Vector& point, float octaves,
                               float offset, float gain) noexcept {
  return hostCall(hostApi.render, &RenderTable::fractalRidged, 0.0f, weights, &point, octaves,
                  offset, gain);
}

/// The texture coordinate of a surface point near the hit; `identity` tells the hit element.
/// `otherwise` when the host cannot tell.
inline Vector hostPointToUvw(const RenderContext* render, const TextureTag* tag,
                             std::int32_t identity, const Vector& point, const Vector& normal,
                             const Vector& otherwise) noexcept {
  Vector uvw = otherwise;
  hostCall(hostApi.render, &RenderTable::pointToUvw, render, tag, identity, &point, &normal, &uvw);
  return uvw;
}

/// Unit vectors along increasing u and v, in the surface at the hit.
struct SurfaceAxes {
  Vector u = {};
  Vector v = {};
};
inline SurfaceAxes hostSurfaceAxes(const RenderContext* render, const TextureTag* tag,
                                   const Vector& point, const Vector& normal) noexcept {
  SurfaceAxes axes;
  hostCall(hostApi.render, &RenderTable::surfaceAxes, render, tag, &point, &normal, &axes.u,
           &axes.v);
  return axes;
}

/// Prepares projections of the hit and its three corners with a set of texture coordinates.
inline void hostSetUpTexture(RenderContext* render, const Vector (&points)[4],
                             std::int32_t uvwIndex) noexcept {
  hostCall(hostApi.render, &RenderTable::setUpTexture, render, points, uvwIndex);
}

/// The texture coordinate that a tag gives to a point; zero for a point that has none.
inline Vector hostProjectTexture(const TextureTag* tag, const RenderContext* render,
                                 const Vector& point, const UvwRecord* uvwRecord) noexcept {
  Vector uvw = {};
  hostCall(hostApi.render, &RenderTable::projectTexture, 0, tag, render, &point, uvwRecord, &uvw);
  return uvw;
}

/// The matrix from camera to world space; null where no camera looks.
inline const Matrix* hostCameraMatrix(const RenderContext* render) noexcept {
  const void* answer = hostCall(hostApi.render, &RenderTable::query, nullptr, render,
                                std::int32_t{QueryCameraMatrix});
  return static_cast<const Matrix*>(answer);
}

// --- light ---

/// Adds the light at the hit, around the render's bumpNormal, with a mirror highlight of
/// `exponent`.
inline void hostIlluminate(const RenderContext* render, Vector& diffuse, Vector& specular,
                           float exponent) noexcept {
  hostCall(hostApi.render, &RenderTable::illuminate, render, &diffuse, &specular, exponent);
}

inline std::int32_t hostLightCount(const RenderContext* render) noexcept {
  return hostCall(hostApi.render, &RenderTable::lightCount, 0, render);
}

/// One light; null where there is none of that index.
inline const LightRecord* hostLightAt(const RenderContext* render, std::int32_t index) noexcept {
  return hostCall(hostApi.render, &RenderTable::lightAt, nullptr, render, index);
}

/// A light as it comes to a point. In a shadow it arrives, in black.
struct ArrivingLight {
  bool arrives = false;
  Vector colour = {};
  Vector direction = {};  ///< unit vector towards the light
};
/// `shadows`: whether anything may block the light, but for the element with this identity.
inline ArrivingLight hostLightSample(const RenderContext* render, const LightRecord* light,
                                     const Vector& point, const Vector& normal,
                                     std::int32_t shadows, std::int32_t identity) noexcept {
  ArrivingLight arriving;
  arriving.arrives =
      hostCall(hostApi.render, &RenderTable::lightSample, 0, render, light, &arriving.colour,
               &arriving.direction, &point, &normal, shadows, identity) != 0;
  return arriving;
}

/// Adds the share of a light that is an area, times `value`.
inline void hostAreaLight(const RenderContext* render, const LightRecord* light, float value,
                          const Vector& ray, float side, const Vector& point,
                          Vector& sum) noexcept {
  hostCall(hostApi.render, &RenderTable::areaLight, render, light, value, &ray, side, &point, &sum);
}

/// A smooth curve through equally spaced values, read at 0..1.
inline float hostSplineLookup(float value, const float* table, std::int32_t count) noexcept {
  return hostCall(hostApi.render, &RenderTable::splineLookup, 0.0f, value, table, count);
}

}  // namespace sorvanix
