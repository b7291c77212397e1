// How shaders that light a matt surface themselves may do it.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// Documents store the numbers.
enum Illumination : std::int32_t {
  IlluminationHost = 0,      ///< the host's own diffuse light
  IlluminationOrenNayar = 1  ///< the flatter one of rough surfaces: see kit/oren_nayar.h
};

inline constexpr Choice kIlluminations[] = {
    {IlluminationHost, "host", "Host"},
    {IlluminationOrenNayar, "orenNayar", "Oren-Nayar"},
};

}  // namespace sorvanix
