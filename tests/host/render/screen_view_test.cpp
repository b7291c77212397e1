#include "host/render/screen_view.h"

#include <gtest/gtest.h>

#include "host/render/ray.h"
#include "tests/host/render/matchers.h"

namespace sorvanix::host {
namespace {

constexpr Matrix kAt500 = {{0, 0, -500}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

TEST(ScreenView, PixelsOfAPoint) {
  // 90 degrees across 400 pixels: the picture plane is 200 pixels away.
  const ScreenView view(kAt500, 90, 400, 300);
  EXPECT_NEAR(view.FocalLength(), 200, 1e-9);
  EXPECT_THAT(view.ToCamera({10, 20, 0}), Vec(10, 20, 500));
  EXPECT_THAT(view.ToPixels({0, 0, 10}), Vec(200, 150, 10));
  EXPECT_THAT(view.ToPixels({10, 5, 10}), NearVec(400, 50, 10, 1e-9));
  EXPECT_THAT(view.ToPixels({3, 4, 0}), Vec(200, 150, 0));  // no depth: the middle
}

TEST(ScreenView, TheRayThroughAPixelComesBackToIt) {
  const Matrix turned = {{1, 2, 3}, {0, 0, 1}, {0, 1, 0}, {-1, 0, 0}};
  const ScreenView view(turned, 50, 320, 200);
  const Ray ray = CameraRay(view, 17.5, 120.25, 1);
  const Vec3 pixel = view.ToPixels(view.ToCamera(ray.origin + ray.direction * 70));
  EXPECT_NEAR(pixel.x, 17.5, 1e-4);  // the matrix is of floats
  EXPECT_NEAR(pixel.y, 120.25, 1e-4);
}

TEST(Ray, HeadOnTheFootprintIsThePixel) {
  const ScreenView view(kAt500, 90, 400, 300);
  const Ray ray = CameraRay(view, 200, 150, 1);
  EXPECT_THAT(ray.direction, Vec(0, 0, 1));
  // At a distance of 500 a pixel of the plane at 200 is 500/200 across; downwards is -y.
  const Footprint footprint = FootprintAt(ray, 500, {0, 0, -1});
  EXPECT_THAT(footprint.side[0], NearVec(2.5, 0, 0, 1e-9));
  EXPECT_THAT(footprint.side[1], NearVec(0, -2.5, 0, 1e-9));
}

TEST(Ray, FootprintsAreTheDistancesOfNeighbouringHits) {
  const ScreenView view(kAt500, 60, 400, 300);
  // Rays of neighbouring pixels on the plane z = 0, by hand: origin + way * 500 / way.z.
  const auto hit = [&](double x, double y) {
    const Vec3 way = view.WayThrough(x, y);
    return Vec3(0, 0, -500) + way * (500 / way.z);
  };
  const Ray ray = CameraRay(view, 300, 40, 1);
  const double distance = 500 / ray.direction.z;
  const Footprint footprint = FootprintAt(ray, distance, {0, 0, -1});
  const Vec3 right = hit(301, 40) - hit(300, 40), below = hit(300, 41) - hit(300, 40);
  EXPECT_THAT(footprint.side[0], NearVec(right.x, right.y, right.z, 1e-9));
  EXPECT_THAT(footprint.side[1], NearVec(below.x, below.y, below.z, 1e-9));
}

TEST(Ray, SeveralSamplesShareThePixel) {
  const ScreenView view(kAt500, 90, 400, 300);
  const Footprint footprint = FootprintAt(CameraRay(view, 200, 150, 0.25), 500, {0, 0, -1});
  EXPECT_THAT(footprint.side[0], NearVec(0.625, 0, 0, 1e-9));
}

TEST(Ray, GrazingFootprintsStayFinite) {
  Ray ray = {.origin = {}, .direction = {1, 0, 0}};
  ray.directionStep[0] = {0, 0.01, 0};
  const Footprint footprint = FootprintAt(ray, 100, {0, 1, 0});
  // 1 across the ray, limited to a thousand along it.
  EXPECT_THAT(footprint.side[0], NearVec(-1000, 1, 0, 1e-9));
}

TEST(Ray, AMirrorFoldsTheWay) {
  // A ray that a plane at z = 500 mirrors sees, 300 farther, what a ray of 800 would see.
  const ScreenView view(kAt500, 90, 400, 300);
  const Ray ray = CameraRay(view, 200, 150, 1);
  const Vec3 toViewer = {0, 0, -1};
  const Ray mirrored = Mirror(ray, {0, 0, 0}, FootprintAt(ray, 500, toViewer), toViewer, toViewer);
  EXPECT_THAT(mirrored.direction, Vec(0, 0, -1));
  EXPECT_THAT(FootprintAt(mirrored, 300, {0, 0, 1}).side[0], NearVec(800 / 200.0, 0, 0, 1e-9));
}

TEST(Ray, ABentNormalDoesNotMirrorIntoTheFace) {
  // A normal 60 degrees aside mirrors a ray along z to (sin 120, 0, -cos 120): half of it inwards.
  // The face turns that half round.
  const double sine = std::sqrt(0.75);
  const Ray ray = {.origin = {}, .direction = {0, 0, 1}};
  const Vec3 bent = {sine, 0, -0.5};
  EXPECT_THAT(Mirror(ray, {}, {}, bent, {0, 0, -1}).direction, NearVec(sine, 0, -0.5, 1e-12));
  // Seen from the back of the face it is the same.
  EXPECT_THAT(Mirror(ray, {}, {}, bent, {0, 0, 1}).direction, NearVec(sine, 0, -0.5, 1e-12));
  // 30 degrees aside stay outside as they are: (sin 60, 0, -cos 60).
  EXPECT_THAT(Mirror(ray, {}, {}, {0.5, 0, -sine}, {0, 0, -1}).direction,
              NearVec(sine, 0, -0.5, 1e-12));
}

}  // namespace
}  // namespace sorvanix::host
