// Primitives: sphere, cube, plane, cylinder and torus as polygon meshes.
//
// All stand around the origin. Texture coordinates run as mesh.h tells: u = 0.5 of the round ones
// faces the viewer, at -z. A cube has a second set, "Atlas", in which its six faces lie side by
// side without overlap; a cylinder too, for its side and its caps.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/scene/mesh.h"

namespace sorvanix::host {

enum class PrimitiveShape { Sphere, Cube, Plane, Cylinder, Torus };

/// What a shape does not use is left alone. Sizes of 0 are allowed: what has no area is left out.
struct Primitive {
  PrimitiveShape shape = PrimitiveShape::Sphere;
  float radius = 100;           ///< sphere, cylinder; torus: from its centre to that of the pipe
  float pipeRadius = 30;        ///< torus
  float width = 200;            ///< along x: cube, plane
  float height = 200;           ///< along y: cube, cylinder
  float depth = 200;            ///< along z: cube, plane
  std::int32_t segmentsU = 48;  ///< around; cube, plane: along each edge that u follows
  std::int32_t segmentsV = 24;  ///< from top to bottom; torus: around the pipe
  bool caps = true;             ///< cylinder: closed at both ends

  friend bool operator==(const Primitive&, const Primitive&) = default;
};

/// Numbers of segments are limited to this, and to at least what makes a closed surface.
inline constexpr std::int32_t kMostSegments = 1024;

/// The shape with sizes of about 100 units around the origin.
Primitive DefaultPrimitive(PrimitiveShape shape) noexcept;

/// How many polygons the surface has at most.
std::size_t MostPolygonsOf(const Primitive& primitive) noexcept;

/// The surface with its segments times `detail`; 1 is full detail. Normals are smooth where the
/// surface is. Throws std::bad_alloc.
PolygonMesh BuildPrimitive(const Primitive& primitive, float detail = 1);

}  // namespace sorvanix::host
