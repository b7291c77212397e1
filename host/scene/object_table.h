// The contract's table of objects and their tags, over the objects of a scene.
#pragma once

#include <sorvanix/host_scene.h>

namespace sorvanix::host {

/// Null handles, and tags of the wrong type, answer with null, 0 or the identity. Points and
/// polygons are those of meshes; a primitive has them once it is polygonised. Only texture tags can
/// be made.
void InstallObjects(ObjectTable& table) noexcept;

}  // namespace sorvanix::host
