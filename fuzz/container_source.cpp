#include "fuzz/container_source.h"

#include <sorvanix/ids.h>

#include "fuzz/shader_host.h"

namespace sorvanix::fuzz {

using host::Container;

namespace {

constexpr int kDeepest = 80;  // beyond what the host takes

// Most keys lie near those that shaders have.
std::int32_t TakeKey(ByteSource& bytes) {
  const auto near = bytes.Take<std::uint16_t>();
  return near < 0x8000 ? 1000 + near % 400 : bytes.Take<std::int32_t>();
}

}  // namespace

Container TakeContainer(ByteSource& bytes, int depth) {
  Container container;
  while (!bytes.AtEnd()) {
    const std::uint8_t type = bytes.Byte();
    const std::int32_t key = TakeKey(bytes);
    switch (type) {
      case 'i':
        container.Set(key, Word{bytes.Take<std::int32_t>()});
        break;
      case 'f':
        container.Set(key, bytes.Take<float>());
        break;
      case 'b':
        container.Set(key, bytes.Byte() % 2 == 1);
        break;
      case 'v':
        container.Set(key, bytes.Take<Vector>());
        break;
      case 's':
        container.Set(key, host::Text(bytes.Text()));
        break;
      case 'n':
        container.Set(key, host::Filename(bytes.Text()));
        break;
      case 'c':
        if (depth < kDeepest) {
          container.Set(key, host::NestedContainer(TakeContainer(bytes, depth + 1)));
        }
        break;
      // What feeds the input under this key.
      case 'l': {
        Container link;
        const auto& shaders = LoadedModule().Shaders().All();
        link.Set(KeyLinkPluginId, Word{shaders[bytes.Byte() % shaders.size()]->id});
        if (depth < kDeepest) {
          link.Set(KeyLinkParameters, host::NestedContainer(TakeContainer(bytes, depth + 1)));
        }
        container.Set(key, host::NestedContainer(link));
        break;
      }
      default:
        return container;
    }
  }
  return container;
}

}  // namespace sorvanix::fuzz
