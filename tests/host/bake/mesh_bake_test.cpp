#include "host/bake/mesh_bake.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <set>

#include "host/images/quantise.h"
#include "host/scene/primitives.h"
#include "tests/host/render/fake_source.h"
#include "tests/host/render/matchers.h"

namespace sorvanix::host {
namespace {

std::shared_ptr<PolygonMesh> MeshOf(PrimitiveShape shape) {
  return std::make_shared<PolygonMesh>(BuildPrimitive(DefaultPrimitive(shape)));
}

Vector TexelOf(const Image& image, int x, int y) {
  const float* texel = image.rgb.data() + image.IndexOf(x, y);
  return {texel[0], texel[1], texel[2]};
}

/// A picture of where each texel is on the mesh.
Vector Place(ChannelSample& sample) { return sample.render->hitPoint; }

TEST(MeshBake, TexelsOfASphereAreWhereTheirCoordinatesSay) {
  FakeSource source(Place);
  const auto bake = BakeMesh(MeshOf(PrimitiveShape::Sphere), source,
                             {.surface = {.width = 64, .height = 32}}, {.threads = 2});
  ASSERT_TRUE(bake);
  EXPECT_GE(bake->covered, 64u * 30u);
  EXPECT_EQ(bake->overlapping, 0u);
  // But for the rows at the poles, where triangles end in a point: their charts have teeth, and
  // their coordinates fan out.
  for (int y = 1; y < 31; ++y) {
    for (int x = 0; x < 64; ++x) {
      // u = 0.5 faces -z and grows towards +x; v runs from the upper pole down.
      const double around = 2 * std::numbers::pi * ((x + 0.5) / 64 - 0.5);
      const double down = std::numbers::pi * (y + 0.5) / 32;
      const Vec3 place(TexelOf(*bake->surface.image, x, y));
      // Chords of 7.5 degrees: up to 0.5 % inside the sphere, and the coordinates as far aside.
      EXPECT_NEAR(Length(place), 100, 0.6);
      EXPECT_THAT(place, NearVec(100 * std::sin(down) * std::sin(around), 100 * std::cos(down),
                                 -100 * std::sin(down) * std::cos(around), 1.0));
    }
  }
}

TEST(MeshBake, CubeWithSixCharts) {
  std::set<std::array<int, 3>> normals;
  FakeSource source([](ChannelSample& s) { return s.render->faceNormal; });
  const auto bake =
      BakeMesh(MeshOf(PrimitiveShape::Cube), source,
               {.surface = {.width = 96, .height = 96}, .uvwSet = 1, .gutter = 0}, {.threads = 1});
  ASSERT_TRUE(bake);
  EXPECT_EQ(bake->overlapping, 0u);
  EXPECT_GT(bake->covered, 3000u);
  for (std::size_t i = 0; i < bake->surface.image->rgb.size(); i += 3) {
    const float* n = bake->surface.image->rgb.data() + i;
    if (IsBlack(Vec3(n[0], n[1], n[2]))) continue;  // between the charts
    normals.insert({static_cast<int>(std::lround(n[0])), static_cast<int>(std::lround(n[1])),
                    static_cast<int>(std::lround(n[2]))});
  }
  EXPECT_EQ(normals.size(), 6u);
}

TEST(MeshBake, OverlappingCoordinatesAreToldOf) {
  // In its first set each face of the cube fills the whole square.
  FakeSource source(Place);
  const auto bake = BakeMesh(MeshOf(PrimitiveShape::Cube), source,
                             {.surface = {.width = 16, .height = 16}}, {.threads = 1});
  EXPECT_EQ(bake->overlapping, 256u);
}

TEST(MeshBake, WithoutCoordinatesItIsAnError) {
  auto mesh = MeshOf(PrimitiveShape::Plane);
  FakeSource source(Place);
  const auto missing = BakeMesh(mesh, source, {.uvwSet = 7}, {.threads = 1});
  ASSERT_FALSE(missing);
  EXPECT_EQ(missing.error(), "the mesh has no set 7 of texture coordinates; it has 1");
  mesh->uvwSets.clear();
  const auto none = BakeMesh(mesh, source, {}, {.threads = 1});
  ASSERT_FALSE(none);
  EXPECT_EQ(none.error(), "the mesh has no texture coordinates to bake into");
  EXPECT_EQ(source.inits, 0);
}

TEST(MeshBake, EverySampleHasItsSurface) {
  FakeSource source([](ChannelSample& s) {
    const RenderContext& render = *s.render;
    EXPECT_THAT(render.tangentU, NearVec(1, 0, 0, 1e-5));
    EXPECT_THAT(render.tangentV, NearVec(0, 0, -1, 1e-5));
    EXPECT_THAT(render.faceNormal, NearVec(0, 1, 0, 1e-5));
    EXPECT_EQ(render.ray->direction[1], -1);  // straight onto the face
    EXPECT_EQ(render.side, 1);
    // A texel of 8 x 4 on a plane of 200 x 200 is 25 wide and 50 deep.
    EXPECT_NEAR(Length(Vec3(render.footprintB) - Vec3(render.footprintA)), 25, 1e-3);
    EXPECT_NEAR(Length(Vec3(render.footprintC) - Vec3(render.footprintA)), 50, 1e-3);
    EXPECT_THAT(s.delta, NearVec(1.0 / 16, 1.0 / 8, 0, 1e-6));
    EXPECT_GT(render.lightParamA, 0);
    return Vector{1, 1, 1};
  });
  const auto bake = BakeMesh(MeshOf(PrimitiveShape::Plane), source,
                             {.surface = {.width = 8, .height = 4}}, {.threads = 1});
  EXPECT_EQ(bake->covered, 32u);
}

TEST(MeshBake, TilesContinueOneAnother) {
  // A plane whose coordinates go over two tiles; its picture is u itself.
  auto mesh = MeshOf(PrimitiveShape::Plane);
  for (Corners& corners : mesh->uvwSets[0].corners) {
    for (Vector& corner : corners) corner.x *= 2;
  }
  const auto tiles = TilesOfMesh(mesh, 0);
  ASSERT_EQ(tiles.size(), 2u);
  EXPECT_EQ(tiles[0].Udim(), 1001);
  EXPECT_EQ(tiles[1].Udim(), 1002);
  FakeSource source([](ChannelSample& s) { return Vector{s.uvw.x, s.render->hitPoint.x, 0}; });
  const auto bakeTile = [&](const UvTile& tile) {
    return *BakeMesh(mesh, source, {.surface = {.width = 16, .height = 16}, .tile = tile},
                     {.threads = 1})
                ->surface.image;
  };
  const Vector left = TexelOf(bakeTile(tiles[0]), 15, 3), right = TexelOf(bakeTile(tiles[1]), 0, 3);
  // One texel is 1/16 of u, and 200/32 units of the plane.
  EXPECT_NEAR(right.x - left.x, 1.0 / 16, 1e-6);
  EXPECT_NEAR(right.y - left.y, 200.0 / 32, 1e-3);
}

TEST(MeshBake, UnbentNormalsAreExactlyTheMiddle) {
  FakeSource source([](ChannelSample&) { return Vector{}; });
  for (const PrimitiveShape shape : {PrimitiveShape::Sphere, PrimitiveShape::Torus}) {
    const auto bake =
        BakeMesh(MeshOf(shape), source,
                 {.surface = {.width = 64, .height = 64, .normalMap = NormalConvention::OpenGl}},
                 {.threads = 1});
    const Image& image = *bake->surface.image;
    for (std::size_t i = 0; i < image.rgb.size(); i += 3) {
      ASSERT_EQ(Quantise(image.rgb[i], 255), 128u);
      ASSERT_EQ(Quantise(image.rgb[i + 1], 255), 128u);
      ASSERT_EQ(Quantise(image.rgb[i + 2], 255), 255u);
    }
  }
}

TEST(MeshBake, ThreadsGiveTheSamePicture) {
  FakeSource source([](ChannelSample& s) {
    return Vector{s.render->hitPoint.x, s.uvw.y, s.delta.x};
  });
  const MeshBakeSettings settings = {.surface = {.width = 40, .height = 50, .samples = 2}};
  const auto mesh = MeshOf(PrimitiveShape::Torus);
  const auto one = BakeMesh(mesh, source, settings, {.threads = 1});
  const auto eight = BakeMesh(mesh, source, settings, {.threads = 8});
  EXPECT_EQ(one->surface.image->rgb, eight->surface.image->rgb);
}

TEST(MeshBake, ASourceThatRefusesGivesNoPicture) {
  FakeSource source(Place);
  source.takesPart = false;
  const auto bake = BakeMesh(MeshOf(PrimitiveShape::Plane), source, {}, {.threads = 1});
  ASSERT_TRUE(bake);
  EXPECT_FALSE(bake->surface.tookPart);
  EXPECT_FALSE(bake->surface.image);
}

}  // namespace
}  // namespace sorvanix::host
