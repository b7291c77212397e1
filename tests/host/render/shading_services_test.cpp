// The shading operations as a shader reaches them: through the render table.
#include "host/render/shading_services.h"

#include <gtest/gtest.h>

#include "tests/host/render/matchers.h"
#include "tests/host/render/wall.h"

namespace sorvanix::host {
namespace {

LightRecord Headlight() {
  LightRecord light = {};
  light.type = LightDistant;
  light.colour = {1, 0.5f, 0.25f};
  light.direction = {0, 0, 1};
  light.castShadows = 1;
  return light;
}

struct Wall : Occluder {
  bool Blocks(const Vec3&, const Vec3&, double, std::int32_t identity) const noexcept override {
    asked = identity;
    return true;
  }
  mutable std::int32_t asked = 0;
};

class ShadingServices : public testing::Test {
 protected:
  ShadingServices() {
    InstallShadingServices(table);
    wall.lights = {Headlight()};
    wall.Begin();
    render = wall.Context();
  }

  RenderTable table = {};
  WallSample wall;
  RenderContext* render;
};

TEST_F(ShadingServices, Threads) {
  wall.frame.threadCount = 8;
  wall.record.threadIndex = 3;
  EXPECT_EQ(table.cpuCount(render), 8);
  EXPECT_EQ(table.cpuIndex(render), 3);
}

TEST_F(ShadingServices, QueriesOfPictureAndCamera) {
  const auto* size = static_cast<const std::int32_t*>(table.query(render, QueryPictureSize));
  ASSERT_NE(size, nullptr);
  EXPECT_EQ(size[0], 200);
  EXPECT_EQ(size[1], 100);
  const auto* camera = static_cast<const Matrix*>(table.query(render, QueryCameraMatrix));
  ASSERT_NE(camera, nullptr);
  EXPECT_THAT(camera->off, FloatVec(0, 0, -10));
  EXPECT_EQ(table.query(render, 1), nullptr);
  wall.frame.view = nullptr;
  EXPECT_EQ(table.query(render, QueryCameraMatrix), nullptr);
}

TEST_F(ShadingServices, ScreenProjectionOfACameraPoint) {
  const Vector point = {5, 2.5f, 10};
  Vector screen;
  // 90 degrees across 200 pixels: half way to the right edge, half way to the upper one.
  table.projectToScreen(render, &point, &screen);
  EXPECT_THAT(screen, NearVec(150, 25, 10, 1e-4));
  wall.frame.view = nullptr;
  table.projectToScreen(render, &point, &screen);
  EXPECT_THAT(screen, FloatVec(5, 2.5, 10));
}

TEST_F(ShadingServices, IlluminateAddsUnlessLightsAreOff) {
  Vector diffuse = {1, 1, 1}, specular = {0, 0, 0};
  table.illuminate(render, &diffuse, &specular, 10);
  EXPECT_THAT(diffuse, FloatVec(2, 1.5, 1.25));
  EXPECT_THAT(specular, FloatVec(1, 0.5, 0.25));
  render->lightsEnabled = 0;
  table.illuminate(render, &diffuse, &specular, 10);
  EXPECT_THAT(diffuse, FloatVec(2, 1.5, 1.25));
  render->lightsEnabled = 1;
  table.illuminate(render, nullptr, nullptr, 10);
}

TEST_F(ShadingServices, IlluminateTakesTheBentNormalAsItStands) {
  Vector diffuse = {}, specular = {};
  render->bumpNormal = {0, 0, 1};
  table.illuminate(render, &diffuse, &specular, 1);
  EXPECT_THAT(diffuse, FloatVec(0, 0, 0));
  render->bumpNormal = {0.6f, 0, -0.8f};
  table.illuminate(render, &diffuse, &specular, 1);
  EXPECT_THAT(diffuse, FloatVec(0.8, 0.4, 0.2));
}

TEST_F(ShadingServices, IlluminateThrowsShadowsWhereAllowed) {
  const Wall screen;
  wall.frame.occluder = &screen;
  Vector diffuse = {}, specular = {};
  table.illuminate(render, &diffuse, &specular, 1);
  EXPECT_THAT(diffuse, FloatVec(0, 0, 0));
  EXPECT_EQ(screen.asked, 5);  // skips the hit element
  render->lightParamB = 0;
  table.illuminate(render, &diffuse, &specular, 1);
  EXPECT_THAT(diffuse, FloatVec(1, 0.5, 0.25));
}

TEST_F(ShadingServices, WithoutARayThereIsNoHighlight) {
  Vector diffuse = {}, specular = {};
  render->ray = nullptr;
  table.illuminate(render, &diffuse, &specular, 0);
  EXPECT_THAT(diffuse, FloatVec(1, 0.5, 0.25));
  EXPECT_THAT(specular, FloatVec(0, 0, 0));
}

TEST_F(ShadingServices, LightsByIndex) {
  EXPECT_EQ(table.lightCount(render), 1);
  EXPECT_EQ(table.lightAt(render, 0), wall.lights.data());
  EXPECT_EQ(table.lightAt(render, 1), nullptr);
  EXPECT_EQ(table.lightAt(render, -1), nullptr);
}

TEST_F(ShadingServices, LightSample) {
  const Wall screen;
  wall.frame.occluder = &screen;
  const Vector point = {0, 0, 0}, normal = {0, 0, -1};
  Vector colour, direction;
  const LightRecord* light = table.lightAt(render, 0);
  EXPECT_EQ(table.lightSample(render, light, &colour, &direction, &point, &normal, 0, 9), 1);
  EXPECT_THAT(colour, FloatVec(1, 0.5, 0.25));
  EXPECT_THAT(direction, FloatVec(0, 0, -1));
  EXPECT_EQ(table.lightSample(render, light, &colour, &direction, &point, &normal, 1, 9), 1);
  EXPECT_THAT(colour, FloatVec(0, 0, 0));
  EXPECT_EQ(screen.asked, 9);
  EXPECT_EQ(table.lightSample(render, nullptr, &colour, &direction, &point, &normal, 1, 9), 0);
}

TEST_F(ShadingServices, AreaLightLightsTheFarSide) {
  LightRecord light = Headlight();
  light.type = LightRectangle;
  light.position = {0, 0, 10};  // behind the wall, as seen by the ray
  const Vector ray = {0, 0, 1}, point = {0, 0, 0};
  Vector sum = {1, 1, 1};
  table.areaLight(render, &light, 2, &ray, 1, &point, &sum);
  EXPECT_THAT(sum, FloatVec(3, 2, 1.5));
  light.position = {0, 0, -10};
  table.areaLight(render, &light, 2, &ray, 1, &point, &sum);
  EXPECT_THAT(sum, FloatVec(3, 2, 1.5));
}

TEST_F(ShadingServices, PointToUvwGoesAlongTheGradients) {
  const TextureTag tag = UvwTag();
  LayTexture(wall.record, &tag, *FrameOfTag(wall.record, tag, 0), 0);
  const Vector normal = {0, 0, -1};
  Vector uvw;
  // The hit, (0.5, 1), has (0.75, 0.25); 0.4 to the right of 2, 0.4 down of 4.
  const Vector moved = {0.9f, 0.6f, 0};
  table.pointToUvw(render, nullptr, 5, &moved, &normal, &uvw);
  EXPECT_THAT(uvw, FloatVec(0.95, 0.35, 0));
}

TEST_F(ShadingServices, PointToUvwTakesFootprintPointsToo) {
  // Under a tag a footprint is in the tag's space times 100. The tag is 100 units large and turned,
  // so the hit (0.5, 1, 0) has the footprint (1, -0.5, 0).
  TextureTag tag = UvwTag();
  tag.matrix2 = {{0, 0, 0}, {0, -0.01f, 0}, {0.01f, 0, 0}, {0, 0, 0.01f}};
  LayTexture(wall.record, &tag, *FrameOfTag(wall.record, tag, 0), 0);
  const Vector moved = {1.4f, -0.5f, 0}, normal = {0, 0, -1};  // by 0.4 along tangentU
  Vector uvw;
  table.pointToUvw(render, &tag, 5, &moved, &normal, &uvw);
  EXPECT_THAT(uvw, FloatVec(0.95, 0.25, 0));
}

TEST_F(ShadingServices, PointToUvwOfAProjectionProjects) {
  TextureTag tag = UvwTag();
  tag.projection = 2;
  LayTexture(wall.record, &tag, *FrameOfTag(wall.record, tag, 0), 0);
  const Vector moved = {0.25f, 0.5f, 0}, normal = {0, 0, -1};
  Vector uvw;
  table.pointToUvw(render, &tag, 5, &moved, &normal, &uvw);
  EXPECT_THAT(uvw, FloatVec(0.625, 0.25, 0));
}

TEST_F(ShadingServices, AHitThatAShaderMovedDoesNotMoveTheCoordinates) {
  const TextureTag tag = UvwTag();
  LayTexture(wall.record, &tag, *FrameOfTag(wall.record, tag, 0), 0);
  const Vector hit = render->hitPoint, normal = {0, 0, -1};
  render->hitPoint = {50, 50, 50};
  Vector uvw;
  table.pointToUvw(render, &tag, 5, &hit, &normal, &uvw);
  EXPECT_THAT(uvw, FloatVec(0.75, 0.25, 0));
}

TEST_F(ShadingServices, SurfaceAxesFollowTheCoordinates) {
  const TextureTag tag = UvwTag();
  LayTexture(wall.record, &tag, *FrameOfTag(wall.record, tag, 0), 0);
  Vector u, v;
  table.surfaceAxes(render, &tag, &render->hitPoint, &render->baseNormal, &u, &v);
  EXPECT_THAT(u, FloatVec(1, 0, 0));
  EXPECT_THAT(v, FloatVec(0, -1, 0));
}

TEST_F(ShadingServices, ProjectTextureDividesByTenThousand) {
  TextureTag tag = UvwTag();
  tag.projection = 2;
  const Vector point = {5000, 2500, 0};
  Vector uvw;
  EXPECT_EQ(table.projectTexture(&tag, render, &point, nullptr, &uvw), 1);
  EXPECT_THAT(uvw, FloatVec(0.75, 0.375, 0));
}

TEST_F(ShadingServices, ProjectTextureReadsTheSurfacesOwnCoordinates) {
  const TextureTag tag = UvwTag();
  const Vector point = {0, 0, 0};
  Vector uvw;
  EXPECT_EQ(table.projectTexture(&tag, render, &point, render->uvwRecord, &uvw), 1);
  EXPECT_THAT(uvw, FloatVec(0.5, 0.5, 0));
  EXPECT_EQ(table.projectTexture(&tag, render, &point, nullptr, &uvw), 0);
}

TEST_F(ShadingServices, SetUpChoosesTheSetOfCoordinates) {
  const Vector points[4] = {render->hitPoint, render->footprintA, render->footprintB,
                            render->footprintC};
  const TextureTag tag = UvwTag();
  Vector uvw;
  const auto uAt = [&](std::int32_t uvwIndex) {
    table.setUpTexture(render, points, uvwIndex);
    table.projectTexture(&tag, render, &points[0], render->uvwRecord, &uvw);
    return uvw.x;
  };
  EXPECT_FLOAT_EQ(uAt(1), 0.75f);
  EXPECT_FLOAT_EQ(uAt(2), 7.5f);
  EXPECT_FLOAT_EQ(uAt(0), 0.75f);  // numbers that the mesh lacks are the first set
  EXPECT_FLOAT_EQ(uAt(3), 0.75f);
  EXPECT_FLOAT_EQ(uAt(-5), 0.75f);
}

TEST_F(ShadingServices, PreparedPointsOfAnotherSpaceAreFoundOnTheSurface) {
  // A caller that keeps its points in the space of a tag asks for the surface's own coordinates.
  const Vector points[4] = {{77, 0, 0}, {78, 0, 0}, {79, 0, 0}, {80, 0, 0}};
  table.setUpTexture(render, points, 1);
  TextureTag tag = UvwTag();
  Vector uvw;
  table.projectTexture(&tag, render, &points[0], render->uvwRecord, &uvw);
  EXPECT_THAT(uvw, FloatVec(0.75, 0.25, 0));
  // The second corner is half a sample to the right and up: (0.51, 1.02).
  table.projectTexture(&tag, render, &points[2], render->uvwRecord, &uvw);
  EXPECT_THAT(uvw, FloatVec(0.755, 0.245, 0));

  // From the camera: the hit (0.5, 1, 0) is 10 away from it. Its picture is 20 wide there, 10 high.
  tag.projection = 4;
  const Vector almost = {77.01f, 0, 0};
  EXPECT_EQ(table.projectTexture(&tag, render, &almost, nullptr, &uvw), 1);
  EXPECT_THAT(uvw, NearVec(0.5 + 0.5 / 20, 0.5 - 1.0 / 10, 10, 1e-5));
}

TEST_F(ShadingServices, NullHandlesAnswerNeutrally) {
  const Vector point = {1, 2, 3};
  const TextureTag tag = UvwTag();
  Vector out = {7, 7, 7};
  EXPECT_EQ(table.cpuCount(nullptr), 1);
  EXPECT_EQ(table.cpuIndex(nullptr), 0);
  EXPECT_EQ(table.query(nullptr, 0), nullptr);
  EXPECT_EQ(table.lightCount(nullptr), 0);
  EXPECT_EQ(table.lightAt(nullptr, 0), nullptr);
  table.projectToScreen(nullptr, &point, &out);
  EXPECT_THAT(out, FloatVec(1, 2, 3));
  out = {7, 7, 7};
  table.projectToScreen(nullptr, nullptr, &out);
  table.illuminate(nullptr, &out, &out, 1);
  table.areaLight(nullptr, nullptr, 1, &point, 1, &point, &out);
  table.pointToUvw(nullptr, &tag, 0, &point, &point, &out);
  table.surfaceAxes(nullptr, &tag, &point, &point, &out, &out);
  table.setUpTexture(nullptr, nullptr, 1);
  EXPECT_EQ(table.projectTexture(nullptr, render, &point, nullptr, &out), 0);
  EXPECT_EQ(table.projectTexture(&tag, nullptr, &point, nullptr, &out), 0);
  EXPECT_THAT(out, FloatVec(7, 7, 7));
}

}  // namespace
}  // namespace sorvanix::host
