// Host noise without libm: value noise on hashed cells, which every build computes alike.
#pragma once

#include <sorvanix/host_api.h>

namespace sorvanix::test {

/// Serves all noise operations of a table.
void InstallExactNoise(RenderTable& table);

/// The noise itself, in 0..1.
double ExactNoise(const Vector& point, float time);

}  // namespace sorvanix::test
