#include "host/render/projection.h"

#include <algorithm>
#include <numbers>

namespace sorvanix::host {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

Vec3 Flat(double right, double up, double depth) { return {(right + 1) / 2, (1 - up) / 2, depth}; }

/// Around the y axis; 0.5 on the side of positive z.
double Longitude(const Vec3& p) { return std::atan2(p.x, p.z) / kTurn + 0.5; }

/// The y component of the unit vector towards a place; 0 for the origin.
double SineOfLatitude(const Vec3& p) { return std::clamp(Normalised(p).y, -1.0, 1.0); }

Vec3 Sphere(const Vec3& p) {
  return {Longitude(p), 0.5 - std::asin(SineOfLatitude(p)) / std::numbers::pi, Length(p)};
}

Vec3 Cylinder(const Vec3& p) { return {Longitude(p), 0.5 - p.y / 2, std::hypot(p.x, p.z)}; }

/// Flat on the two axes other than the one along which the place lies farthest out.
Vec3 Cube(const Vec3& p) {
  const double x = std::abs(p.x), y = std::abs(p.y), z = std::abs(p.z);
  if (x > y && x > z) return Flat(p.z, p.y, p.x);
  if (y > z) return Flat(p.x, p.z, p.y);
  return Flat(p.x, p.y, p.z);
}

/// The sphere drawn together around its upper pole, which lies in the middle of the texture.
Vec3 ShrinkWrap(const Vec3& p) {
  const double radius = std::acos(SineOfLatitude(p)) / kTurn;
  const Vec3 around = Normalised({p.x, 0, p.z});
  return {0.5 + radius * around.x, 0.5 - radius * around.z, Length(p)};
}

/// The barycentric coordinates of a point with respect to corners b and c of a triangle.
struct Barycentric {
  double b, c;
};

std::optional<Barycentric> Locate(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& point) {
  const Vec3 normal = Cross(b - a, c - a);
  const double square = Dot(normal, normal);
  if (!(square > 0)) return std::nullopt;
  const Vec3 way = point - a;
  return Barycentric{Dot(Cross(way, c - a), normal) / square,
                     Dot(Cross(b - a, way), normal) / square};
}

}  // namespace

Vec3 ProjectShape(Projection projection, const Vec3& place) noexcept {
  switch (projection) {
    case Projection::Sphere:
      return Sphere(place);
    case Projection::Cylinder:
      return Cylinder(place);
    case Projection::Cube:
      return Cube(place);
    case Projection::Spatial:
      return Flat(place.x + place.z, place.y, place.z);
    case Projection::ShrinkWrap:
      return ShrinkWrap(place);
    default:
      return Flat(place.x, place.y, place.z);
  }
}

std::optional<Vec3> UvwOnPolygon(const UvwRecord& polygon, const Vec3& point) noexcept {
  if (polygon.cornerCount < 3) return std::nullopt;
  const auto corner = [&](int i) { return Vec3(polygon.corner[i]); };
  const auto uvw = [&](int i) { return Vec3(polygon.uvw[i]); };
  const auto blend = [&](const Barycentric& at, int b, int c) {
    return uvw(0) * (1 - at.b - at.c) + uvw(b) * at.b + uvw(c) * at.c;
  };
  const auto first = Locate(corner(0), corner(1), corner(2), point);
  if (polygon.cornerCount > 3 && (!first || first->b < 0)) {  // beyond the diagonal
    const auto second = Locate(corner(0), corner(2), corner(3), point);
    if (second) return blend(*second, 2, 3);
  }
  if (!first) return std::nullopt;
  return blend(*first, 1, 2);
}

Vec3 PlaceInTile(const TextureTag& tag, const Vec3& uvw) noexcept {
  return {tag.lengthU == 0 ? 0 : (uvw.x - tag.offsetU) / tag.lengthU,
          tag.lengthV == 0 ? 0 : (uvw.y - tag.offsetV) / tag.lengthV, uvw.z};
}

std::optional<Vec3> ProjectPlace(const TextureTag& tag, const ProjectedPlace& place) noexcept {
  std::optional<Vec3> uvw;
  if (ProjectionOf(tag) == Projection::Uvw) {
    if (place.polygon != nullptr) uvw = UvwOnPolygon(*place.polygon, place.inWorld);
  } else if (ProjectionOf(tag) == Projection::Frontal) {
    if (place.view != nullptr) {
      const Vec3 pixel = place.view->ToPixels(place.view->ToCamera(place.inWorld));
      uvw = Vec3(pixel.x / place.view->Width(), pixel.y / place.view->Height(), pixel.z);
    }
  } else {
    uvw = ProjectShape(ProjectionOf(tag), place.inTag);
  }
  if (!uvw) return std::nullopt;
  return PlaceInTile(tag, *uvw);
}

}  // namespace sorvanix::host
