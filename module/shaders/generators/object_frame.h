// The frame of an undeformed object: where a point of the surface was before the object was bent,
// or lies on a sphere around it. A pattern that is read there sticks to a moving surface.
#pragma once

#include <sorvanix/records.h>

namespace sorvanix {

/// Whether the hit object has such a frame.
bool HasObjectFrame(const RenderContext& render) noexcept;

/// A world point near the hit polygon, where it was before any deformation: carried along with the
/// polygon's corners and its normal. Where the surface has no polygon, or one without an area, the
/// point in the object's own space.
Vector PointInObjectFrame(const Vector& point, const RenderContext& render) noexcept;

/// The point of the sphere of radius 100 that has this texture coordinate: u a turn around the y
/// axis, v half a turn from the top to the bottom.
Vector PointOnSphere(const Vector& uvw) noexcept;

}  // namespace sorvanix
