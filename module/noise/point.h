// Points for the host's noise, made from coordinates that were computed in double.
#pragma once

#include <sorvanix/types.h>

namespace sorvanix {

/// The point of three coordinates, each narrowed to float.
inline Vector Point(double x, double y, double z) noexcept {
  return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

}  // namespace sorvanix
