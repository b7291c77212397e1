// The one instance of the module's state.
#include "module/shell/module_state.h"

namespace sorvanix {

constinit HostApi hostApi = {};
constinit char pluginPath[kPluginPathCapacity] = {};
constinit void* fractalWeights = nullptr;

}  // namespace sorvanix
