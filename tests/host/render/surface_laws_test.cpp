// Laws of the primitives as a ray sees them: coordinates at known points, directions of growth.
#include <gtest/gtest.h>

#include <cmath>

#include "host/render/shading_record.h"
#include "host/render/tracer.h"
#include "tests/host/render/matchers.h"
#include "tests/host/render/scene_maker.h"

namespace sorvanix::host {
namespace {

class SurfaceLaws : public testing::TestWithParam<PrimitiveShape> {
 protected:
  SurfaceLaws() {
    Object& object = AddObject(scene, DefaultPrimitive(GetParam()), {.rotation = {20, 30, 0}});
    object.textureTags.push_back(std::make_unique<TextureTagNode>(object));
    tag = ToRecord(*object.textureTags[0]);
    scene.Update();
    prepared.emplace(RenderScene::Prepare(scene, 64, 64));
    tracer.emplace(*Tracer::Create(*prepared));
    frame.view = &prepared->view;
    record.frame = &frame;
  }

  /// Calls `test` at the hits of a grid of rays, with the tag's coordinates laid on, and answers
  /// how many there were.
  template <class Test>
  int ForEachHit(Test&& test) {
    int hits = 0;
    for (int i = 0; i < 64 * 64; i += 5) {
      const Ray ray = CameraRay(prepared->view, i % 64 + 0.37, i / 64 + 0.41, 1);
      const auto hit = tracer->Intersect(ray.origin, ray.direction, 0);
      if (!hit) continue;
      const RenderObject& object = prepared->objects[hit->object];
      const SurfacePoint at = object.surface.At(hit->triangle, hit->b, hit->c);
      BeginSample(record, {.surface = &object.surface,
                           .at = at,
                           .eye = ray.origin,
                           .direction = ray.direction,
                           .footprint = FootprintAt(ray, hit->distance, at.faceNormal),
                           .identity = 1,
                           .object = &object.record});
      const auto uv = FrameOfTag(record, tag, 0);
      if (!uv) return -1;
      LayTexture(record, &tag, *uv, 0);
      test(*hit, at);
      ++hits;
    }
    return hits;
  }

  Scene scene;
  TextureTag tag = {};
  std::optional<RenderScene> prepared;
  std::optional<Tracer> tracer;
  RenderFrame frame;
  ShadingRecord record;
};

TEST_P(SurfaceLaws, TheRayMeetsThePointThatTheTriangleTells) {
  const int hits = ForEachHit([&](const RayHit& hit, const SurfacePoint& at) {
    const Vec3 onRay = record.sample.eye + record.sample.direction * hit.distance;
    EXPECT_LT(Length(onRay - at.point), 1e-3);  // Embree computes in float, hundreds of units away
  });
  EXPECT_GT(hits, 50);
}

TEST_P(SurfaceLaws, FrontFacesLookAtTheEye) {
  const int hits = ForEachHit([&](const RayHit&, const SurfacePoint& at) {
    EXPECT_LT(Dot(at.faceNormal, record.sample.direction), 0);
    EXPECT_EQ(record.context.side, 1);
    EXPECT_GT(Dot(at.faceNormal, at.normal), 0.9);
  });
  EXPECT_GT(hits, 50);
}

TEST_P(SurfaceLaws, TangentsFollowGrowingUAndV) {
  const int hits = ForEachHit([&](const RayHit&, const SurfacePoint& at) {
    const Vec3 u(record.context.tangentU), v(record.context.tangentV);
    EXPECT_NEAR(Length(u), 1, 1e-6);
    EXPECT_NEAR(Length(v), 1, 1e-6);
    // A step along one makes its own coordinate grow and leaves the other; both lie in the face.
    const Vec3 alongU = record.uv.UvwAt(u) - record.uv.uvw;
    const Vec3 alongV = record.uv.UvwAt(v) - record.uv.uvw;
    EXPECT_GT(alongU.x, 0);
    EXPECT_NEAR(alongU.y, 0, 1e-6);
    EXPECT_GT(alongV.y, 0);
    EXPECT_NEAR(alongV.x, 0, 1e-6);
    EXPECT_NEAR(Dot(u, at.faceNormal), 0, 1e-6);
    EXPECT_NEAR(Dot(v, at.faceNormal), 0, 1e-6);
    // u to the right and v downwards, seen from outside.
    EXPECT_GT(Dot(Cross(u, v), at.faceNormal), 0);
  });
  EXPECT_GT(hits, 50);
}

TEST_P(SurfaceLaws, OwnCoordinatesAreThoseOfTheCorners) {
  const int hits = ForEachHit([&](const RayHit&, const SurfacePoint&) {
    double low = 1e9, high = -1e9;
    for (int i = 0; i < record.polygon.cornerCount; ++i) {
      low = std::min<double>(low, record.polygon.uvw[i].x);
      high = std::max<double>(high, record.polygon.uvw[i].x);
    }
    EXPECT_GE(record.uv.uvw.x, low - 1e-6);
    EXPECT_LE(record.uv.uvw.x, high + 1e-6);
  });
  EXPECT_GT(hits, 50);
}

INSTANTIATE_TEST_SUITE_P(All, SurfaceLaws,
                         testing::Values(PrimitiveShape::Sphere, PrimitiveShape::Cube,
                                         PrimitiveShape::Plane, PrimitiveShape::Cylinder,
                                         PrimitiveShape::Torus));

/// The coordinates of the surface's own at the hit of a ray.
Vec3 UvwAlong(PrimitiveShape shape, const Vec3& origin, const Vec3& direction) {
  Scene scene;
  AddObject(scene, DefaultPrimitive(shape));
  scene.Update();
  const RenderScene prepared = RenderScene::Prepare(scene, 1, 1);
  const auto tracer = Tracer::Create(prepared);
  const auto hit = tracer->Intersect(origin, direction, 0);
  if (!hit) return {-1, -1, -1};
  const MeshSurface& surface = prepared.objects[0].surface;
  return surface.UvFrameAt(surface.At(hit->triangle, hit->b, hit->c), 0).uvw;
}

TEST(SurfaceCoordinates, OfTheSphere) {
  // u = 0.5 faces the viewer at -z and grows to the right; v = 0.5 is the equator.
  EXPECT_THAT(UvwAlong(PrimitiveShape::Sphere, {0, 0, -500}, {0, 0, 1}),
              NearVec(0.5, 0.5, 0, 1e-3));
  EXPECT_THAT(UvwAlong(PrimitiveShape::Sphere, {500, 0, 0}, {-1, 0, 0}),
              NearVec(0.75, 0.5, 0, 1e-3));
  EXPECT_THAT(UvwAlong(PrimitiveShape::Sphere, {-500, 0, 0}, {1, 0, 0}),
              NearVec(0.25, 0.5, 0, 1e-3));
}

TEST(SurfaceCoordinates, OfACubesFront) {
  // 50 to the right and 50 up on a face of 200: u = 3/4, v = 1/4.
  EXPECT_THAT(UvwAlong(PrimitiveShape::Cube, {50, 50, -500}, {0, 0, 1}),
              NearVec(0.75, 0.25, 0, 1e-6));
}

TEST(SurfaceCoordinates, OfThePlane) {
  // Seen from above u grows along x, and v towards the viewer, down in the picture.
  EXPECT_THAT(UvwAlong(PrimitiveShape::Plane, {50, 500, 50}, {0, -1, 0}),
              NearVec(0.75, 0.25, 0, 1e-6));
}

TEST(SurfaceCoordinates, OfTheCylindersSide) {
  // Half way up, v is the same on both sides of the set: the middle.
  const Vec3 uvw = UvwAlong(PrimitiveShape::Cylinder, {0, 0, -500}, {0, 0, 1});
  EXPECT_NEAR(uvw.x, 0.5, 1e-3);
  EXPECT_NEAR(uvw.y, 0.5, 1e-3);
}

}  // namespace
}  // namespace sorvanix::host
