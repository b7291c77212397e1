// The shading operations of the contract's render table: threads, queries, light, projections.
#pragma once

#include <sorvanix/host_render.h>

namespace sorvanix::host {

/// Sets the entries of the table other than noise. A null render, or a render that is none of this
/// host's records with a frame, is a render without threads, lights and camera.
void InstallShadingServices(RenderTable& table) noexcept;

}  // namespace sorvanix::host
