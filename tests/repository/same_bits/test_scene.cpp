#include "tests/repository/same_bits/test_scene.h"

#include "module/kit/matrix.h"
#include "module/kit/vector.h"
#include "tests/repository/same_bits/exact_noise.h"

namespace sorvanix::test {

namespace {

constexpr LightRecord kLight = [] {
  LightRecord light = {};
  light.contrast = 0.25f;
  return light;
}();
constexpr Matrix kCamera = {{10, 20, -300}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
constexpr std::int32_t kPicture[2] = {640, 480};

void InstallLights(RenderTable& table) {
  table.illuminate = [](const RenderContext* render, Vector* diffuse, Vector* specular,
                        float exponent) noexcept {
    const float facing = render->bumpNormal.z > 0 ? render->bumpNormal.z : 0;
    AddInPlace(*diffuse, {facing, 0.5f * facing, 0.25f});
    AddInPlace(*specular, Scale(exponent < 100 ? facing : facing * facing, {1, 1, 1}));
  };
  table.lightCount = [](const RenderContext*) noexcept { return std::int32_t{2}; };
  table.lightAt = [](const RenderContext*, std::int32_t) noexcept { return &kLight; };
  table.lightSample = [](const RenderContext*, const LightRecord*, Vector* colour,
                         Vector* direction, const Vector*, const Vector*, std::int32_t shadows,
                         std::int32_t) noexcept {
    *colour = shadows != 0 ? Vector{0.5f, 0.5f, 0.25f} : Vector{1, 0.75f, 0.5f};
    *direction = {0.6f, 0, 0.8f};
    return std::int32_t{1};
  };
}

void InstallSurface(RenderTable& table) {
  table.query = [](const RenderContext*, std::int32_t number) noexcept -> const void* {
    if (number == QueryCameraMatrix) return &kCamera;
    return number == QueryPictureSize ? kPicture : nullptr;
  };
  table.projectToScreen = [](const RenderContext*, const Vector* point, Vector* screen) noexcept {
    *screen = {320 + point->x, 240 - point->y, point->z};
  };
  table.pointToUvw = [](const RenderContext*, const TextureTag*, std::int32_t, const Vector* point,
                        const Vector*, Vector* uvw) noexcept { *uvw = Scale(0.01f, *point); };
  table.surfaceAxes = [](const RenderContext*, const TextureTag*, const Vector*, const Vector*,
                         Vector* u, Vector* v) noexcept {
    *u = {1, 0, 0};
    *v = {0, 1, 0};
  };
  table.projectTexture = [](const TextureTag* tag, const RenderContext*, const Vector* point,
                            const UvwRecord*, Vector* uvw) noexcept {
    *uvw = {point->x - tag->offsetU, point->y - tag->offsetV, point->z};
    return std::int32_t{1};
  };
  table.splineLookup = [](float value, const float* curve, std::int32_t count) noexcept {
    return curve[static_cast<std::int32_t>(value * static_cast<float>(count - 1))];
  };
}

}  // namespace

void InstallTestScene(RenderTable& table) {
  InstallExactNoise(table);
  InstallLights(table);
  InstallSurface(table);
}

TestSurface::TestSurface() {
  tag_.matrix1 = {{5, -3, 2}, {50, 0, 0}, {0, 40, 10}, {0, -10, 60}};
  tag_.matrix2 = Invert(tag_.matrix1);
  tag_.flags = 1;
  tag_.lengthU = tag_.lengthV = 1;
  object_.matrix = {{1, 2, 3}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 2}};
  render.ray = &ray_;
  render.textureTag = &tag_;
  render.object = &object_;
  render.side = 1;
  render.lightParamA = 1;
  render.lightCount = 2;
  render.lightsEnabled = render.filteringOn = 1;
  render.filterScale = 1;
  render.tangentU = {1, 0, 0};
  render.tangentV = {0, 1, 0};
}

void TestSurface::Hit(Inputs& inputs) {
  render.hitPoint = inputs.Point(-100, 100);
  render.localHitPoint = Transform(render.hitPoint, tag_.matrix2);
  render.footprintA = Add(render.hitPoint, inputs.Point(-0.5, 0.5));
  render.footprintB = Add(render.hitPoint, inputs.Point(-0.5, 0.5));
  render.footprintC = Add(render.hitPoint, inputs.Point(-0.5, 0.5));
  render.viewPoint = inputs.Point(100, 300);
  const Vector tilt = inputs.Point(-0.5, 0.5);
  render.baseNormal = render.bumpNormal = Normalized(Vector{tilt.x, tilt.y, 1});
  render.faceNormal = {0, 0, 1};
}

}  // namespace sorvanix::test
