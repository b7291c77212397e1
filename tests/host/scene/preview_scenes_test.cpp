// The scenes that previews are rendered in, as they are installed.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <numbers>
#include <string>

#include "host/scene/scene_file.h"
#include "tests/host/scene/vector_checks.h"

namespace sorvanix::host {
namespace {

struct Expected {
  const char* shape;
  PrimitiveShape primitive;
};

class PreviewScene : public ::testing::TestWithParam<Expected> {
 protected:
  PreviewScene() {
    const std::filesystem::path module = SORVANIX_MODULE_PATH;
    const std::string name = std::string("Preview_") + GetParam().shape + "_C.c4d";
    SceneReading reading = LoadScene(module.parent_path() / "Resources" / name);
    for (const SceneProblem& problem : reading.problems) ADD_FAILURE() << Describe(name, problem);
    scene_ = std::move(reading.scene);
  }
  std::unique_ptr<Scene> scene_;
};
INSTANTIATE_TEST_SUITE_P(All, PreviewScene,
                         ::testing::Values(Expected{"Sphere", PrimitiveShape::Sphere},
                                           Expected{"Cube", PrimitiveShape::Cube},
                                           Expected{"Plane", PrimitiveShape::Plane},
                                           Expected{"Cylinder", PrimitiveShape::Cylinder},
                                           Expected{"Torus", PrimitiveShape::Torus}),
                         [](const auto& info) { return info.param.shape; });

TEST_P(PreviewScene, HoldsItsObject) {
  ASSERT_NE(scene_, nullptr);
  const Object* object = scene_->FindObject("Object");
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(std::get<Primitive>(object->content).shape, GetParam().primitive);
  EXPECT_TRUE(object->textureTags.empty()) << "the preview brings its own";
}

TEST_P(PreviewScene, HasThreeLampsInDimSurroundingsAndOneShadow) {
  ASSERT_NE(scene_, nullptr);
  int shadows = 0, surroundings = 0;
  for (const LightRecord& light : Lights(*scene_)) {
    if (light.ambient != 0) {
      ++surroundings;
    } else {
      shadows += light.castShadows;
    }
  }
  EXPECT_EQ(Lights(*scene_).size(), 4u);
  EXPECT_EQ(surroundings, 1);
  EXPECT_EQ(shadows, 1);
}

TEST_P(PreviewScene, FramesItsObject) {
  ASSERT_NE(scene_, nullptr);
  const Object& object = *scene_->FindObject("Object");
  const Camera& camera = scene_->camera;
  EXPECT_EQ(camera.width, camera.height);
  const double edge = std::tan(camera.fieldOfView * std::numbers::pi / 360);
  const Matrix view = camera.ToWorld();
  double widest = 0;
  for (const Vector& point : object.mesh->points) {
    const Vector way = Minus(TransformPoint(object.world, point), view.off);
    const double depth = Dot(way, view.v3);
    ASSERT_GT(depth, 0);
    widest = std::max({widest, std::fabs(Dot(way, view.v1)) / depth / edge,
                       std::fabs(Dot(way, view.v2)) / depth / edge});
  }
  EXPECT_LT(widest, 0.95) << "all of it is in the picture";
  EXPECT_GT(widest, 0.6) << "and fills it";
}

}  // namespace
}  // namespace sorvanix::host
