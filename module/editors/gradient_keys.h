// What the keys of a dialog do to its ramp: nudge, select, repeat, reverse.
#pragma once

#include "module/kit/ramp.h"

namespace sorvanix {

/// Acts on a key that was pressed with these qualifier bits. False, with nothing changed, for a key
/// that is the host's.
bool ApplyRampKey(Ramp& ramp, std::int32_t key, std::int32_t qualifier);

}  // namespace sorvanix
