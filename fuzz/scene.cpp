// Fuzzes the reader of scene files. What it takes is made, written, and read again.
#include "fuzz/shader_host.h"
#include "host/scene/material_links.h"
#include "host/scene/scene_file.h"

namespace sorvanix::fuzz {

namespace {

// A number of three digits behind "segments" makes a mesh that takes a second, and finds nothing
// that a smaller one would not.
bool HasLargeMesh(std::string_view text) {
  constexpr std::string_view kName = "segments";
  for (std::size_t at = text.find(kName); at != text.npos; at = text.find(kName, at + 1)) {
    int digits = 0;
    for (const char c : text.substr(at, 40)) digits += c >= '0' && c <= '9' ? 1 : 0;
    if (digits > 2) return true;
  }
  return false;
}

void Run(std::string_view text) {
  if (HasLargeMesh(text)) return;
  const host::SceneReadingOptions options = {.catalogue = &Catalogue()};
  // A folder that cannot be: names of files in scenes lead nowhere.
  const std::filesystem::path file = "/dev/null/scene.json";
  host::SceneReading reading = host::ReadScene(text, file, options);
  if (reading.scene == nullptr) {
    SORVANIX_EXPECT(!reading.problems.empty());
    return;
  }
  LoadedModule();  // its shaders fill the channels
  host::LinkMaterials(*reading.scene);
  host::StoreStates(*reading.scene, &Catalogue());
  const std::string written = host::SceneText(*reading.scene);
  const host::SceneReading again = host::ReadScene(written, file, options);
  SORVANIX_EXPECT(again.scene != nullptr);
  SORVANIX_EXPECT(host::SceneText(*again.scene) == written);
}

}  // namespace

}  // namespace sorvanix::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  sorvanix::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
