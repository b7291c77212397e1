#include "host/render/uv_frame.h"

#include <cmath>

namespace sorvanix::host {

namespace {

/// The slope of both coordinates along a unit vector.
struct Slope {
  double u, v;
};

double Smaller(double a, double b) { return std::abs(a) <= std::abs(b) ? a : b; }

std::optional<Slope> SlopeAlong(const UvwFunction& uvwAt, const Vec3& middle, const Vec3& point,
                                const Vec3& axis, double step) {
  const std::optional<Vec3> before = uvwAt(point - axis * step);
  const std::optional<Vec3> after = uvwAt(point + axis * step);
  if (!before || !after) return std::nullopt;
  return Slope{Smaller(after->x - middle.x, middle.x - before->x) / step,
               Smaller(after->y - middle.y, middle.y - before->y) / step};
}

}  // namespace

SurfaceAxes AnyAxes(const Vec3& normal) noexcept {
  // The axis along which the normal is least, so that the cross product never vanishes.
  const double x = std::abs(normal.x), y = std::abs(normal.y), z = std::abs(normal.z);
  Vec3 axis = {0, 0, 1};
  if (x <= y && x <= z) {
    axis = {1, 0, 0};
  } else if (y <= z) {
    axis = {0, 1, 0};
  }
  const Vec3 first = Normalised(Perpendicular(axis, normal), {1, 0, 0});
  return {first, Cross(normal, first)};
}

UvFrame FrameFromGradients(const Vec3& uvw, const Vec3& gradientU, const Vec3& gradientV,
                           const Vec3& normal) noexcept {
  UvFrame frame = {.uvw = uvw, .gradientU = gradientU, .gradientV = gradientV};
  if (!IsFinite(gradientU)) frame.gradientU = {};
  if (!IsFinite(gradientV)) frame.gradientV = {};
  // Along growing u, v stays the same, and the other way round.
  const Vec3 alongU = Cross(frame.gradientV, normal);
  const Vec3 alongV = Cross(normal, frame.gradientU);
  const double area = Dot(frame.gradientU, alongU);
  if (area != 0 && std::isfinite(area)) {
    frame.tangentU = Normalised(alongU * area);
    frame.tangentV = Normalised(alongV * area);
  }
  if (IsBlack(frame.tangentU) || IsBlack(frame.tangentV)) {
    const SurfaceAxes any = AnyAxes(normal);
    frame.tangentU = Normalised(frame.gradientU, Normalised(alongU, any.first));
    frame.tangentV = Cross(normal, frame.tangentU);
  }
  return frame;
}

UvFrame FrameOfTriangle(const Vec3 (&corner)[3], const Vec3 (&uvw)[3], double b, double c,
                        const Vec3& normal) noexcept {
  const Vec3 edgeB = corner[1] - corner[0], edgeC = corner[2] - corner[0];
  const Vec3 across = Cross(edgeB, edgeC);
  const double square = Dot(across, across);
  // How the barycentric coordinates change by unit of length.
  const Vec3 gradientB = Cross(edgeC, across) / square;
  const Vec3 gradientC = Cross(across, edgeB) / square;
  const Vec3 changeB = uvw[1] - uvw[0], changeC = uvw[2] - uvw[0];
  return FrameFromGradients(uvw[0] + changeB * b + changeC * c,
                            gradientB * changeB.x + gradientC * changeC.x,
                            gradientB * changeB.y + gradientC * changeC.y, normal);
}

std::optional<UvFrame> FrameByDifferences(const UvwFunction& uvwAt, const Vec3& point,
                                          const Vec3& normal, double step) {
  const std::optional<Vec3> middle = uvwAt(point);
  if (!middle) return std::nullopt;
  const SurfaceAxes axes = AnyAxes(normal);
  const auto first = SlopeAlong(uvwAt, *middle, point, axes.first, step);
  const auto second = SlopeAlong(uvwAt, *middle, point, axes.second, step);
  if (!first || !second) return std::nullopt;
  return FrameFromGradients(*middle, axes.first * first->u + axes.second * second->u,
                            axes.first * first->v + axes.second * second->v, normal);
}

}  // namespace sorvanix::host
