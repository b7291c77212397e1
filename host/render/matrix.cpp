#include "host/render/matrix.h"

#include "host/render/vec3.h"
#include "host/scene/transform.h"

namespace sorvanix::host {

namespace {

void InvertEntry(const Matrix* matrix, Matrix* result) noexcept {
  if (result != nullptr) *result = matrix == nullptr ? kIdentityMatrix : Inverse(*matrix);
}

void MultiplyEntry(const Matrix* first, const Matrix* second, Matrix* result) noexcept {
  if (result == nullptr) return;
  const Matrix a = first == nullptr ? kIdentityMatrix : *first;
  const Matrix b = second == nullptr ? kIdentityMatrix : *second;
  *result = {MapPoint(a, Vec3(b.off)).Narrow(), MapDirection(a, Vec3(b.v1)).Narrow(),
             MapDirection(a, Vec3(b.v2)).Narrow(), MapDirection(a, Vec3(b.v3)).Narrow()};
}

void TransformEntry(const Matrix* matrix, const Vector* point, Vector* result) noexcept {
  if (result == nullptr) return;
  const Vec3 p = point == nullptr ? Vec3() : Vec3(*point);
  *result = matrix == nullptr ? p.Narrow() : MapPoint(*matrix, p).Narrow();
}

}  // namespace

Matrix Inverse(const Matrix& matrix) noexcept {
  const Vec3 x(matrix.v1), y(matrix.v2), z(matrix.v3);
  const double determinant = Dot(x, Cross(y, z));
  // The rows of the inverse, by Cramer's rule.
  const Vec3 rowX = Cross(y, z) / determinant;
  const Vec3 rowY = Cross(z, x) / determinant;
  const Vec3 rowZ = Cross(x, y) / determinant;
  if (determinant == 0 || !IsFinite(rowX) || !IsFinite(rowY) || !IsFinite(rowZ))
    return kIdentityMatrix;
  const Vec3 off = -Vec3(matrix.off);
  return {Vec3(Dot(rowX, off), Dot(rowY, off), Dot(rowZ, off)).Narrow(),
          Vec3(rowX.x, rowY.x, rowZ.x).Narrow(), Vec3(rowX.y, rowY.y, rowZ.y).Narrow(),
          Vec3(rowX.z, rowY.z, rowZ.z).Narrow()};
}

Matrix NormalMatrix(const Matrix& matrix) noexcept {
  const Vec3 x(matrix.v1), y(matrix.v2), z(matrix.v3);
  return {{0, 0, 0}, Cross(y, z).Narrow(), Cross(z, x).Narrow(), Cross(x, y).Narrow()};
}

void InstallMatrices(MatrixTable& table) noexcept {
  table = {.invert = InvertEntry, .multiply = MultiplyEntry, .transform = TransformEntry};
}

}  // namespace sorvanix::host
