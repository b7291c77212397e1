// The start sequence: resources, the host's age, registrations, then the shared noise state.
#include "module/shell/plugin_start.h"

#include "module/noise/tables.h"
#include "module/shell/host_core.h"
#include "module/shell/host_render.h"
#include "module/shell/host_text.h"
#include "module/shell/registry.h"
#include "module/shell/resource_bundle.h"

namespace sorvanix {

namespace {

constexpr std::int32_t kTitleTextId = 10001;

// The fractal spectrum: the greatest octave count, the frequency step from one octave to the next
// and the falloff exponent of the amplitudes.
constexpr std::int32_t kFractalCapacity = 21;
constexpr float kFractalStep = 2.1f;
constexpr float kFractalExponent = 0.5f;

bool OpenResources() noexcept {
  const OwnedString path = hostStringFromChars(pluginPath);
  const OwnedFilename filename = hostFilenameFromString(path);
  const OwnedFilename folder = hostFilenameDirectory(filename);
  return resourceBundle.Open(folder);
}

void RefuseOldHost() noexcept {
  const OwnedString title = resourceBundle.Text(kTitleTextId);
  const OwnedString need = hostStringFromChars(" requires Cinema4D 7.201 or higher.");
  const OwnedString message = hostStringConcatenate(title, need);
  hostMessageDialog(message.get(), MessageDialogFlags);
}

bool RegisterShader(const RegistryRow& row) noexcept {
  ShaderRecord record = {};
  row.fill(&record);
  const OwnedString name = row.nameStringId == kLiteralTitle
                               ? hostStringFromChars(row.literalTitle)
                               : resourceBundle.Text(row.nameStringId);
  return hostRegisterPlugin(PluginApiVersion, PluginTypeShader, row.pluginId, name.get(), &record,
                            static_cast<std::int32_t>(sizeof(record))) != 0;
}

void BuildNoiseState() noexcept {
  hostFree(fractalWeights);  // of an earlier start without a detach in between
  fractalWeights = hostAlloc(FractalWeightsSize);
  // A failed allocation is not told apart: the host's operations take null weights.
  hostFractalInit(fractalWeights, kFractalCapacity, kFractalStep, kFractalExponent);
  BuildNoiseTables(kNoiseSeed);
  sharedGenerator.Reset(kNoiseSeed);
}

}  // namespace

std::int32_t PluginStart() noexcept {
  if (!OpenResources()) return 0;
  if (hostApi.version < HostVersionStart) {
    RefuseOldHost();
    return 0;
  }
  for (const RegistryRow& row : ShaderRegistry()) {
    if (!RegisterShader(row)) return 0;
  }
  BuildNoiseState();
  return 1;
}

void PluginEnd() noexcept {
  hostFree(fractalWeights);
  fractalWeights = nullptr;
}

}  // namespace sorvanix
