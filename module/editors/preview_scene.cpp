// A preview as a render of a small scene: a material with the shader on the object named "Object".
#include "module/editors/preview_scene.h"

#include <iterator>

#include "module/editors/plugin_files.h"
#include "module/editors/shared_words.h"
#include "module/shell/host_channel.h"

namespace sorvanix {

namespace {

// By previewObject. The flat picture shows no scene, but may be changed for one at any time.
constexpr const char* kSceneNames[] = {
    "Preview_Sphere_C.c4d", "Preview_Sphere_C.c4d",   "Preview_Cube_C.c4d",
    "Preview_Plane_C.c4d",  "Preview_Cylinder_C.c4d", "Preview_Torus_C.c4d",
};

constexpr const char* kNoScene = "";  // the bare folder, which no host loads

constexpr std::int32_t kFullQuality = 2;

// The tag of an earlier pass, if there is one, is used again.
void LayMaterialOn(HostObject* object, HostMaterial* material) noexcept {
  HostTag* tag = hostObjectTag(object, TagTypeTexture);
  if (tag == nullptr) tag = hostMakeTag(object, TagTypeTexture);
  hostSetTagMaterial(tag, material);
}

}  // namespace

OwnedDocument LoadPreviewScene(std::int32_t object) noexcept {
  const bool known = object >= 0 && object < static_cast<std::int32_t>(std::size(kSceneNames));
  return OwnedDocument(ResourceFile(known ? kSceneNames[object] : kNoScene));
}

ScenePass::ScenePass(HostDocument* scene, std::int32_t pluginId) noexcept
    : scene_(scene), objectName_(hostStringFromChars("Object")) {
  hostContainerSetInt(shader_.get(), KeyLinkPluginId, pluginId);
}

bool ScenePass::Draw(PreviewPass& pass) noexcept {
  if (scene_ == nullptr) return false;
  const bool full = pass.Int(pass.table().preview.automatic, 1) != 0;
  hostContainerSetInt(settings_.get(), KeyRenderWidth, pass.width());
  hostContainerSetInt(settings_.get(), KeyRenderHeight, pass.height());
  hostContainerSetInt(settings_.get(), KeyRenderQuality, full ? kFullQuality : 0);
  hostContainerSetBool(settings_.get(), KeyRenderPreview, 1);

  SceneMaterial material(MaterialTypeStandard);
  material.EnableChannel(ChannelLuminance, true);
  material.EnableChannel(ChannelColour, false);
  material.EnableChannel(ChannelSpecularColour, false);
  ChannelLink* link = material.Channel(ChannelLuminance);
  hostChannelMessage(link, MessageSetParameters, shader_.get());
  ShaderInstance* shown = hostChannelInstance(link);
  if (shown == nullptr || shown->data == nullptr) return false;

  // Through Copy, which decides what a copy that stands alone takes along.
  if (pass.record().Copy(&pass.instance(), shown) == 0) return false;
  StoreInt(shown->data, pass.table().preview.inScene, 1);

  HostObject* object = hostFindObject(scene_, objectName_.get());
  if (object == nullptr) return false;
  material.InsertInto(scene_);
  LayMaterialOn(object, material.get());
  return hostRenderDocument(scene_, pass.bitmap(), settings_.get(), pass.thread()) == 0;
}

}  // namespace sorvanix
