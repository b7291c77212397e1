#include "host/render/matrix.h"

#include <gtest/gtest.h>

#include "host/render/vec3.h"
#include "tests/host/render/matchers.h"

namespace sorvanix::host {
namespace {

// Turns x to y and y to -x, doubles z, moves by (1, 2, 3).
constexpr Matrix kSample = {{1, 2, 3}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 2}};

bool IsIdentity(const Matrix& m) {
  return m.off.x == 0 && m.off.y == 0 && m.off.z == 0 && m.v1.x == 1 && m.v1.y == 0 &&
         m.v1.z == 0 && m.v2.x == 0 && m.v2.y == 1 && m.v2.z == 0 && m.v3.x == 0 && m.v3.y == 0 &&
         m.v3.z == 1;
}

TEST(Matrix, InverseTakesPointsBack) {
  const Matrix inverse = Inverse(kSample);
  // (5, 6, 7) goes to (1 - 6, 2 + 5, 3 + 14).
  EXPECT_THAT(MapPoint(kSample, {5, 6, 7}), Vec(-5, 7, 17));
  EXPECT_THAT(MapPoint(inverse, {-5, 7, 17}), Vec(5, 6, 7));
}

TEST(Matrix, InverseOfASingularMapIsTheIdentity) {
  EXPECT_TRUE(IsIdentity(Inverse({{4, 5, 6}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}})));
  EXPECT_TRUE(IsIdentity(Inverse({})));
  EXPECT_TRUE(IsIdentity(Inverse({{0, 0, 0}, {NAN, 0, 0}, {0, 1, 0}, {0, 0, 1}})));
}

TEST(Matrix, NormalsStayPerpendicular) {
  // A plane that leans at 45 degrees, stretched along x: normal (1, 1, 0), direction (1, -1, 0).
  const Matrix stretched = {{0, 0, 0}, {3, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  const Vec3 normal = MapDirection(NormalMatrix(stretched), {1, 1, 0});
  EXPECT_THAT(normal, Vec(1, 3, 0));
  EXPECT_EQ(Dot(normal, MapDirection(stretched, {1, -1, 0})), 0);
}

TEST(Matrix, TableOfTheContract) {
  MatrixTable table = {};
  InstallMatrices(table);
  Matrix product;
  const Matrix scale = {{0, 0, 0}, {100, 0, 0}, {0, 100, 0}, {0, 0, 100}};
  table.multiply(&scale, &kSample, &product);  // kSample first: its offset is scaled too
  EXPECT_THAT(product.off, FloatVec(100, 200, 300));
  EXPECT_THAT(product.v2, FloatVec(-100, 0, 0));
  Vector image;
  const Vector point = {5, 6, 7};
  table.transform(&kSample, &point, &image);
  EXPECT_THAT(image, FloatVec(-5, 7, 17));
  Matrix inverse;
  table.invert(&kSample, &inverse);
  table.transform(&inverse, &image, &image);
  EXPECT_THAT(image, FloatVec(5, 6, 7));
}

TEST(Matrix, TableToleratesNull) {
  MatrixTable table = {};
  InstallMatrices(table);
  Matrix result = {};
  table.invert(nullptr, &result);
  EXPECT_TRUE(IsIdentity(result));
  table.multiply(nullptr, nullptr, &result);
  EXPECT_TRUE(IsIdentity(result));
  Vector image = {9, 9, 9};
  table.transform(nullptr, nullptr, &image);
  EXPECT_THAT(image, FloatVec(0, 0, 0));
  table.invert(&kSample, nullptr);
  table.multiply(&kSample, &kSample, nullptr);
  table.transform(&kSample, nullptr, nullptr);
}

}  // namespace
}  // namespace sorvanix::host
