// A smooth curve through equally spaced values.
#pragma once

#include <cstdint>

namespace sorvanix::host {

/// The Catmull-Rom curve through `count` values, read at 0..1: a value below reads the first one,
/// a value above the last, NaN the first. The end points count twice. 0 without values.
float SplineLookup(float value, const float* table, std::int32_t count) noexcept;

}  // namespace sorvanix::host
