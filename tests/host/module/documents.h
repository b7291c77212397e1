// Documents with the real shaders in them, for tests.
#pragma once

#include "host/scene/material_links.h"
#include "host/scene/scene_file.h"
#include "tests/host/module/loaded.h"

namespace sorvanix::host::test {

struct Documents : RealModuleTest {
  SceneReading Read(const std::string& text) {
    return ReadScene(text, "scene.json", {.catalogue = &catalogue});
  }
  std::unique_ptr<Scene> Load(const std::string& text) {
    SceneReading reading = Read(text);
    for (const SceneProblem& problem : reading.problems) {
      EXPECT_FALSE(problem.isError) << Describe("scene.json", problem);
    }
    if (reading.scene != nullptr) warnings = LinkMaterials(*reading.scene);
    return std::move(reading.scene);
  }
  // As a program would: the states and the graphs of all links, then the text.
  std::string Save(Scene& scene) {
    StoreStates(scene, &catalogue);
    return SceneText(scene);
  }
  // A scene whose one material has the shader in its colour.
  std::unique_ptr<Scene> SceneWith(std::int32_t shader) {
    auto scene = std::make_unique<Scene>();
    auto material = std::make_shared<Material>();
    material->name.text = "M";
    material->channels[0].on = true;
    EXPECT_TRUE(LinkOf(material->channels[0]).HoldShader(shader));
    scene->Add(std::move(material));
    return scene;
  }
  static MaterialChannel& ChannelOf(Scene& scene) { return scene.materials.at(0)->channels[0]; }
  static Shader& ShaderOf(Scene& scene) { return *ChannelOf(scene).link->HeldShader(); }

  std::vector<std::string> warnings;
};

}  // namespace sorvanix::host::test
