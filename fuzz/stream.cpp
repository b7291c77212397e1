// Fuzzes the Read of every shader: the first byte chooses the shader, the others are a stream of
// typed values, which may hold links with streams of their own. Then uses what was read.
#include "fuzz/byte_source.h"
#include "fuzz/shader_host.h"

namespace sorvanix::fuzz {

namespace {

using host::StreamLink;
using host::StreamValue;

constexpr int kDeepest = 80;  // beyond what the host takes

std::int32_t ShaderOf(std::uint8_t number) {
  const auto& shaders = LoadedModule().Shaders().All();
  return shaders[number % shaders.size()]->id;
}

std::vector<StreamValue> TakeValues(ByteSource& bytes, int depth);

StreamLink TakeLink(ByteSource& bytes, int depth) {
  StreamLink link;
  const std::uint8_t what = bytes.Byte();
  if (what == 0 || depth >= kDeepest) return link;
  if (what == 1) {
    link.pluginId = StreamLink::kBitmap;
    link.filename = bytes.Text();
    return link;
  }
  link.pluginId = what == 255 ? 4711 : ShaderOf(what);  // 4711: nobody knows it
  link.values = TakeValues(bytes, depth + 1);
  return link;
}

// Up to a byte that stands for no type, or to the end.
std::vector<StreamValue> TakeValues(ByteSource& bytes, int depth) {
  std::vector<StreamValue> values;
  while (!bytes.AtEnd()) {
    StreamValue value;
    switch (bytes.Byte()) {
      case 'i':
        value.value = bytes.Take<std::int32_t>();
        break;
      case 'f':
        value.value = bytes.Take<float>();
        break;
      case 'b':
        value.value = bytes.Byte() % 2 == 1;
        break;
      case 'v':
        value.value = bytes.Take<Vector>();
        break;
      case 'm':
        value.value = bytes.Take<Matrix>();
        break;
      case 's':
        value.value = bytes.Text();
        break;
      case 'l':
        value.value = TakeLink(bytes, depth);
        break;
      default:
        return values;
    }
    values.push_back(std::move(value));
  }
  return values;
}

void Run(ByteSource bytes) {
  const std::int32_t id = ShaderOf(bytes.Byte());
  auto shader = LoadedModule().Create(id, 0);
  SORVANIX_EXPECT(shader.has_value());
  host::Stream stream(TakeValues(bytes, 0));
  shader->Read(stream);
  UseInEveryWay(*shader);
}

}  // namespace

}  // namespace sorvanix::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  sorvanix::fuzz::Run({data, size});
  return 0;
}
