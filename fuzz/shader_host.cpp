#include "fuzz/shader_host.h"

#include <sorvanix/ids.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "apps/sorvanix/host_setup.h"
#include "host/render/projection.h"
#include "host/render/shading_record.h"
#include "host/scene/transform.h"
#include "host/services/streams.h"

namespace sorvanix::fuzz {

namespace {

using host::Shader;

[[noreturn]] void Stop(const std::string& reason) {
  std::fprintf(stderr, "fuzz: %s\n", reason.c_str());
  std::abort();
}

// A triangle with texture coordinates under a slanted ray.
class Surface {
 public:
  Surface() : surface_(Triangle(), host::kIdentityMatrix) {
    frame_.pictureSize[0] = frame_.pictureSize[1] = 4;
    frame_.time = 0.5f;
    tag_.matrix1 = tag_.matrix2 = host::kIdentityMatrix;
    tag_.projection = 6;
    tag_.lengthU = tag_.lengthV = 1;
    records_ = host::MakeRecords(frame_);
  }

  void Sample(Shader& shader) {
    host::ShadingRecord& record = records_.front();
    const host::SurfacePoint at = surface_.At(0, 0.25, 0.5);
    const host::Vec3 direction = {0, 0.6, 0.8};
    host::BeginSample(record, {.surface = &surface_,
                               .at = at,
                               .eye = at.point - direction,
                               .direction = direction,
                               .footprint = {{{0.25, 0, 0}, {0, -0.25, 0}}},
                               .identity = 1,
                               .object = &object_});
    host::LayTexture(record, &tag_, surface_.UvFrameAt(at, 0), 0);
    const RenderInit init = {&record.context, nullptr};
    if (shader.InitRender(init)) {
      ChannelSample sample = host::SampleAt(record);
      shader.Output(sample);
    }
    shader.FreeRender();
  }

 private:
  static std::shared_ptr<host::PolygonMesh> Triangle() {
    auto mesh = std::make_shared<host::PolygonMesh>();
    mesh->points = {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}};
    mesh->polygons = {{0, 1, 2, 2}};
    mesh->uvwSets = {{"UVW", {{{{0, 1, 0}, {0, 0, 0}, {1, 1, 0}, {1, 1, 0}}}}}};
    return mesh;
  }

  host::MeshSurface surface_;
  TextureTag tag_ = {};
  ObjectRecord object_ = {2, {}, 0, host::kIdentityMatrix, nullptr};
  host::RenderFrame frame_;
  std::vector<host::ShadingRecord> records_;
};

void SampleFlat(Shader& shader) {
  ChannelSample sample = {};
  sample.uvw = {0.25f, 0.75f, 0};
  sample.delta = {0.01f, 0.01f, 0};
  sample.time = 0.5f;
  shader.Output(sample);
}

Shader Another(const Shader& shader) {
  auto other = LoadedModule().Create(shader.PluginId(), shader.Channel());
  if (!other) Stop(other.error());
  return *std::move(other);
}

// What is written and read again is written in the same way. (The first time may differ: what an
// old file holds is brought up to date, and some forms leave out a value that a block may have.)
void SaveTwice(const Shader& shader) {
  host::Stream first, second, third;
  if (!shader.Write(first)) return;
  Shader again = Another(shader), onceMore = Another(shader);
  if (!again.Read(first)) return;
  again.Write(second);
  onceMore.Read(second);
  onceMore.Write(third);
  SORVANIX_EXPECT(second.Values() == third.Values());
}

}  // namespace

void Fail(const char* law, const char* file, int line) {
  Stop(std::string(file) + ":" + std::to_string(line) + ": does not hold: " + law);
}

const host::Module& LoadedModule() {
  static auto& loaded = *[] {
    auto* host = new cli::LoadedModule;  // never unloaded: fuzzers end in the middle of a run
    if (const auto done = host->Load(SORVANIX_MODULE_PATH); !done) Stop(done.error().message);
    return host;
  }();
  return *loaded;
}

const host::ShaderCatalogue& Catalogue() {
  static const host::ShaderCatalogue catalogue = [] {
    auto read = host::ShaderCatalogue::Load(SORVANIX_CATALOGUE_PATH);
    if (!read) Stop(read.error());
    return *std::move(read);
  }();
  return catalogue;
}

void UseInEveryWay(Shader& shader) {
  static auto& surface = *new Surface;
  SaveTwice(shader);
  Shader other = Another(shader);
  other.CopyFrom(shader);
  other.Equals(shader);
  other.SetParameters(shader.Parameters());
  shader.ParameterTypes();
  for (const std::int32_t channel : {ChannelColour, ChannelBump, ChannelStandalone}) {
    shader.Instance().channel = channel;
    SampleFlat(shader);
    surface.Sample(shader);
  }
}

}  // namespace sorvanix::fuzz
