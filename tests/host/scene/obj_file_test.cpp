// OBJ files: what is read of them, in which orientation, and what is refused.
#include "host/scene/obj_file.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/host/scene/vector_checks.h"

namespace sorvanix::host {
namespace {

// A square in the plane z = 0 that faces a viewer on the positive z axis: anticlockwise in the
// right-handed space of the format.
constexpr const char* kSquare =
    "v -1 -1 0\nv 1 -1 0\nv 1 1 0\nv -1 1 0\n"
    "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n"
    "vn 0 0 1\n"
    "f 1/1/1 2/2/1 3/3/1 4/4/1\n";

TEST(Obj, BecomesLeftHanded) {
  const auto mesh = ReadObj("v 1 2 3\nv 4 5 6\nv 7 8 9\nf 1 2 3\n");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_TRUE(Near(mesh->points[0], {1, 2, -3}));
}

TEST(Obj, FacesTheWayItsAuthorSawIt) {
  const auto mesh = ReadObj(kSquare);
  ASSERT_TRUE(mesh) << mesh.error();
  ASSERT_EQ(mesh->polygons.size(), 1u);
  EXPECT_FALSE(IsTriangle(mesh->polygons[0]));
  // Towards the viewer is -z here, for the polygon and for the normals of the file.
  EXPECT_LT(AreaVector(*mesh, mesh->polygons[0]).z, 0);
  EXPECT_TRUE(Near(mesh->normals[0][0], {0, 0, -1}));
}

TEST(Obj, HasTextureCoordinatesDownwards) {
  const auto mesh = ReadObj(kSquare);
  ASSERT_TRUE(mesh) << mesh.error();
  ASSERT_EQ(mesh->uvwSets.size(), 1u);
  for (std::size_t i = 0; i < 4; ++i) {
    const std::int32_t corner[] = {mesh->polygons[0].a, mesh->polygons[0].b, mesh->polygons[0].c,
                                   mesh->polygons[0].d};
    const Vector& point = PointOf(*mesh, corner[i]);
    // u from -1..1 in x; v from the top, y = 1, to the bottom.
    EXPECT_TRUE(Near(mesh->uvwSets[0].corners[0][i], {(point.x + 1) / 2, (1 - point.y) / 2, 0}));
  }
}

TEST(Obj, TurnsLargePolygonsIntoFans) {
  const auto mesh = ReadObj("v 0 0 0\nv 1 0 0\nv 2 1 0\nv 1 2 0\nv 0 1 0\nf 1 2 3 4 5\n");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_EQ(mesh->polygons.size(), 3u);
  // Shoelace formula: 0.5 |0 + (1*1 - 2*0) + (2*2 - 1*1) + (1*1 - 0*2) + 0| = 0.5 (1 + 3 + 1).
  EXPECT_DOUBLE_EQ(AreaOf(*mesh), 2.5);
}

TEST(Obj, CountsNegativeIndicesFromTheEnd) {
  const auto mesh = ReadObj("v 9 9 9\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf -3 -2 -1\n");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_EQ(mesh->polygons[0].a, 1);
}

TEST(Obj, ReadsFilesWithoutPolygonsAsEmpty) {
  for (const char* text : {"", "# nothing\n", "v 1 2 3\n", "v 0 0 0\nv 1 0 0\nf 1 2\n"}) {
    const auto mesh = ReadObj(text);
    ASSERT_TRUE(mesh) << mesh.error();
    EXPECT_TRUE(mesh->polygons.empty());
  }
}

TEST(Obj, KeepsTrianglesWithoutArea) {
  const auto mesh = ReadObj("v 1 1 1\nf 1 1 1\n");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_EQ(mesh->polygons.size(), 1u);
}

TEST(Obj, ReplacesNormalsWithoutDirection) {
  const auto mesh = ReadObj("v 0 0 0\nv 1 0 0\nv 0 1 0\nvn 0 0 0\nf 1//1 2//1 3//1\n");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_TRUE(Near(mesh->normals[0][0], {0, 0, -1})) << "that of the polygon";
}

TEST(Obj, RefusesCornersThatAreNotThere) {
  for (const char* face : {"f 1 2 4\n", "f 1 2 -9\n", "f 1 2 2147483647\n"}) {
    const auto mesh = ReadObj(std::string("v 0 0 0\nv 1 0 0\nv 0 1 0\n") + face);
    ASSERT_FALSE(mesh) << face;
    EXPECT_EQ(mesh.error().find('\n'), std::string::npos) << "one line";
  }
}

TEST(Obj, RefusesPointsBeyondNumbers) {
  const auto mesh = ReadObj("v 1e999 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
  ASSERT_FALSE(mesh);
  EXPECT_EQ(mesh.error(), "point 0 is not finite");
}

TEST(Obj, RefusesPolygonsThatItsLoaderMiscounts) {
  std::string text;
  for (int i = 0; i < 300; ++i) text += "v " + std::to_string(i) + " 0 0\n";
  text += "f";
  for (int i = 1; i <= 300; ++i) text += " " + std::to_string(i);
  const auto mesh = ReadObj(text + "\n");
  ASSERT_FALSE(mesh);
  EXPECT_EQ(mesh.error(), "there is a polygon with more than 255 corners");
}

TEST(Obj, DoesNotBelieveSizesThatItAnnounces) {
  const auto mesh =
      ReadObj("t crease 2000000000/2000000000/2000000000\nmtllib /dev/zero\nv 0 0 0\n");
  ASSERT_TRUE(mesh) << mesh.error();
  EXPECT_EQ(mesh->points.size(), 1u);
}

}  // namespace
}  // namespace sorvanix::host
