// The module for benchmarks, loaded once: a process has one module, and a module one host.
#pragma once

#include "host/loader/module.h"

namespace sorvanix::bench {

/// Its host has three lights that always arrive and a projection that keeps the point, all of which
/// cost next to nothing: what is measured is the shader.
host::Module& LoadedModule();

}  // namespace sorvanix::bench
