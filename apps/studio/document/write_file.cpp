#include "apps/studio/document/write_file.h"

#include <fmt/format.h>

#include <fstream>

#include "host/bake/temporary_file.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

tl::expected<void, std::string> WriteFile(const std::filesystem::path& file,
                                          std::string_view text) {
  auto temporary = host::TemporaryFile::Create(file);
  if (!temporary) return tl::unexpected(temporary.error());
  std::ofstream stream(temporary->Path(), std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) {
    return tl::unexpected(fmt::format("{}: cannot be written", host::Utf8FromPath(file)));
  }
  return temporary->Commit();
}

}  // namespace sorvanix::studio
