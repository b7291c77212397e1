// What a scene file may say: the fields of its parts, and the kinds of objects.
//
// docs/scene_format.md tells the same to people.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "host/scene/scene.h"
#include "host/scene/scene_fields.h"

namespace sorvanix::host {

inline constexpr std::string_view kSceneFormat = "sorvanix-scene";

/// The names of a material's channels in files, by their numbers.
inline constexpr std::array<std::string_view, kMaterialChannelCount> kChannelNames = {
    "colour",    "luminance", "transparency", "reflection",    "environment",
    "diffusion", "bump",      "alpha",        "specularColour"};

/// One kind of object: its name in files, what it holds at first, and which of that may be told.
struct ObjectKind {
  std::string_view name;
  ObjectContent initial;
  SceneFields<ObjectContent> fields;
};

const std::vector<ObjectKind>& ObjectKinds();
const ObjectKind* FindObjectKind(std::string_view name);
const ObjectKind& KindOfContent(const ObjectContent& content);

const SceneFields<Scene>& FieldsOfScenes();
const SceneFields<Camera>& FieldsOfCameras();
const SceneFields<Object>& FieldsOfObjects();
const SceneFields<TextureTagNode>& FieldsOfTextures();
const SceneFields<ParticleItem>& FieldsOfParticles();  ///< the first is the position
const SceneFields<Material>& FieldsOfMaterials();
const SceneFields<MaterialChannel>& FieldsOfChannels();

}  // namespace sorvanix::host
