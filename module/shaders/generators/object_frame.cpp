// Undeformed points by the corners of the polygon that was hit.
#include "module/shaders/generators/object_frame.h"

#include <sorvanix/ids.h>

#include <cmath>
#include <numbers>

#include "module/kit/vector.h"
#include "module/shaders/sample_points.h"

namespace sorvanix {

namespace {

struct Triangle {
  Vector corner, edge1, edge2;
};

Triangle MakeTriangle(const Vector& a, const Vector& b, const Vector& c) noexcept {
  return {a, Sub(b, a), Sub(c, a)};
}

// The second corner of the half that holds the hit; the first corner belongs to both halves, and
// the third follows the second. Corner and hit on one side of the diagonal share a half.
int SecondCornerOfHalf(const UvwRecord& polygon, const Vector& hit) noexcept {
  if (polygon.cornerCount < 4) return 1;
  const Vector& corner = polygon.corner[0];
  const Vector diagonal = Sub(polygon.corner[2], corner);
  const Vector hitSide = Cross(diagonal, Sub(hit, corner));
  const Vector secondSide = Cross(diagonal, Sub(polygon.corner[1], corner));
  return WideDot(hitSide, secondSide) >= 0 ? 1 : 2;
}

// The two edges and a normal as long as they are, so that a surface that grows carries its
// neighbourhood along evenly. Without an area, the singular map.
Matrix AxesOf(const Triangle& triangle) noexcept {
  const Vector cross = Cross(triangle.edge1, triangle.edge2);
  const float length = std::sqrt(Length(cross));
  return {{0, 0, 0}, triangle.edge1, triangle.edge2, Scale(length, Normalized(cross))};
}

bool HasArea(const Triangle& triangle) noexcept {
  return Length(Cross(triangle.edge1, triangle.edge2)) > 0;
}

}  // namespace

bool HasObjectFrame(const RenderContext& render) noexcept {
  return render.object != nullptr && render.object->type != ObjectTypeExcludedFromFrame;
}

Vector PointInObjectFrame(const Vector& point, const RenderContext& render) noexcept {
  const UvwRecord* polygon = render.uvwRecord;
  if (polygon != nullptr && polygon->cornerCount >= 3) {
    const int second = SecondCornerOfHalf(*polygon, render.hitPoint);
    const auto half = [second](const Vector(&corners)[4]) {
      return MakeTriangle(corners[0], corners[second], corners[second + 1]);
    };
    const Triangle rendered = half(polygon->corner), rest = half(polygon->restCorner);
    if (HasArea(rendered) && HasArea(rest)) {
      // Around the corner, not the origin: small polygons far out keep their digits.
      const Vector inPolygon = Rotate(Sub(point, rendered.corner), Invert(AxesOf(rendered)));
      return Add(rest.corner, Rotate(inPolygon, AxesOf(rest)));
    }
  }
  return Transform(point, WorldToObject(render));
}

Vector PointOnSphere(const Vector& uvw) noexcept {
  constexpr auto kHalfTurn = std::numbers::pi_v<float>;
  const Vector top = {0, 100, 0};
  return Transform(Transform(top, RotationZ(uvw.y * kHalfTurn)),
                   RotationY(uvw.x * (2 * kHalfTurn)));
}

}  // namespace sorvanix
