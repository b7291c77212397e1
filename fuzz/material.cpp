// Fuzzes the reader of material files. What it takes is spelled again, read again, and made.
#include <sorvanix/ids.h>

#include "fuzz/shader_host.h"
#include "host/channels/channel_link.h"
#include "host/channels/material_file.h"

namespace sorvanix::fuzz {

namespace {

// A folder that cannot be: names of files in materials lead nowhere.
const host::MaterialPlaces kNowhere = {"/dev/null/material.json", {}};

void Run(std::string_view text) {
  const auto reading = host::ReadMaterial(text, Catalogue(), kNowhere);
  SORVANIX_EXPECT(reading.material.has_value() == reading.Errors().empty());
  if (!reading.material) return;
  const std::string spelled = host::WriteJson(host::JsonOf(*reading.material));
  const auto again = host::ReadMaterial(spelled, Catalogue(), kNowhere);
  SORVANIX_EXPECT(again.material.has_value());
  SORVANIX_EXPECT(host::WriteJson(host::JsonOf(*again.material)) == spelled);

  auto shader = LoadedModule().Create(reading.material->shader->id, 0);
  SORVANIX_EXPECT(shader.has_value());
  shader->SetParameters(host::ContainerOf(*reading.material));
  UseInEveryWay(*shader);
}

}  // namespace

}  // namespace sorvanix::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  sorvanix::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
