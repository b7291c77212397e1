#include "host/scene/primitives.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "host/scene/surface_builder.h"

namespace sorvanix::host {
namespace {

/// Part of the texture that a patch fills in the set without overlap.
struct Chart {
  double left = 0, top = 0, right = 1, bottom = 1;

  Vector Place(double u, double v) const noexcept {
    return {static_cast<float>(left + u * (right - left)),
            static_cast<float>(top + v * (bottom - top)), 0};
  }
};

/// Free space around a chart, so that pixels of its neighbours do not bleed in.
constexpr double kChartMargin = 1.0 / 64;

constexpr Chart Inset(const Chart& chart) noexcept {
  return {chart.left + kChartMargin, chart.top + kChartMargin, chart.right - kChartMargin,
          chart.bottom - kChartMargin};
}

Vector Narrow(double x, double y, double z) noexcept {
  return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

Vector Uv(double u, double v) noexcept { return Narrow(u, v, 0); }

/// How a surface of revolution about y runs at one place of its profile.
struct ProfilePoint {
  double radius, y;              // the place
  double normalRadius, normalY;  // the normal, in the same plane
};

/// Turns a profile around y. u = 0.5 is at -z and grows towards +x.
PatchCorner Turned(const ProfilePoint& profile, std::int32_t column, std::int32_t columns,
                   double v) {
  const double x = -SinTurn(column, columns), z = CosTurn(column, columns);
  const Vector uvw = Uv(static_cast<double>(column) / columns, v);
  return {.point = Narrow(profile.radius * x, profile.y, profile.radius * z),
          .normal = Narrow(profile.normalRadius * x, profile.normalY, profile.normalRadius * z),
          .uvw = {uvw, uvw}};
}

PolygonMesh BuildSphere(const Primitive& sphere) {
  SurfaceBuilder builder(1);
  builder.AddPatch(sphere.segmentsU, sphere.segmentsV, [&](std::int32_t column, std::int32_t row) {
    const double sine = SinTurn(row, 2 * sphere.segmentsV);
    const double cosine = CosTurn(row, 2 * sphere.segmentsV);
    return Turned({sphere.radius * sine, sphere.radius * cosine, sine, cosine}, column,
                  sphere.segmentsU, static_cast<double>(row) / sphere.segmentsV);
  });
  return builder.Take();
}

/// v begins at the inner side of the pipe, runs over its top to the outer side and back below.
PolygonMesh BuildTorus(const Primitive& torus) {
  SurfaceBuilder builder(1);
  builder.AddPatch(torus.segmentsU, torus.segmentsV, [&](std::int32_t column, std::int32_t row) {
    const double sine = SinTurn(row, torus.segmentsV), cosine = CosTurn(row, torus.segmentsV);
    return Turned(
        {torus.radius - torus.pipeRadius * cosine, torus.pipeRadius * sine, -cosine, sine}, column,
        torus.segmentsU, static_cast<double>(row) / torus.segmentsV);
  });
  return builder.Take();
}

/// One end of a cylinder; `up` is 1 for the top, -1 for the bottom. Seen from outside with x to the
/// right, the texture is the unit square around the disc.
void AddCap(SurfaceBuilder& builder, const Primitive& cylinder, int up, const Chart& chart) {
  builder.AddPatch(cylinder.segmentsU, 1, [&](std::int32_t column, std::int32_t row) {
    const double distance = (row == 0) == (up > 0) ? 0 : 1;
    PatchCorner corner =
        Turned({cylinder.radius * distance, cylinder.height * 0.5 * up, 0, static_cast<double>(up)},
               column, cylinder.segmentsU, 0);
    const double u = 0.5 - 0.5 * distance * SinTurn(column, cylinder.segmentsU);
    const double v = 0.5 - 0.5 * distance * up * CosTurn(column, cylinder.segmentsU);
    corner.uvw = {Uv(u, v), chart.Place(u, v)};
    return corner;
  });
}

PolygonMesh BuildCylinder(const Primitive& cylinder) {
  SurfaceBuilder builder(2);
  constexpr Chart side = Inset({0, 0, 1, 0.5});
  builder.AddPatch(
      cylinder.segmentsU, cylinder.segmentsV, [&](std::int32_t column, std::int32_t row) {
        const double v = static_cast<double>(row) / cylinder.segmentsV;
        PatchCorner corner = Turned({cylinder.radius, cylinder.height * (0.5 - v), 1, 0}, column,
                                    cylinder.segmentsU, v);
        corner.uvw[1] = side.Place(static_cast<double>(column) / cylinder.segmentsU, v);
        return corner;
      });
  if (cylinder.caps) {
    AddCap(builder, cylinder, 1, Inset({0, 0.5, 0.5, 1}));
    AddCap(builder, cylinder, -1, Inset({0.5, 0.5, 1, 1}));
  }
  return builder.Take();
}

/// A rectangle in space: its middle, and the vectors from left to right and from top to bottom.
struct Face {
  Vector middle, right, down, normal;
};

void AddFace(SurfaceBuilder& builder, const Face& face, std::int32_t columns, std::int32_t rows,
             const Chart& chart) {
  builder.AddPatch(columns, rows, [&](std::int32_t column, std::int32_t row) {
    const double u = static_cast<double>(column) / columns, v = static_cast<double>(row) / rows;
    const auto component = [&](float Vector::*axis) {
      return face.middle.*axis + (u - 0.5) * face.right.*axis + (v - 0.5) * face.down.*axis;
    };
    return PatchCorner{
        .point = Narrow(component(&Vector::x), component(&Vector::y), component(&Vector::z)),
        .normal = face.normal,
        .uvw = {Uv(u, v), chart.Place(u, v)}};
  });
}

/// Seen from above, x is to the right and z up.
PolygonMesh BuildPlane(const Primitive& plane) {
  SurfaceBuilder builder(1);
  AddFace(builder, {{0, 0, 0}, {plane.width, 0, 0}, {0, 0, -plane.depth}, {0, 1, 0}},
          plane.segmentsU, plane.segmentsV, {});
  return builder.Take();
}

PolygonMesh BuildCube(const Primitive& cube) {
  const float x = cube.width, y = cube.height, z = cube.depth;
  const std::array<Face, 6> faces = {{
      {{0, 0, -z / 2}, {x, 0, 0}, {0, -y, 0}, {0, 0, -1}},   // front
      {{x / 2, 0, 0}, {0, 0, z}, {0, -y, 0}, {1, 0, 0}},     // right
      {{0, 0, z / 2}, {-x, 0, 0}, {0, -y, 0}, {0, 0, 1}},    // back
      {{-x / 2, 0, 0}, {0, 0, -z}, {0, -y, 0}, {-1, 0, 0}},  // left
      {{0, y / 2, 0}, {x, 0, 0}, {0, 0, -z}, {0, 1, 0}},     // top
      {{0, -y / 2, 0}, {x, 0, 0}, {0, 0, z}, {0, -1, 0}},    // bottom
  }};
  SurfaceBuilder builder(2);
  for (std::size_t i = 0; i < faces.size(); ++i) {
    const auto column = static_cast<double>(i % 3), row = static_cast<double>(i / 3);
    AddFace(builder, faces[i], cube.segmentsU, cube.segmentsV,
            Inset({column / 3, row / 2, (column + 1) / 3, (row + 1) / 2}));
  }
  return builder.Take();
}

struct ShapeRow {
  PolygonMesh (*build)(const Primitive&);
  std::int32_t leastU, leastV;
};

/// By the numbers of PrimitiveShape.
constexpr std::array<ShapeRow, 5> kShapes = {{{BuildSphere, 3, 2},
                                              {BuildCube, 1, 1},
                                              {BuildPlane, 1, 1},
                                              {BuildCylinder, 3, 1},
                                              {BuildTorus, 3, 3}}};

std::int32_t Segments(std::int32_t wanted, float detail, std::int32_t least) noexcept {
  const double segments = std::round(static_cast<double>(wanted) * detail);
  if (!(segments > least)) return least;  // also a detail that is no number
  return segments < kMostSegments ? static_cast<std::int32_t>(segments) : kMostSegments;
}

}  // namespace

Primitive DefaultPrimitive(PrimitiveShape shape) noexcept {
  Primitive primitive = {.shape = shape};
  switch (shape) {
    case PrimitiveShape::Cube:
    case PrimitiveShape::Plane:
      primitive.segmentsU = primitive.segmentsV = 1;
      break;
    case PrimitiveShape::Cylinder:
      primitive.segmentsV = 1;
      break;
    case PrimitiveShape::Torus:
      primitive.radius = 70;
      break;
    case PrimitiveShape::Sphere:
      break;
  }
  return primitive;
}

std::size_t MostPolygonsOf(const Primitive& primitive) noexcept {
  const auto around = static_cast<std::size_t>(Segments(primitive.segmentsU, 1, 3));
  const auto down = static_cast<std::size_t>(Segments(primitive.segmentsV, 1, 3));
  const std::size_t sides = primitive.shape == PrimitiveShape::Cube ? 6 : 1;
  return sides * around * down + 2 * around;  // with the caps of a cylinder
}

PolygonMesh BuildPrimitive(const Primitive& primitive, float detail) {
  const ShapeRow& shape = kShapes[static_cast<std::size_t>(primitive.shape)];
  Primitive limited = primitive;
  limited.segmentsU = Segments(primitive.segmentsU, detail, shape.leastU);
  limited.segmentsV = Segments(primitive.segmentsV, detail, shape.leastV);
  return shape.build(limited);
}

}  // namespace sorvanix::host
