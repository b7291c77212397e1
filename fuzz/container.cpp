// Fuzzes the message that sets parameters: the first byte chooses the shader, the others are a
// container of keys and values, which may hold containers for inputs. Then uses what was set.
#include "fuzz/container_source.h"
#include "fuzz/shader_host.h"

namespace sorvanix::fuzz {

namespace {

void Run(ByteSource bytes) {
  const auto& shaders = LoadedModule().Shaders().All();
  auto shader = LoadedModule().Create(shaders[bytes.Byte() % shaders.size()]->id, 0);
  SORVANIX_EXPECT(shader.has_value());
  shader->SetParameters(TakeContainer(bytes));
  UseInEveryWay(*shader);
}

}  // namespace

}  // namespace sorvanix::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  sorvanix::fuzz::Run({data, size});
  return 0;
}
