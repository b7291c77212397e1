// Documents for tests: the small scenes of previews, what is put into them, and what is rendered.
#pragma once

#include <sorvanix/host_api.h>

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/fake_data.h"
#include "tests/support/fake_scene.h"
#include "tests/support/scripted_links.h"

namespace sorvanix::test {

/// A material that the module made.
struct FakeMaterial {
  std::int32_t type;
  std::map<std::int32_t, bool> enabled;                         ///< channels that were switched
  std::map<std::int32_t, std::unique_ptr<ScriptedLink>> links;  ///< of channels
  bool inserted = false;
  HostMaterial* handle() { return reinterpret_cast<HostMaterial*>(this); }
};

/// A texture tag: of a scene, made by the module, or selected by the user.
struct FakeTextureTag {
  const FakeObject* object = nullptr;
  HostMaterial* material = nullptr;
  FakeContainer settings;
  Vector position = {}, scale = {}, rotation = {};
  HostTag* handle() { return reinterpret_cast<HostTag*>(this); }
};

/// What a render was asked for.
struct FakeRender {
  FakeScene* scene;
  FakeContainer settings;
  HostThread* thread = nullptr;
  bool materialInserted = false;
  FakeMaterial* material = nullptr;  ///< on the object; valid within onRender only
};

/// The documents of a fake host.
class FakeDocuments {
 public:
  /// Files that can be loaded; all of these are the same scene anew, with an object of this name.
  std::set<std::string> files;
  std::string objectName = "Object";
  std::vector<std::string> asked;  ///< files that the module tried to load
  // Each fails one call, as the counts of FakeHost do.
  int failLoad = 0;
  int failMaterial = 0;
  int failTag = 0;
  int failRender = 0;
  int liveScenes = 0;
  int liveMaterials = 0;

  std::int32_t renderAnswer = 0;
  std::vector<FakeRender> renders;
  std::function<void(const FakeRender&, HostBitmap*)> onRender;

  bool hasActiveDocument = true;
  FakeScene active;  ///< the scene that the user works on
  FakeTextureTag* activeTag = nullptr;
  std::map<const FakeObject*, FakeTextureTag> textureTags;
  FakeMaterial* lastMaterial = nullptr;
};

/// Adds what previews and dialogs need to the tables of fake_scene.h.
void InstallFakeDocuments(ObjectTable& object, DocumentTable& document);
const MaterialTable& FakeMaterialTable();
const DocumentListTable& FakeDocumentListTable();

}  // namespace sorvanix::test
