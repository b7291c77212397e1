// Containers of keys and values out of the bytes that a fuzzer hands over.
#pragma once

#include "fuzz/byte_source.h"
#include "host/services/containers.h"

namespace sorvanix::fuzz {

/// Values up to a byte that stands for no type, or to the end. Containers may stand for inputs, and
/// nest deeper than the host takes.
host::Container TakeContainer(ByteSource& bytes, int depth = 0);

}  // namespace sorvanix::fuzz
