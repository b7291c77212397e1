#include "tests/host/channels/fake_shaders.h"

#include <sorvanix/ids.h>

#include "host/dialogs/dialog_tables.h"

namespace sorvanix::host::fake {

namespace {

const HostTables* tables = nullptr;

struct ProbeBlock {
  float value;
};

struct ScaleBlock {
  ChannelLink* input;
  float factor;
};

template <class Block>
Block* BlockOf(const ShaderInstance* instance) {
  return static_cast<Block*>(instance->data);
}

template <class Block>
Block* MakeBlock(ShaderInstance* instance) {
  instance->data = tables->general.alloc(sizeof(Block));
  return BlockOf<Block>(instance);
}

void FreeBlock(ShaderInstance* instance) {
  tables->general.free(instance->data);
  instance->data = nullptr;
}

ShaderRecord ProbeRecord() {
  ShaderRecord record = {};
  record.Alloc = [](ShaderInstance* instance) noexcept -> std::int32_t {
    auto* block = MakeBlock<ProbeBlock>(instance);
    if (block == nullptr) return 0;
    block->value = 0.25f;
    return 1;
  };
  record.Free = [](ShaderInstance* instance) noexcept { FreeBlock(instance); };
  record.Copy = [](const ShaderInstance* source, ShaderInstance* destination) noexcept {
    *BlockOf<ProbeBlock>(destination) = *BlockOf<ProbeBlock>(source);
    return 1;
  };
  record.Compare = [](const ShaderInstance* first, const ShaderInstance* second) noexcept {
    return BlockOf<ProbeBlock>(first)->value == BlockOf<ProbeBlock>(second)->value ? 1 : 0;
  };
  record.Read = [](ShaderInstance* instance, HostStream* stream) noexcept {
    float& value = BlockOf<ProbeBlock>(instance)->value;
    tables->stream.readFloat(stream, &value);
    return value == kRefusedValue ? 0 : 1;
  };
  record.Write = [](const ShaderInstance* instance, HostStream* stream) noexcept {
    return tables->stream.writeFloat(stream, BlockOf<ProbeBlock>(instance)->value);
  };
  record.Message = [](ShaderInstance* instance, std::int32_t id, HostContainer* payload) noexcept {
    float& value = BlockOf<ProbeBlock>(instance)->value;
    if (id == kPing) return 78;
    if (id == MessageSetParameters) value = tables->container.getFloat(payload, kKeyValue, value);
    if (id == MessageGetParameters) tables->container.setFloat(payload, kKeyValue, value);
    if (id == MessageDescribeParameters) {
      tables->container.setInt(payload, kKeyValue, DescribeReal);
    }
    return 1;
  };
  record.InitRender = [](ShaderInstance* instance, const RenderInit* init) noexcept {
    preparedRender = init->render;
    ++preparedCount;
    return BlockOf<ProbeBlock>(instance)->value < 0 ? std::int32_t{RenderInitFailed} : 0;
  };
  record.FreeRender = [](ShaderInstance*) noexcept { --preparedCount; };
  record.Output = [](Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
    lastSample = *sample;
    *result = {BlockOf<ProbeBlock>(instance)->value, sample->uvw.x, sample->uvw.y};
  };
  return record;
}

std::int32_t ScaleMessage(ShaderInstance* instance, std::int32_t id,
                          HostContainer* payload) noexcept {
  const ContainerTable& container = tables->container;
  ScaleBlock& block = *BlockOf<ScaleBlock>(instance);
  if (id == MessageSetParameters) {
    block.factor = container.getFloat(payload, kKeyFactor, block.factor);
    HostContainer* input = container.getContainer(payload, kKeyInput, nullptr);
    if (input != nullptr) tables->channel.message(block.input, id, input);
  } else if (id == MessageGetParameters || id == MessageDescribeParameters) {
    HostContainer* input = container.create(0);
    tables->channel.message(block.input, id, input);
    if (id == MessageGetParameters) container.setFloat(payload, kKeyFactor, block.factor);
    container.setContainer(payload, kKeyInput, input);
    container.free(input);
  }
  return 1;
}

ShaderRecord ScaleRecord() {
  ShaderRecord record = {};
  record.Alloc = [](ShaderInstance* instance) noexcept -> std::int32_t {
    auto* block = MakeBlock<ScaleBlock>(instance);
    if (block == nullptr) return 0;
    block->factor = 0.5f;
    block->input = tables->channel.create();
    if (block->input != nullptr) return 1;
    FreeBlock(instance);
    return 0;
  };
  record.Free = [](ShaderInstance* instance) noexcept {
    tables->channel.release(BlockOf<ScaleBlock>(instance)->input);
    FreeBlock(instance);
  };
  record.Copy = [](const ShaderInstance* source, ShaderInstance* destination) noexcept {
    BlockOf<ScaleBlock>(destination)->factor = BlockOf<ScaleBlock>(source)->factor;
    return tables->channel.copy(BlockOf<ScaleBlock>(source)->input,
                                BlockOf<ScaleBlock>(destination)->input);
  };
  record.Compare = [](const ShaderInstance* first, const ShaderInstance* second) noexcept {
    return tables->channel.compare(BlockOf<ScaleBlock>(first)->input,
                                   BlockOf<ScaleBlock>(second)->input);
  };
  record.Read = [](ShaderInstance* instance, HostStream* stream) noexcept {
    tables->stream.readChannelLink(stream, BlockOf<ScaleBlock>(instance)->input);
    return tables->stream.readFloat(stream, &BlockOf<ScaleBlock>(instance)->factor);
  };
  record.Write = [](const ShaderInstance* instance, HostStream* stream) noexcept {
    tables->stream.writeChannelLink(stream, BlockOf<ScaleBlock>(instance)->input);
    return tables->stream.writeFloat(stream, BlockOf<ScaleBlock>(instance)->factor);
  };
  record.Message = ScaleMessage;
  record.InitRender = [](ShaderInstance* instance, const RenderInit* init) noexcept {
    return tables->channel.initRender(BlockOf<ScaleBlock>(instance)->input, init);
  };
  record.FreeRender = [](ShaderInstance* instance) noexcept {
    tables->channel.freeRender(BlockOf<ScaleBlock>(instance)->input);
  };
  record.Output = [](Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
    const ScaleBlock& block = *BlockOf<ScaleBlock>(instance);
    tables->channel.sample(result, block.input, sample->render, &sample->uvw, &sample->delta,
                           &sample->normal, sample->time, sample->texFlags, sample->blurOffset,
                           sample->blurScale);
    *result = {result->x * block.factor, result->y * block.factor, result->z * block.factor};
  };
  return record;
}

class FakeTexture final : public Texture {
 public:
  std::int32_t Width() const noexcept override { return 3; }
  std::int32_t Height() const noexcept override { return 2; }
  Vector Sample(const TextureLookup& lookup) const noexcept override {
    lastLookup = lookup;
    return {0.75f, lookup.uvw.x, lookup.uvw.y};
  }
  // Red counts the pixels; green is beyond a byte's range on either side, blue is no number.
  tl::expected<Image, std::string> Pixels() const override {
    Image image(3, 2);
    for (std::size_t i = 0; i < 6; ++i) {
      image.rgb[3 * i] = static_cast<float>(i) / 255;
      image.rgb[3 * i + 1] = i % 2 == 0 ? 7.0f : -7.0f;
      image.rgb[3 * i + 2] = std::numeric_limits<float>::quiet_NaN();
    }
    return image;
  }
};

void InstallLinks(HostTables& installed) {
  InstallChannelLinks(installed.channel, installed.stream);
  InstallBitmaps(installed.bitmap);
  InstallDialogs(installed);
}

}  // namespace

tl::expected<TexturePointer, std::string> OpenTexture(const std::filesystem::path& file) {
  if (file.filename().string().starts_with("missing")) {
    return tl::unexpected(file.string() + ": no such file");
  }
  return std::make_shared<const FakeTexture>();
}

LinkHost::LinkHost() : host_({.services = {InstallLinks}}) {
  tables = &host_.Tables();
  registry_.Add({kProbe, "Probe", ProbeRecord()});
  registry_.Add({kScale, "Scale", ScaleRecord()});
  links_ = std::make_unique<LinkedShaders>(registry_);
  SetTextureLoader(OpenTexture);
}

LinkHost::~LinkHost() { SetTextureLoader(nullptr); }

const ShaderCatalogue& Catalogue() {
  static const ShaderCatalogue catalogue = ShaderCatalogue::Parse(R"({
    "format": "sorvanix-shaders", "version": 1, "shaders": [
      { "id": 5001, "name": "Probe", "title": "Probe", "category": "generator", "summary": "Probes.",
        "inputs": [],
        "parameters": [
          { "key": 1000, "name": "value", "label": "Value", "help": "What it answers.",
            "type": "float", "default": 0.25, "describe": 2, "minimum": 0, "maximum": 8 } ] },
      { "id": 5002, "name": "Scale", "title": "Scale", "category": "filter", "summary": "Scales.",
        "inputs": [ {"key": 1001, "name": "input", "label": "Input", "help": "What is scaled."} ],
        "parameters": [
          { "key": 1000, "name": "factor", "label": "Factor", "type": "float", "default": 0.5,
            "describe": 2 } ] },
      { "id": 5004, "name": "Colours", "title": "Colours", "category": "filter",
        "summary": "Colours.", "inputs": [],
        "parameters": [
          { "type": "ramp", "name": "ramp", "label": "Ramp", "help": "The colours.",
            "colourKey": 1100, "positionKey": 1200, "biasKey": 1300, "countKey": 1002,
            "interpolationKey": 1001, "knots": 4, "keyStride": 2,
            "default": [ {"position": 0, "colour": [0, 0, 0], "bias": 0.5},
                         {"position": 1, "colour": [1, 1, 1], "bias": 0.5} ] } ] } ] })")
                                               .value();
  return catalogue;
}

Container ProbeDescription(float value) {
  Container parameters;
  parameters.Set(kKeyValue, value);
  Container link;
  link.Set(KeyLinkPluginId, Word{kProbe});
  link.Set(KeyLinkParameters, NestedContainer(parameters));
  return link;
}

Container ScaleDescription(float factor, const Container& input) {
  Container parameters;
  parameters.Set(kKeyFactor, factor);
  parameters.Set(kKeyInput, NestedContainer(input));
  Container link;
  link.Set(KeyLinkPluginId, Word{kScale});
  link.Set(KeyLinkParameters, NestedContainer(parameters));
  return link;
}

Container BitmapDescription(const char* filename) {
  Container link;
  link.Set(KeyLinkPluginId, Word{0});
  link.Set(KeyLinkFilename, Filename(filename));
  return link;
}

}  // namespace sorvanix::host::fake
