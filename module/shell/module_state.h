// The process-wide state of the module: what the host handed over, and what start builds from it.
//
// Written only by c4d_main, whose calls never overlap; read-only while shaders run.
#pragma once

#include <sorvanix/host_api.h>

#include <cstdint>

namespace sorvanix {

/// The host's table block, copied verbatim at attach.
extern HostApi hostApi;

/// The module's path as passed at attach, zero-terminated; empty before.
inline constexpr std::size_t kPluginPathCapacity = 1024;
extern char pluginPath[kPluginPathCapacity];

/// The host's per-octave weights (FractalWeightsSize bytes); null before start and when the host
/// had no memory for them.
extern void* fractalWeights;

}  // namespace sorvanix
